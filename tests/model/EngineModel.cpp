#include "model/EngineModel.h"

#include <algorithm>
#include <cmath>

namespace orvantesco::model {

EngineModel::EngineModel(const HostSetup& setup, const Settings& settings)
    : host(setup),
      rates(setup.sampleRate),
      bank(defaultSettings()),
      inputFilterL(12, 15000.0 / rates.clamped),
      inputFilterR(12, 15000.0 / rates.clamped) {
  for (int slot = 0; slot < 4; ++slot) slots.emplace_back(slot, rates, host.monoInput);
  for (SlotModel& slot : slots) {
    slot.apply(bank, "");
    slotPointers.push_back(&slot);
  }
  outL.assign(static_cast<size_t>(rates.latency()), 0.0);
  outR = outL;
  for (const auto& [name, value] : settings) set(name, value);
}

void EngineModel::set(const std::string& name, double value) {
  bank.at(name) = value;
  const int slot = slotOf(name);
  if (slot >= 0) slots[static_cast<size_t>(slot)].apply(bank, familyOf(name));
  if (slot >= 0 && familyOf(name) == "TapTimebase") fadeRequested = true;
}

void EngineModel::setTapMasks(int slot, unsigned left, unsigned right) {
  slots[static_cast<size_t>(slot)].setTapMasks(left, right);
}

Signal EngineModel::render(const Signal& input) {
  Signal output;
  for (size_t n = 0; n < input.size(); ++n) {
    const double right = host.monoInput ? input.left[n] : input.right[n];
    inL.push_back(std::isfinite(input.left[n]) ? input.left[n] : 0.0);
    inR.push_back(std::isfinite(right) ? right : 0.0);
    output.left.push_back(outL[framesOut]);
    output.right.push_back(outR[framesOut]);
    ++framesOut;
    if (inL.size() % kStep == 0) runStep();
  }
  return output;
}

double EngineModel::nextFadeGain() {
  if (fadeRequested) {
    fadeRequested = false;
    fadeRunning = true;
    fadePosition = 0.0;
    return 0.0;
  }
  if (!fadeRunning) return 1.0;
  fadePosition += kStep / (rates.clamped * 100.0 * 0.001);
  fadeRunning = fadePosition < 1.0;
  return fadePosition * fadePosition;
}

bool EngineModel::nextBarPulse() {
  const double beatsPerSample = std::max(host.tempo, 30.0) / 60.0 / host.sampleRate;
  const double runningBeats =
      static_cast<double>(inL.size() - 1) * host.tempo / 60.0 / host.sampleRate;
  stoppedSamples += kStep;
  const double position = host.transportRuns ? runningBeats : stoppedSamples * beatsPerSample;
  const double bar = std::floor(std::floor(position) / 4.0);
  const bool pulse = bar != lastBar;
  lastBar = bar;
  return pulse;
}

void EngineModel::runStep() {
  StepContext step;
  StereoBlock dry;
  step.fadeGain = nextFadeGain();
  step.barPulse = nextBarPulse();
  step.secondsPerBeat = 60.0 / std::max(host.tempo, 30.0);
  step.timeScale = std::exp2(bank.at("Delay Time Scale") * 0.01);
  step.feedbackMaster = bank.at("Feedback Master") * 0.01;
  const double dryGain = bank.at("Dry Level") * 0.01 * gainOfDb(bank.at("Output Level"));
  const size_t first = inL.size() - kStep;
  for (size_t i = 0; i < kStep; ++i) {
    const double left = inL[first + i] * step.fadeGain;
    const double right = inR[first + i] * step.fadeGain;
    dry.left[i] = left * dryGain;
    dry.right[i] = right * dryGain;
    step.in.left[i] = inputFilterL.tick(left + 1e-15);
    step.in.right[i] = inputFilterR.tick(right + 1e-15);
  }
  for (SlotModel& slot : slots) slot.process(step, slotPointers);
  for (SlotModel& slot : slots) slot.writeFeedback(step, slotPointers);
  mixStep(dry, step.wet, step.fadeGain);
}

void EngineModel::mixStep(const StereoBlock& dry, const StereoBlock& wet, double fadeGain) {
  const double x = (bank.at("Global Width") - 100.0) * 0.01;
  const double midGain = (1.0 - std::max(0.0, x)) * 0.5;
  const double sideGain = (1.0 + std::min(x, 0.0)) * 0.5;
  const double g = bank.at("Wet Level") * 0.01 * gainOfDb(bank.at("Output Level")) * fadeGain;
  for (size_t i = 0; i < kStep; ++i) {
    const double mid = (wet.left[i] + wet.right[i]) * midGain;
    const double side = (wet.left[i] - wet.right[i]) * sideGain;
    outL.push_back(dry.left[i] + (mid + side) * g);
    outR.push_back(dry.right[i] + (mid - side) * g);
  }
}

}  // namespace orvantesco::model
