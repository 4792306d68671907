-- A source for the check of the hosts: bursts that follow from the position alone. On one channel
-- they are longer. scripts/hosts/cases.py computes the same.
ardour { ["type"] = "dsp", name = "Orvantesco Check Signal", category = "Generator",
         license = "MIT", author = "qlm-works", description = "Bursts of noise" }

function dsp_ioconfig () return { { audio_in = -1, audio_out = -1 } } end

function dsp_run (ins, outs, frames)
  local first = Session:transport_sample ()
  local rolls = Session:transport_rolling ()
  local sounding = #outs == 1 and 15000 or 9000
  for c = 1, #outs do
    local out = outs[c]:array ()
    for i = 1, frames do
      local n = first + i - 1
      local sounds = rolls and n % 24000 < sounding
      out[i] = sounds and ((n * 16807 + c * 7919) % 65536) / 131072 - 0.25 or 0
    end
  end
end
