#include "model/SlotValues.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvantesco::model {

namespace {

/// Reads one slot's values out of the bank.
struct Reader {
  const Settings& bank;
  int slot;

  double value(const char* family) const { return bank.at(slotName(family, slot)); }
  double percent(const char* family) const { return value(family) * 0.01; }
  int index(const char* family) const { return static_cast<int>(std::round(value(family))); }
  bool flag(const char* family) const { return index(family) != 0; }
};

}  // namespace

double timebaseFactor(double timebase) {
  constexpr double kFactors[] = {1.0,   0.5,    0.25,      0.125,     0.0625,    0.75,
                                 0.375, 0.1875, 1.0 / 3.0, 1.0 / 6.0, 1.0 / 12.0};
  return kFactors[static_cast<int>(timebase)];
}

SlotValues::SlotValues(const Settings& bank, int slot, const Rates& rates) {
  const Reader read{bank, slot};
  on = read.flag("SlotOn");
  delayOn = read.flag("DelayOn");
  input = read.index("Input");
  directOut = read.index("Direct Out");
  outputMode = read.index("Output Mode");
  panBeforeWidth = read.flag("PanPosition");
  inputGain = gainOrSilence(read.value("Input Gain"));
  level = gainOrSilence(read.value("Level"));
  pan = read.percent("Panning");
  const double angle = (1.0 - read.percent("Width")) * std::numbers::pi / 4.0;
  widthCos = std::cos(angle);
  widthSin = std::sin(angle);
  wetShare = std::min(2.0 - read.value("Direct In") * 0.02, 1.0);
  const double offsetMs = std::round(read.value("L/R Offset"));
  offsetL = std::floor(std::abs(std::min(offsetMs, 0.0)) * 0.001 * rates.clamped);
  offsetR = std::floor(std::max(offsetMs, 0.0) * 0.001 * rates.clamped);
  takeTimes(bank, slot, rates);
  takeTaps(bank, slot);
  matrixOn = read.flag("FB Matrix");
  for (int from = 0; from < 4; ++from)
    matrix[static_cast<size_t>(from)] =
        read.percent(("Slot" + std::to_string(from + 1) + " FB").c_str());
}

void SlotValues::takeTimes(const Settings& bank, int slot, const Rates& rates) {
  const Reader read{bank, slot};
  mode = static_cast<DelayMode>(read.index("Delay Mode"));
  route = static_cast<Route>(read.index("Delay Route"));
  feedback = read.percent("Feedback");
  proportional = read.flag("FBProportional");
  inBeats = read.flag("Timebase");
  const double beats = timebaseFactor(read.value("Timebase"));
  timeL = inBeats ? read.value("DelayFactorL") * beats : read.value("Delay TimeL") * 0.001;
  timeR = inBeats ? read.value("DelayFactorR") * beats : read.value("Delay TimeR") * 0.001;
  spread = rates.clamped * read.value("Delay Spread") * 0.001;
  lowpassHz = read.value("Delay Lopass");
  highpassHz = read.value("Delay Hipass");
  grainSizeMs = read.value("Grain Size");
  grainOctaves = read.value("Grain Speed");
  grainPosition = read.percent("Grain Position");
  grainFadeMs = read.value("Grain Fade");
  reverseFadeMs = read.value("Reverse X-Fade");
  reverseOnBar = read.index("Reverse Delay Trigger") == 1;
}

void SlotValues::takeTaps(const Settings& bank, int slot) {
  const Reader read{bank, slot};
  lastTap = read.index("DelayTaps");
  const int chosen = read.index("DelayTap FB");
  feedbackTap = chosen == 0 ? lastTap : chosen - 1;
  tapPanMode = read.index("Tap Pan Mode");
  allTapsOut = read.flag("DelayTap DI Out");
  tapIntervalS = read.value("Delay Taps Time") * 0.001;
  tapBeats = read.flag("TapTimebase") ? timebaseFactor(read.value("TapTimebase")) : 0.0;
  swell = read.percent("Delay Taps Swell");
  swing = read.value("Delay Taps Swing") / 3.0 * 0.01;
  timeDepth = read.percent("Tap Time Step Depth");
  levelDepth = read.percent("Tap Level Step Depth");
  panWidth = read.percent("Tap Pan Width");
  for (int t = 0; t < 16; ++t) {
    const auto i = static_cast<size_t>(t);
    timeStep[i] = bank.at(stepName(slot, t, " Time")) * 0.01;
    levelStep[i] = bank.at(stepName(slot, t, " Level")) * 0.01;
    panStep[i] = bank.at(stepName(slot, t, " Pan")) * 0.01;
  }
}

}  // namespace orvantesco::model
