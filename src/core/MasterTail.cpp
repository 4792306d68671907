#include "core/MasterTail.h"

#include <algorithm>
#include <cmath>

#include "core/EngineRate.h"
#include "core/MasterEffectScale.h"

namespace orvantesco {

namespace {

constexpr double kReferenceRate = 44100.0;
// What an equaliser rings for, with room to spare.
constexpr double kFilterSeconds = 0.5;

/// A network of lines that all fade by 60 dB in the time of its first knob, at low frequencies and
/// 44100 Hz, behind a pre-delay in samples of that rate. See `fdnLineGain`.
double fdnSeconds(double decaySeconds, double preDelay, double decibels) {
  constexpr double kLongestLine = 1361.0 / kReferenceRate;
  const double ratio = engineRate() / kReferenceRate;
  const double sixty = decaySeconds * ratio / (0.5 * ratio + 0.5);
  return sixty * decibels / 60.0 + preDelay / kReferenceRate + kLongestLine;
}

/// Four lines that feed each other without a loss but for `feedback`: none fades faster than the
/// longest of them alone, which drifts a little.
double ambienceSeconds(double size, double feedback, double decibels) {
  constexpr double kLongestLine = 4297.0 / kReferenceRate;
  constexpr double kDrift = 0.1;
  constexpr double kMostFeedback = 0.998;
  const double line = (size + kDrift) * kLongestLine;
  const double lossDb = -20.0 * std::log10(std::min(feedback, kMostFeedback));
  return line * (1.0 + decibels / lossDb);
}

}  // namespace

double masterTailSeconds(const GlobalControls& globals, double decibels) {
  const int menu = globals.masterFxType - kMasterFxOff;
  if (menu <= kMasterOff || globals.masterFxBypass) return 0.0;
  const auto native = [&](std::size_t knob) {
    return masterFxScale(menu, static_cast<int>(knob), globals.masterFxParam[knob]).native;
  };
  const double faded = std::max(decibels, 0.0);
  switch (menu) {
    case kMasterOrvant:
      return ambienceSeconds(native(0), native(1), faded);
    case kMasterReverb:
    case kMasterRoom:
      return fdnSeconds(native(0), native(1), faded);
    default:
      return kFilterSeconds;
  }
}

}  // namespace orvantesco
