#pragma once

#include <string_view>

namespace orvantesco {

/// The hosts that the plug-in can tell apart. The numbers are stored by nothing but are shown to
/// users in reports, so they stay as they are.
enum class EHost : int {
  unknown = 0,
  reaper = 1,
  proTools = 2,
  cubase = 3,
  nuendo = 4,
  cakewalk = 5,
  fruity = 7,
  samplitude = 8,
  live = 9,
  melodyne = 12,
  vstManLib = 13,
  auLab = 14,
  forte = 15,
  chainer = 16,
  audition = 17,
  orion = 18,
  sawStudio = 20,
  logic = 21,
  garageBand = 22,
  digital = 23,
  standalone = 24,
  audioMulch = 25,
  preSonus = 26,
  vst3TestHost = 27,
  ardour = 28,
  numerology = 29,
};

/// The host that a name stands for: the first entry of a fixed list of lower-case substrings that
/// the name holds, without regard to case; `unknown` where none does. Any thread.
EHost hostFromName(std::string_view name);

}  // namespace orvantesco
