-- Plays the plug-in in a session of its own: builds it, or opens the one that was saved, and
-- exports every case. scripts/hosts/ardour.py writes the table PLAN in front of this.

local function route (name, channels)
  local list = Session:new_audio_route (channels, channels, nil, 1, name,
    ARDOUR.PresentationInfo.Flag.AudioBus, ARDOUR.PresentationInfo.max_order)
  for r in list:iter () do return r end
end

local function add (r, name, kind, position)
  local processor = ARDOUR.LuaAPI.new_plugin (Session, name, kind, "")
  assert (not processor:isnil (), name .. " does not load")
  assert (r:add_processor_by_index (processor, position, nil, true) == 0, name .. " is refused")
  return processor
end

-- A second voice, which only the side chain hears.
local function side_route ()
  local side = route ("side", 1)
  add (side, "Orvantesco Check Signal", ARDOUR.PluginType.Lua, 0)
  side:output ():audio (0):disconnect_all ()
  return side
end

local function wait (ms)
  ARDOUR.LuaAPI.usleep (ms * 1000)
end

-- The engine runs in real time, a fresh effect fades in, and an LFO that follows the song shall
-- begin where the song does.
local function settle ()
  Session:goto_start (false)
  wait (700)
end

local function export (name)
  local run = Session:simple_export ()
  assert (run:set_preset (PLAN.exportPreset), "no export preset")
  run:set_folder (PLAN.folder)
  run:set_name (name)
  run:set_range (0, PLAN.frames)
  assert (run:run_export (), "the export of " .. name .. " failed")
end

local function connect_side_chain (wet, fx, side)
  assert (wet:add_sidechain (fx), "no side chain")
  local port = fx:to_insert ():sidechain_input ():audio (0)
  assert (port:connect (side:output ():audio (0):name ()) == 0, "no way to the side chain")
end

-- The number of a parameter among the controls, by its name. Ports that go out are errors.
local function number_of (fx, name)
  for n = 0, 1200 do
    local is_input, list, _, range = pcall (ARDOUR.LuaAPI.plugin_automation, fx, n)
    if is_input and not list:isnil () and range.label == name then return n end
  end
  error ("no parameter " .. name)
end

-- VST3 counts from 0 to 1, LV2 as the effect does.
local function automate (fx, move)
  local n = number_of (fx, move.name)
  local list, points, range = ARDOUR.LuaAPI.plugin_automation (fx, n)
  list:set_interpolation (Evoral.InterpolationStyle.Discrete)
  for _, point in ipairs (move.points) do
    local value = range.lower + point[2] * (range.upper - range.lower)
    points:add (Temporal.timepos_t (point[1]), value, false, false)
  end
  local id = fx:to_insert ():plugin (0):nth_parameter (n, false)
  local parameter = Evoral.Parameter (ARDOUR.AutomationType.PluginAutomation, 0, id)
  local control = fx:to_automatable ():automation_control (parameter, false)
  control:set_automation_state (ARDOUR.AutoState.Play)
end

local function play (wet, side, case)
  local began = ARDOUR.LuaAPI.monotonic_time ()
  local fx = add (wet, PLAN.plugin, ARDOUR.PluginType[PLAN.kind], 1)
  print (string.format ("loaded in %d us", ARDOUR.LuaAPI.monotonic_time () - began))
  local plugin = fx:to_insert ():plugin (0)
  local preset = plugin:preset_by_label (case.name)
  assert (preset and preset.valid, "no preset " .. case.name)
  assert (plugin:load_preset (preset), "preset " .. case.name .. " is refused")
  if case.side then connect_side_chain (wet, fx, side) end
  if case.move then
    wait (100)  -- for a block: the ports that come with a state are older than it
    automate (fx, case.move)
  end
  settle ()
  export (case.file)
  return fx
end

local function create ()
  Session = create_session (PLAN.session, "check", PLAN.rate)
  local map = Temporal.TempoMap.fetch_writable ()
  map:set_tempo (Temporal.Tempo (PLAN.tempo, PLAN.tempo, 4), Temporal.timepos_t (0))
  Temporal.TempoMap.update (map)
  local side = side_route ()
  local wet = route ("wet", 2)
  add (wet, "Orvantesco Check Signal", ARDOUR.PluginType.Lua, 0)
  return wet, side
end

-- Exports the session as it was saved, and leaves the plug-in that played as the last one.
local function reload ()
  Session = load_session (PLAN.session, "check")
  settle ()
  export (PLAN.reload)
  local wet = Session:route_by_name ("wet")
  return wet, Session:route_by_name ("side"), wet:nth_plugin (1)
end

-- A list that counts in beats takes up a point that stands just where a block begins a block late.
ARDOUR.config ().default_automation_time_domain = Temporal.TimeDomain.AudioTime
AudioEngine:set_backend ("None (Dummy)", "", "")
local wet, side, last
if PLAN.reload then wet, side, last = reload () else wet, side = create () end
for _, case in ipairs (PLAN.cases) do
  if last then wet:remove_processor (last, nil, true) end
  last = play (wet, side, case)
end
if not PLAN.reload then Session:save_state ("") end
close_session ()
quit ()
