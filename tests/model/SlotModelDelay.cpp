// How a slot reads its two delays: as echoes under a route, or as a pattern of taps.

#include <algorithm>
#include <cmath>

#include "model/SlotModel.h"

namespace orvantesco::model {

namespace {

/// Between -1 and 1 nothing changes; beyond, the curve runs towards 1.5.
double softClip(double x) {
  if (x > 1.0) return 1.0 + 0.5 * (x - 1.0) / x;
  if (x < -1.0) return -1.0 - 0.5 * (x + 1.0) / x;
  return x;
}

void addScaled(Block& to, const Block& from, double gain) {
  for (size_t i = 0; i < kStep; ++i) to[i] += from[i] * gain;
}

}  // namespace

void SlotModel::readDelay(const StepContext& step) {
  if (values.mode == DelayMode::tapped) {
    readTaps(step);
  } else {
    readPlain();
    routeFeedback();
    for (size_t i = 0; i < kStep; ++i) {
      stagePost.left[i] = delayOut.left[i] * values.wetShare;
      stagePost.right[i] = delayOut.right[i] * values.wetShare;
    }
  }
  for (double& x : feedbackVec.left) x = softClip(x);
  for (double& x : feedbackVec.right) x = softClip(x);
  addScaled(stagePost.left, stagePre.left, directIn);
  addScaled(stagePost.right, stagePre.right, directIn);
}

void SlotModel::readPlain() {
  stageDelay = StereoBlock{};
  if (values.mode == DelayMode::backward) {
    stageDelay.left = delays[0].read(plainL, 0);
    stageDelay.right = delays[1].read(plainR, 0);
    return;
  }
  if (values.route != Route::mR) stageDelay.left = delays[0].read(delayL, 0);
  if (values.route != Route::mL) stageDelay.right = delays[1].read(delayR, 0);
}

void SlotModel::routeFeedback() {
  delayOut = stageDelay;
  switch (values.route) {
    case Route::dual:
      feedbackVec = stageDelay;
      break;
    case Route::mix:
      for (size_t i = 0; i < kStep; ++i) {
        feedbackVec.left[i] = stageDelay.left[i] - stageDelay.right[i];
        feedbackVec.right[i] = stageDelay.left[i] + stageDelay.right[i];
      }
      break;
    case Route::mL:
      feedbackVec.left = stageDelay.left;
      delayOut.right = stageDelay.left;
      break;
    case Route::mR:
      feedbackVec.right = stageDelay.right;
      delayOut.left = stageDelay.right;
      break;
    default:
      feedbackVec.left = stageDelay.right;
      feedbackVec.right = stageDelay.left;
  }
}

void SlotModel::readTaps(const StepContext& step) {
  stagePost = stageDelay = StereoBlock{};
  const double seconds =
      values.tapBeats != 0.0 ? values.tapBeats * step.secondsPerBeat : values.tapIntervalS;
  const double interval = seconds * rates.clamped * step.timeScale;
  double accum = 0.0;
  for (int t = 0; t <= std::max(values.lastTap, values.feedbackTap); ++t) {
    const double swingFactor = t % 2 == 0 ? 1.0 + values.swing : 1.0 - values.swing;
    const double timeStep = values.timeStep[static_cast<size_t>(t)];
    const double stretch = 1.0 - values.timeDepth + values.timeDepth * timeStep;
    accum += std::min(stretch, 1.0) * interval * swingFactor;
    if (accum > static_cast<double>(rates.ringLength())) continue;
    readTapSide(t, 0, accum);
    readTapSide(t, 1, accum);
  }
  if (values.allTapsOut) stageDelay = stagePost;
  delayOut = stageDelay;
}

void SlotModel::readTapSide(int tap, int side, double accum) {
  const bool masked = (tapMask[static_cast<size_t>(side)] >> tap & 1U) == 0;
  const int sideWithout = side == 0 ? 3 : 2;
  const bool sounds = !masked && tap <= values.lastTap && values.tapPanMode != sideWithout;
  const bool last = tap == values.lastTap;
  const bool feedsBack = tap == values.feedbackTap;
  if (!sounds && !last && !feedsBack) return;

  const Block heard = delays[static_cast<size_t>(side)].read(accum, tap);
  Block& round = side == 0 ? feedbackVec.left : feedbackVec.right;
  if (feedsBack) {
    round.fill(0.0);
    addScaled(round, heard, feedbackL);
  }
  if (last) (side == 0 ? stageDelay.left : stageDelay.right) = heard;
  if (!sounds) return;

  Block work = heard;
  addSwell(work, side, accum);
  const double step = values.levelStep[static_cast<size_t>(tap)];
  const double level = std::clamp(step + 1.0 - values.levelDepth, 0.0, 1.0) * values.wetShare;
  const double p = values.panStep[static_cast<size_t>(tap)] * values.panWidth;
  const double gainA = std::min(1.0 + p, 1.0) * level;
  const double gainB = std::min(1.0 - p, 1.0) * level;
  if (side == 0 || values.tapPanMode != 0) addScaled(stagePost.left, work, gainA);
  if (side == 1 || values.tapPanMode != 0) addScaled(stagePost.right, work, gainB);
}

void SlotModel::addSwell(Block& work, int side, double accum) const {
  const double count = values.swell * 16.0;
  const double spacing = 0.45 / count;
  const double reach = values.swell * 0.9 + 0.1;
  for (int k = 1; k <= count; ++k) {
    const double x = k * spacing;
    const double earlier = 8.0 * x * (8.0 * x) * 500.0 * reach;
    const double delay = accum - earlier;
    if (delay <= 0.0) continue;
    addScaled(work, delays[static_cast<size_t>(side)].readRaw(delay), 0.45 - x);
  }
}

}  // namespace orvantesco::model
