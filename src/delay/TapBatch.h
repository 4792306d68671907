#pragma once

#include "delay/TapLanes.h"
#include "delay/TapReader.h"

namespace orvantesco {

/// The taps of one call, sorted by what has to be done for them. Lives on the stack of the call
/// and is filled from the front, so its arrays are left without initial values on purpose.
struct TapBatch {  // NOLINT(cppcoreguidelines-pro-type-member-init)
  static constexpr int kSpan = kVectorLength + 1;

  // To be filled field by field: a whole struct would be copied in wider pieces than it was
  // written in, for which the processor has to wait.
  SettledTap& nextSettled() noexcept { return settled[settledCount++]; }
  MovingTap& nextMoving() noexcept { return moving[movingCount++]; }

  /// Room for one span of samples, for a tap that reads where nothing is written.
  double* nextScratch() noexcept { return scratch[scratchCount++]; }

  void run(const TapGlide& glide) const noexcept {
    if (settledCount > 0) tapLanesFor(settledCount).readSettled(settled, settledCount);
    if (movingCount > 0) tapLanesFor(movingCount).readMoving(moving, movingCount, glide);
  }

  bool isCalm = true;  ///< no tap of it can run away within this block
  int settledCount = 0;
  int movingCount = 0;
  int scratchCount = 0;
  SettledTap settled[TapReader::kTapCount];
  MovingTap moving[TapReader::kTapCount];
  double scratch[TapReader::kTapCount][kSpan];
};

}  // namespace orvantesco
