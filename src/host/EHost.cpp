#include "host/EHost.h"

#include <algorithm>
#include <string>

namespace orvantesco {
namespace {

struct HostName {
  std::string_view substring;
  EHost host;
};

/// The order decides where a name holds several of them.
constexpr HostName hostNames[] = {
    {"cubase", EHost::cubase},
    {"forte", EHost::forte},
    {"reaper", EHost::reaper},
    {"chainer", EHost::chainer},
    {"nuendo", EHost::nuendo},
    {"audition", EHost::audition},
    {"cakewalk", EHost::cakewalk},
    {"orion", EHost::orion},
    {"samplitude", EHost::samplitude},
    {"sawstudio", EHost::sawStudio},
    {"fruity", EHost::fruity},
    {"logic", EHost::logic},
    {"live", EHost::live},
    {"digital", EHost::digital},
    {"melodyne", EHost::melodyne},
    {"audiomulch", EHost::audioMulch},
    {"vstmanlib", EHost::vstManLib},
    {"presonus", EHost::preSonus},
    {"aulab", EHost::auLab},
    {"vst3plugintesthost", EHost::vst3TestHost},
    {"garageband", EHost::garageBand},
    {"protools", EHost::proTools},
    {"ardour", EHost::ardour},
    {"standalone", EHost::standalone},
    {"numerology", EHost::numerology},
};

/// Host names are ASCII where they matter; the locale must not change what "I" lowers to.
char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

EHost hostFromName(std::string_view name) {
  std::string lowered(name);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), lowerAscii);
  for (const HostName& entry : hostNames) {
    if (lowered.find(entry.substring) != std::string::npos) return entry.host;
  }
  return EHost::unknown;
}

}  // namespace orvantesco
