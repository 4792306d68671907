#pragma once

// What the wrapper has to know of the plug-in before it is compiled. It asks for macros.
//
// A VST3 host knows a parameter by its index plus the number of parameters that the wrapper adds
// in front: the latency is one, a controller apart from the processor would be two more, programs
// and MIDI input some as well. So the values marked "frozen" never change, or every session would
// lose its automation. A test looks after them: Vst3Parameters.KeepTheirIds.

#define DISTRHO_PLUGIN_NAME "Orvantesco"
#define DISTRHO_PLUGIN_URI "urn:qlm-works:orvantesco"
#define DISTRHO_PLUGIN_LV2_STATE_PREFIX "urn:qlm-works:orvantesco#"

#define DISTRHO_PLUGIN_NUM_INPUTS 3  // left, right, side chain
#define DISTRHO_PLUGIN_NUM_OUTPUTS 2

#define DISTRHO_PLUGIN_IS_RT_SAFE 1
#define DISTRHO_PLUGIN_IS_SYNTH 0            // frozen
#define DISTRHO_PLUGIN_HAS_UI 0              // an editor may come, since it shares the process
#define DISTRHO_PLUGIN_WANT_DIRECT_ACCESS 1  // frozen: no controller apart from the processor
#define DISTRHO_PLUGIN_WANT_LATENCY 1        // frozen
#define DISTRHO_PLUGIN_WANT_PROGRAMS 0       // frozen; each program would cost 79 kB of turtle
#define DISTRHO_PLUGIN_WANT_MIDI_INPUT 0     // frozen
#define DISTRHO_PLUGIN_WANT_MIDI_OUTPUT 0
#define DISTRHO_PLUGIN_WANT_STATE 1
#define DISTRHO_PLUGIN_WANT_FULL_STATE 1
#define DISTRHO_PLUGIN_WANT_TIMEPOS 1

#define DISTRHO_PLUGIN_LV2_CATEGORY "lv2:DelayPlugin"
#define DISTRHO_PLUGIN_VST3_CATEGORIES "Fx|Delay|Stereo"
