#pragma once

#include "params/ParamConstants.h"

namespace orvantesco {

inline constexpr int numSlots = 4;
inline constexpr int numStages = 3;      ///< PRE, FB and POST
inline constexpr int numPositions = 12;  ///< stage * 4 + slot
inline constexpr int numFxParams = 5;    ///< parameters of one effect
inline constexpr int numSteps = 16;      ///< taps of a slot, steps of a lane or gate
inline constexpr int numTapLanes = 5;
inline constexpr int numLfos = 4;
inline constexpr int numGates = 4;
inline constexpr int numEnvelopes = 2;
inline constexpr int numLogicUnits = 4;
inline constexpr int numMasterFxParams = 4;

// ---- index rules ----

/// What a member of the effect parameter block holds.
enum class FxParamKind { value = 0, modDepth = 1, modSource = 2 };

/// Members of a block between `kFxParam1` and `kFxParam2`, and so on up to `kFxParam5`.
inline constexpr int fxParamBlockSize = 36;
/// Members of one lane: 4 slots (or gates) by 16 steps.
inline constexpr int laneSize = numSlots * numSteps;

/// Place of an effect: `stage` 0 PRE, 1 FB, 2 POST; `slot` 0..3; the result is 0..11.
constexpr int fxPosition(int stage, int slot) noexcept { return stage * numSlots + slot; }

/// Index of parameter `p` (0..4) of the effect at `position` (0..11).
constexpr int fxParamIndex(int p, FxParamKind kind, int position) noexcept {
  return kFxParam1 + p * fxParamBlockSize + static_cast<int>(kind) * numPositions + position;
}

/// Index of the effect type and of the on switch of `position` (0..11).
constexpr int fxTypeIndex(int position) noexcept { return kFxTypePre + position; }
constexpr int fxOnIndex(int position) noexcept { return kFxOnPre + position; }

/// Index in a tap lane (`laneBase` one of the `kTapStep...`), `slot` 0..3, `step` 0..15.
constexpr int tapStepIndex(int laneBase, int slot, int step) noexcept {
  return laneBase + slot * numSteps + step;
}

/// Index in the gate lane, `gate` 0..3, `step` 0..15.
constexpr int gateStepIndex(int gate, int step) noexcept {
  return kGateStep + gate * numSteps + step;
}

/// Index of the amount that goes from slot `from` to slot `to` (both 0..3).
constexpr int slotFbIndex(int from, int to) noexcept { return kSlot1Fb + from * numSlots + to; }

// ---- the rules backwards ----

struct FxParamPlace {
  int parameter = 0;  ///< 0..4
  FxParamKind kind = FxParamKind::value;
  int position = 0;  ///< 0..11
};

struct LanePlace {
  int lane = 0;  ///< 0..4: time, level, pan, effect row 1, effect row 2; 0 for the gate lane
  int slot = 0;  ///< slot or gate, 0..3
  int step = 0;  ///< 0..15
};

constexpr bool isFxParam(int index) noexcept {
  return index >= kFxParam1 && index < kFxParam1 + numFxParams * fxParamBlockSize;
}
constexpr bool isFxType(int index) noexcept {
  return index >= kFxTypePre && index < kFxTypePre + numPositions;
}
constexpr bool isTapStep(int index) noexcept {
  return index >= kTapStepTime && index < kTapStepTime + numTapLanes * laneSize;
}
constexpr bool isGateStep(int index) noexcept {
  return index >= kGateStep && index < kGateStep + laneSize;
}

/// Only for indices that `isFxParam` accepts.
constexpr FxParamPlace fxParamPlace(int index) noexcept {
  const int inBlock = (index - kFxParam1) % fxParamBlockSize;
  return {(index - kFxParam1) / fxParamBlockSize, static_cast<FxParamKind>(inBlock / numPositions),
          inBlock % numPositions};
}

/// Only for indices that `isTapStep` accepts.
constexpr LanePlace tapStepPlace(int index) noexcept {
  const int rest = index - kTapStepTime;
  return {rest / laneSize, rest % laneSize / numSteps, rest % numSteps};
}

/// Only for indices that `isGateStep` accepts.
constexpr LanePlace gateStepPlace(int index) noexcept {
  const int rest = index - kGateStep;
  return {0, rest / numSteps, rest % numSteps};
}

}  // namespace orvantesco
