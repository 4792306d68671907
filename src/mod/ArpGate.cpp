#include "mod/ArpGate.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/RateValues.h"

namespace orvantesco {

namespace {

constexpr double kGlideFactor = 1.5;
// Songs end long before it, and twice as many still fit an int.
constexpr int kLastCount = 1000000000;

double usable(double value) noexcept { return std::isfinite(value) ? std::max(value, 0.0) : 0.0; }

}  // namespace

void ArpGate::setStepCount(int count) noexcept { stepCount = std::clamp(count, 1, kSteps); }

void ArpGate::setPolarity(Polarity polarity) noexcept {
  offset = polarity == Polarity::Bipolar ? -1.0 : 0.0;
  gain = polarity == Polarity::Bipolar ? 2.0 : 1.0;
  if (polarity == Polarity::Negative) gain = -1.0;
}

void ArpGate::setGlide(double ms) noexcept {
  if (ms == glideMs) return;
  glideMs = ms;
  glide.setTime(kGlideFactor * ms);
}

void ArpGate::setStepsPerBeat(double steps) noexcept {
  if (steps == stepsPerBeat) return;
  stepsPerBeat = steps;
  tempoTaken = -1.0;
}

void ArpGate::rateChanged() noexcept {
  DSPShell::rateChanged();
  tempoTaken = -1.0;
  glide.rateChanged();
}

void ArpGate::restart() noexcept {
  counter = stepNow = 0;
  lastCounter = -1;
  fraction = 0.0;
  lastClock = 0;
  glide.snap(0.0);
}

double ArpGate::stepValue(int step, bool withDepth) const noexcept {
  const double level = levels[static_cast<std::size_t>(step < 0 ? stepNow : step)];
  return withDepth ? level * depth : level;
}

int ArpGate::drawStep() noexcept {
  // In single precision; the highest draw gives the level behind the last step.
  const float share = static_cast<float>(random.next() / static_cast<double>(RandomDraw::kMax));
  return static_cast<int>(static_cast<float>(stepCount) * share);
}

int ArpGate::cycleLength() const noexcept {
  return direction == Direction::ForwardBackward ? 2 * stepCount : stepCount;
}

/// The step that the counter stands for, the counter being within the cycle.
void ArpGate::placeStep() noexcept {
  switch (direction) {
    case Direction::Forward:
      stepNow = counter;
      break;
    case Direction::Backward:
      stepNow = stepCount - counter - 1;
      break;
    case Direction::ForwardBackward:
      // The end steps sound twice.
      stepNow = counter < stepCount ? counter : 2 * stepCount - counter - 1;
      break;
    case Direction::Random:
      stepNow = drawStep();
      break;
  }
  lastCounter = counter;
}

void ArpGate::countClock() noexcept {
  if (*clockSource == 1 && lastClock < 1) ++counter;
  lastClock = *clockSource;
}

void ArpGate::countTime(double tempo) noexcept {
  if (tempo != tempoTaken) {
    tempoTaken = tempo;
    // Held at once: the product may leave the range of a double, and what is infinite never heals.
    stepsPerVector = std::min<double>(
        kVectorLength * stepsPerBeat * usable(tempo) / sampleRate / 60.0, kLastCount);
  }
  fraction += stepsPerVector;
  // More than one step in a sub-block: the whole ones must not pile up.
  const double whole = std::trunc(fraction);
  counter += static_cast<int>(std::min<double>(whole, kLastCount));
  fraction -= whole;
}

void ArpGate::runFree(double tempo) noexcept {
  if (clockSource != nullptr) {
    countClock();
  } else {
    countTime(tempo);
  }
  if (counter == lastCounter) return;
  // A random walk has no cycle; its count only says that time has come.
  const bool wraps = direction != Direction::Random;
  if (counter >= (wraps ? cycleLength() : kLastCount)) counter = 0;
  placeStep();
}

void ArpGate::runSynced(double beatPosition) noexcept {
  const double steps =
      std::min<double>(std::trunc(stepsPerBeat * usable(beatPosition)), kLastCount);
  const int count = static_cast<int>(steps);
  if (count == lastCounter) return;
  counter = direction == Direction::Random ? count : count % cycleLength();
  placeStep();
}

void ArpGate::process(const Clock& clock, double* out) noexcept {
  if (syncMode) {
    runSynced(clock.beatPosition);
  } else {
    runFree(clock.tempo);
  }
  const double target = levels[static_cast<std::size_t>(stepNow)] * gain + offset;
  vecMulConst(glide.ramp(target), depth, out, kVectorLength);
}

}  // namespace orvantesco
