-- Plays the plug-in in a session of its own: builds it, or opens the one that was saved, and exports
-- every case. scripts/check-hosts writes the table PLAN in front of this.

local function route (name)
  local list = Session:new_audio_route (2, 2, nil, 1, name,
    ARDOUR.PresentationInfo.Flag.AudioBus, ARDOUR.PresentationInfo.max_order)
  for r in list:iter () do return r end
end

local function add (r, name, kind, position)
  local processor = ARDOUR.LuaAPI.new_plugin (Session, name, kind, "")
  assert (not processor:isnil (), name .. " does not load")
  assert (r:add_processor_by_index (processor, position, nil, true) == 0, name .. " is refused")
  return processor
end

-- The engine runs in real time, a fresh effect fades in, and an LFO that follows the song shall
-- begin where the song does.
local function settle ()
  Session:goto_start (false)
  ARDOUR.LuaAPI.usleep (700000)
end

local function export (name)
  local run = Session:simple_export ()
  assert (run:set_preset (PLAN.exportPreset), "no export preset")
  run:set_folder (PLAN.folder)
  run:set_name (name)
  run:set_range (0, PLAN.frames)
  assert (run:run_export (), "the export of " .. name .. " failed")
end

local function play (wet, name)
  local fx = add (wet, PLAN.plugin, ARDOUR.PluginType.LV2, 1)
  local plugin = fx:to_insert ():plugin (0)
  local preset = plugin:preset_by_label (name)
  assert (preset and preset.valid, "no preset " .. name)
  assert (plugin:load_preset (preset), "preset " .. name .. " is refused")
  settle ()
  export (name)
  return fx
end

AudioEngine:set_backend ("None (Dummy)", "", "")
if PLAN.reload then
  Session = load_session (PLAN.session, "check")
  settle ()
  export (PLAN.reload)
else
  Session = create_session (PLAN.session, "check", PLAN.rate)
  local map = Temporal.TempoMap.fetch_writable ()
  map:set_tempo (Temporal.Tempo (PLAN.tempo, PLAN.tempo, 4), Temporal.timepos_t (0))
  Temporal.TempoMap.update (map)
  local wet = route ("wet")
  add (wet, "Orvantesco Check Signal", ARDOUR.PluginType.Lua, 0)
  local last
  for _, name in ipairs (PLAN.cases) do
    if last then wet:remove_processor (last, nil, true) end
    last = play (wet, name)
  end
  Session:save_state ("")
end
close_session ()
quit ()
