#pragma once

#include <array>

#include "core/SlotControls.h"
#include "delay/TapEchoes.h"

namespace orvantesco {

/// What one tap does in one sub-block.
struct PlannedTap {
  double delay = 0.0;  ///< samples from the write position, main modulation not included
  double gainA = 1.0;  ///< gain on the left output
  double gainB = 1.0;  ///< gain on the right output
  bool soundsL = false, soundsR = false;  ///< heard on that side's delay
  bool readL = false, readR = false;      ///< read at all: heard, fed back or the last one
};

enum TapPanMode { kPanStereo, kPanDualMono, kPanLeft, kPanRight };

/// All taps of a slot in "TAPPED" mode for one sub-block.
struct TapPlan {
  std::array<PlannedTap, TapControls::kSteps> taps;
  int count = 0;        ///< taps that the loop walks through
  int lastTap = 0;      ///< the tap that ends the pattern
  int feedbackTap = 0;  ///< the tap that goes round
  int panMode = kPanStereo;
  TapEchoes swell;  ///< the same for all taps
};

/// Lays the taps out in time. `intervalSamples` is the gap between two taps before swing and steps;
/// each step stretches or shrinks the gap before its tap and moves all later taps with it.
/// `wetShare` scales the gains; taps beyond `longestDelay` samples are not read.
TapPlan planTaps(const TapControls& controls, double intervalSamples, double wetShare,
                 double longestDelay) noexcept;

/// Echoes for a swell of 0..1: quieter and earlier one after the other on a square-law time curve.
TapEchoes planSwell(double swell) noexcept;

/// One sounding tap of one side.
struct TapVoice {
  const PlannedTap& tap;
  int index;              ///< 0..15
  int side;               ///< 0 left, 1 right
  const double* samples;  ///< what the tap reads, 32 samples
};

}  // namespace orvantesco
