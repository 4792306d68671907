// A slot's delays: reading them, what goes round, and writing it back.

#include <algorithm>
#include <cmath>

#include "core/EngineRate.h"
#include "core/Orvantesco.h"
#include "core/SlotPass.h"

namespace orvantesco {

namespace {

/// Bends what lies beyond ±1 towards ±1.5, so that a loop with a gain above 1 settles.
void softClip(AudioVector& vector) noexcept {
  double peak = 0.0;
  vecMaxAbs(vector.data(), kVectorLength, &peak);
  if (peak <= 1.0) return;
  for (double& x : vector) {
    if (x > 1.0) {
      x = 1.0 + 0.5 * (x - 1.0) / x;
    } else if (x < -1.0) {
      x = -1.0 - 0.5 * (x + 1.0) / x;
    }
  }
}

void readForward(Slot& slot, const SlotPass& pass) noexcept {
  QLMMultiDelay& left = slot.delay[0];
  QLMMultiDelay& right = slot.delay[1];
  StereoVector& out = slot.stage[kStageDelay];
  const double delayL = pass.delayL + pass.modL;
  const double delayR = pass.delayR + pass.modR;
  if (pass.monoL || pass.monoR) {
    // One channel alone is read; the other has nothing to say.
    QLMMultiDelay& line = pass.monoL ? left : right;
    line.readTap(pass.monoL ? delayL : delayR, kVectorLength, 0);
    vecCopy(line.result(), (pass.monoL ? out.left : out.right).data(), kVectorLength);
    (pass.monoL ? out.right : out.left).fill(0.0);
    return;
  }
  QLMMultiDelay::readTapPair(left, delayL, right, delayR, kVectorLength);
  vecCopy(left.result(), out.left.data(), kVectorLength);
  vecCopy(right.result(), out.right.data(), kVectorLength);
}

/// The reverse reader takes the modulation through its own glide, and no spread.
void readBackward(Slot& slot, const SlotPass& pass) noexcept {
  const auto read = [&](QLMMultiDelay& delay, double mod, double units, AudioVector& out) {
    delay.setReverseMod(mod);
    vecCopy(delay.readTap(pass.samplesPerUnit * units, kVectorLength, 0), out.data(),
            kVectorLength);
  };
  read(slot.delay[0], pass.modL, pass.unitsL, slot.stage[kStageDelay].left);
  read(slot.delay[1], pass.modR, pass.unitsR, slot.stage[kStageDelay].right);
}

void routeFeedback(Slot& slot, DelayRoute route) noexcept {
  const StereoVector& delayed = slot.stage[kStageDelay];
  StereoVector& round = slot.feedbackVec;
  switch (route) {
    case DelayRoute::Dual:
      round = delayed;
      break;
    case DelayRoute::Mix:
      vecSub(delayed.right.data(), delayed.left.data(), round.left.data(), kVectorLength);
      vecAdd(delayed.left.data(), delayed.right.data(), round.right.data(), kVectorLength);
      break;
    case DelayRoute::MonoL:
      round.left = delayed.left;
      round.right.fill(0.0);
      slot.delayOutR = delayed.left.data();
      break;
    case DelayRoute::MonoR:
      round.right = delayed.right;
      round.left.fill(0.0);
      slot.delayOutL = delayed.right.data();
      break;
    default:  // the ping-pongs
      round.left = delayed.right;
      round.right = delayed.left;
  }
}

}  // namespace

void Orvantesco::readDelays(Slot& slot, SlotPass& pass) noexcept {
  StereoVector& delayed = slot.stage[kStageDelay];
  StereoVector& post = slot.stage[kStagePost];
  slot.delayOutL = delayed.left.data();
  slot.delayOutR = delayed.right.data();
  if (pass.mode == DelayMode::Tapped) {
    readTaps(slot, pass);
    return;
  }
  if (pass.mode == DelayMode::Backward) {
    readBackward(slot, pass);
  } else {
    readForward(slot, pass);
  }
  runFeedbackEffect(slot, pass);
  routeFeedback(slot, pass.route);
  const double share = slot.controls.wetShare;
  vecMulConst(slot.delayOutL, share, post.left.data(), kVectorLength);
  vecMulConst(slot.delayOutR, share, post.right.data(), kVectorLength);
}

void Orvantesco::runFeedbackEffect(Slot& slot, const SlotPass& pass) noexcept {
  if (!effectRuns(slot.index, kStageFB)) return;
  StereoVector& delayed = slot.stage[kStageDelay];
  runEffectInPlace(pass.monoR ? nullptr : delayed.left.data(),
                   pass.monoL ? nullptr : delayed.right.data(), positionOf(slot, kStageFB),
                   pass.instance());
}

void Orvantesco::mixDelay(Slot& slot) noexcept {
  softClip(slot.feedbackVec.left);
  softClip(slot.feedbackVec.right);
  const double direct = slot.controls.directIn;
  const StereoVector& pre = slot.stage[kStagePre];
  StereoVector& post = slot.stage[kStagePost];
  vecAddProductConst(pre.left.data(), direct, post.left.data(), kVectorLength);
  vecAddProductConst(pre.right.data(), direct, post.right.data(), kVectorLength);
}

void Orvantesco::writeFeedback(int slotIndex, double feedbackL, double feedbackR) noexcept {
  Slot& slot = slots[static_cast<std::size_t>(slotIndex)];
  StereoVector& write = buses.scratch;
  if (slot.controls.matrixOn) {
    write = {};
    for (std::size_t from = 0; from < numSlots; ++from) {
      if (!slots[from].running || !slots[from].delayRunning) continue;
      const double gain = slot.controls.matrix[from];
      vecAddProductConst(slots[from].feedbackVec.left.data(), gain * feedbackL, write.left.data(),
                         kVectorLength);
      vecAddProductConst(slots[from].feedbackVec.right.data(), gain * feedbackR, write.right.data(),
                         kVectorLength);
    }
  } else {
    vecMulConst(slot.feedbackVec.left.data(), feedbackL, write.left.data(), kVectorLength);
    vecMulConst(slot.feedbackVec.right.data(), feedbackR, write.right.data(), kVectorLength);
  }
  // In the loop, so that no DC builds up at high gains.
  slot.feedbackDc[0].process(write.left.data(), kVectorLength);
  slot.feedbackDc[1].process(write.right.data(), kVectorLength);
  const auto finish = [&](const AudioVector& feed, AudioVector& out, QLMMultiDelay& delay) {
    vecAddInPlace(feed.data(), out.data(), kVectorLength);
    vecMulConstInPlace(fadeGain, out.data(), kVectorLength);
    delay.writeBlock(out.data(), kVectorLength);
  };
  finish(slot.delayFeed.left, write.left, slot.delay[0]);
  finish(slot.delayFeed.right, write.right, slot.delay[1]);
}

}  // namespace orvantesco
