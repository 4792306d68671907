#pragma once

#include <array>

#include "model/DelayModel.h"
#include "model/ModelBlocks.h"
#include "model/Settings.h"

namespace orvantesco::model {

enum class Route { dual, ppL, ppML, ppR, ppMR, ppLR, mix, mL, mR };

/// A slot's settings in the units of processing, worked out of the bank's values.
struct SlotValues {
  SlotValues() = default;
  SlotValues(const Settings& bank, int slot, const Rates& rates);

  bool on = false;
  bool delayOn = true;
  int input = 0;
  int directOut = 3;
  int outputMode = 0;
  bool panBeforeWidth = false;
  double inputGain = 0.0;
  double level = 0.0;
  double pan = 0.0;
  double widthCos = 1.0;
  double widthSin = 0.0;
  double wetShare = 1.0;
  double offsetL = 0.0;  ///< whole samples
  double offsetR = 0.0;

  DelayMode mode = DelayMode::forward;
  Route route = Route::dual;
  double feedback = 0.0;
  bool proportional = false;
  bool inBeats = false;
  double timeL = 0.0;  ///< seconds, or beats under `inBeats`
  double timeR = 0.0;
  double spread = 0.0;  ///< samples, for the left; the right takes its negative
  double lowpassHz = 0.0;
  double highpassHz = 0.0;

  bool matrixOn = false;
  std::array<double, 4> matrix{};

  int lastTap = 0;
  int feedbackTap = 0;
  int tapPanMode = 0;
  bool allTapsOut = false;
  double tapIntervalS = 0.0;
  double tapBeats = 0.0;  ///< 0: the interval is in seconds
  double swell = 0.0;
  double swing = 0.0;
  double timeDepth = 1.0;
  double levelDepth = 1.0;
  double panWidth = 1.0;
  std::array<double, 16> timeStep{};
  std::array<double, 16> levelStep{};
  std::array<double, 16> panStep{};

  double grainSizeMs = 0.0;
  double grainOctaves = 0.0;
  double grainPosition = 0.0;
  double grainFadeMs = 0.0;
  double reverseFadeMs = 0.0;
  bool reverseOnBar = false;

 private:
  void takeTimes(const Settings& bank, int slot, const Rates& rates);
  void takeTaps(const Settings& bank, int slot);
};

/// Quarter notes of a timebase 1..10, 1 for "MS".
double timebaseFactor(double timebase);

}  // namespace orvantesco::model
