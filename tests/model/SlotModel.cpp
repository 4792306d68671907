#include "model/SlotModel.h"

#include <algorithm>
#include <cmath>

namespace orvantesco::model {

namespace {

StereoBlock sum(const StereoBlock& a, const StereoBlock& b) {
  StereoBlock out;
  for (size_t i = 0; i < kStep; ++i) {
    out.left[i] = a.left[i] + b.left[i];
    out.right[i] = a.right[i] + b.right[i];
  }
  return out;
}

}  // namespace

SlotModel::SlotModel(int index, const Rates& theRates, bool isMonoHost)
    : slot(index),
      rates(theRates),
      monoHost(isMonoHost),
      delays{DelayModel(theRates), DelayModel(theRates)} {
  for (Glide* glide : {&inputGlide, &panGlide, &levelGlide}) glide->setTime(60.0, rates.clamped);
}

void SlotModel::setTapMasks(unsigned left, unsigned right) { tapMask = {left, right}; }

void SlotModel::apply(const Settings& bank, const std::string& changed) {
  values = SlotValues(bank, slot, rates);
  for (DelayModel& delay : delays) {
    delay.setLowpassHz(values.lowpassHz);
    delay.setHighpassHz(values.highpassHz);
    delay.setReverseFade(values.reverseFadeMs);
    delay.setGrain(values.grainSizeMs, values.grainOctaves, values.grainPosition,
                   values.grainFadeMs);
  }
  reactTo(changed, bank.at(slotName("Direct In", slot)));
  reactToTime(changed);
}

void SlotModel::reactTo(const std::string& changed, double directInPercent) {
  if (changed.empty() || changed == "Direct In")
    directIn = values.delayOn ? std::min(directInPercent * 0.02, 1.0) : 1.0;
  if (changed == "SlotOn" && !values.on) {
    resetDelays();
    silenceStages();
  }
  if (changed == "DelayOn") {
    directIn = values.delayOn ? directInPercent * 0.01 : 1.0;
    if (values.delayOn) {
      resetDelays();
      feedbackVec = StereoBlock{};
    } else {
      stageDelay = delayOut = StereoBlock{};
    }
  }
  if (changed == "Input") {
    directOutParked = values.input == 4;
    monoFallback = monoHost && values.input < 4;
  }
  if (changed == "Direct Out") directOutParked = false;
}

void SlotModel::reactToTime(const std::string& changed) {
  if (changed.empty() || changed == "Delay Mode")
    for (DelayModel& delay : delays) delay.setMode(values.mode);
  if (changed == "TapTimebase") resetDelays();
  const bool newBase = changed == "Timebase";
  if (newBase)
    for (DelayModel& delay : delays) delay.snapNextRead();
  for (size_t side = 0; side < 2; ++side) {
    const bool newFactor = changed == (side == 0 ? "DelayFactorL" : "DelayFactorR");
    if (!newFactor && !(newBase && values.inBeats)) continue;
    delays[side].clearTapMemory();
    delays[side].snapNextRead();
  }
}

void SlotModel::resetDelays() {
  for (DelayModel& delay : delays) delay.reset();
}

void SlotModel::silenceStages() {
  for (StereoBlock* stage : {&stageInput, &stagePre, &stageDelay, &delayOut, &stagePost, &stageOut})
    *stage = StereoBlock{};
}

StereoBlock SlotModel::directOut() const {
  if (!values.on || directOutParked) return StereoBlock{};
  switch (values.directOut) {
    case 0:
      return stagePre;
    case 1:
      return delayOut;
    case 2:
      return stagePost;
    default:
      return stageOut;
  }
}

void SlotModel::process(StepContext& step, const std::vector<SlotModel*>& before) {
  feedbackVec = StereoBlock{};
  if (!values.on) return;
  takeInput(step, before);
  applyOffset();
  for (DelayModel& delay : delays) delay.triggerReverse(values.reverseOnBar && step.barPulse);
  findTimesAndFeedback(step);
  feedDelay();
  if (values.delayOn) {
    readDelay(step);
  } else {
    stagePost = stagePre;
  }
  panAndLevel(step);
  addToWet(step);
}

void SlotModel::takeInput(const StepContext& step, const std::vector<SlotModel*>& before) {
  const Block& left = step.in.left;
  const Block& right = step.in.right;
  StereoBlock mono;
  for (size_t i = 0; i < kStep; ++i) mono.left[i] = mono.right[i] = left[i] + right[i];
  const auto from = [&](size_t other) { return before[other]->directOut(); };

  const int choice = monoFallback ? 1 : values.input;
  const bool fourth = slot == 3;
  switch (choice) {
    case 1:
      stageInput = {left, left};
      break;
    case 2:
      stageInput = {right, right};
      break;
    case 3:
      stageInput = step.in;
      break;
    case 4:
      stageInput = step.masterReturn;
      break;
    case 5:
      stageInput = from(0);
      break;
    case 6:
      stageInput = from(1);
      break;
    case 7:
      stageInput = fourth ? from(2) : sum(from(0), from(1));
      break;
    case 8:
      stageInput = sum(from(0), from(1));
      break;
    case 9:
      stageInput = sum(from(0), from(2));
      break;
    case 10:
      stageInput = sum(from(1), from(2));
      break;
    case 11:
      stageInput = sum(sum(from(0), from(1)), from(2));
      break;
    default:
      stageInput = mono;
  }
  for (size_t i = 0; i < kStep; ++i) {
    const double gain = inputGlide.tick(values.inputGain * step.fadeGain);
    stageInput.left[i] *= gain;
    stageInput.right[i] *= gain;
  }
}

void SlotModel::applyOffset() {
  const std::array<double, 2> offset{values.offsetL, values.offsetR};
  for (size_t side = 0; side < 2; ++side) {
    const Block& in = side == 0 ? stageInput.left : stageInput.right;
    Block& out = side == 0 ? stagePre.left : stagePre.right;
    std::vector<double>& line = offsetLine[side];
    line.insert(line.end(), in.begin(), in.end());
    const long first = static_cast<long>(line.size()) - kStep - static_cast<long>(offset[side]);
    for (long i = 0; i < kStep; ++i)
      out[static_cast<size_t>(i)] = first + i < 0 ? 0.0 : line[static_cast<size_t>(first + i)];
  }
}

void SlotModel::findTimesAndFeedback(const StepContext& step) {
  const double beat = values.inBeats ? step.secondsPerBeat : 1.0;
  const double base = rates.clamped * beat * step.timeScale;
  plainL = base * values.timeL;
  plainR = base * values.timeR;
  delayL = std::max(0.001, plainL + values.spread);
  delayR = std::max(0.001, plainR - values.spread);

  double f = std::clamp(values.feedback + step.feedbackMaster, 0.0, 1.6);
  if (values.route == Route::mix) f *= 0.7;
  feedbackL = feedbackR = f;
  const bool forwardDual = values.mode == DelayMode::forward && values.route == Route::dual;
  if (!forwardDual || !values.proportional) return;
  if (delayL >= delayR) {
    feedbackR = std::pow(f, delayR / delayL);
  } else {
    feedbackL = std::pow(f, delayL / delayR);
  }
}

void SlotModel::feedDelay() {
  delayFeed = stagePre;
  const bool plain = values.mode == DelayMode::tapped || values.mode == DelayMode::backward;
  if (plain || values.route == Route::dual) return;
  const bool sumLeft = values.route == Route::ppML;
  const bool sumRight = values.route == Route::ppMR;
  const bool leftOnly = values.route == Route::ppL;
  const bool rightOnly = values.route == Route::ppR;
  for (size_t i = 0; i < kStep; ++i) {
    const double both = (stagePre.left[i] + stagePre.right[i]) * 0.66;
    if (sumLeft) delayFeed.left[i] = both;
    if (sumRight) delayFeed.right[i] = both;
    if (sumRight || rightOnly) delayFeed.left[i] = 0.0;
    if (sumLeft || leftOnly) delayFeed.right[i] = 0.0;
  }
}

void SlotModel::panAndLevel(const StepContext& step) {
  for (size_t i = 0; i < kStep; ++i) {
    const double p = panGlide.tick(values.pan);
    const double gain = levelGlide.tick(values.level * step.fadeGain);
    const double gainL = std::min(1.0 - p, 1.0) * gain;
    const double gainR = std::min(1.0 + p, 1.0) * gain;
    double a = stagePost.left[i];
    double b = stagePost.right[i];
    if (values.panBeforeWidth) {
      a *= gainL;
      b *= gainR;
    }
    double left = a * values.widthCos + b * values.widthSin;
    double right = b * values.widthCos + a * values.widthSin;
    if (!values.panBeforeWidth) {
      left *= gainL;
      right *= gainR;
    }
    stageOut.left[i] = left;
    stageOut.right[i] = right;
  }
}

void SlotModel::addToWet(StepContext& step) const {
  if (values.outputMode == 2) return;
  const bool swapped = values.outputMode == 1;
  for (size_t i = 0; i < kStep; ++i) {
    step.wet.left[i] += swapped ? stageOut.right[i] : stageOut.left[i];
    step.wet.right[i] += swapped ? stageOut.left[i] : stageOut.right[i];
  }
}

void SlotModel::writeFeedback(const StepContext& step, const std::vector<SlotModel*>& all) {
  if (!values.on) return;
  Block left{};
  Block right{};
  for (size_t i = 0; i < kStep; ++i) {
    double roundL = feedbackVec.left[i];
    double roundR = feedbackVec.right[i];
    if (values.matrixOn) {
      roundL = roundR = 0.0;
      for (size_t j = 0; j < 4; ++j) {
        if (!all[j]->values.on || !all[j]->values.delayOn) continue;
        roundL += all[j]->feedbackVec.left[i] * values.matrix[j];
        roundR += all[j]->feedbackVec.right[i] * values.matrix[j];
      }
    }
    left[i] = (dc[0].tick(roundL * feedbackL) + delayFeed.left[i]) * step.fadeGain;
    right[i] = (dc[1].tick(roundR * feedbackR) + delayFeed.right[i]) * step.fadeGain;
  }
  delays[0].write(left);
  delays[1].write(right);
}

}  // namespace orvantesco::model
