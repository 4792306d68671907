#pragma once

#include <array>

#include "fx/DSPShell.h"
#include "fx/RandomDraw.h"

namespace orvantesco {

/// One of the four step gates: up to sixteen levels, played in one of four directions at a free
/// rate, locked to the song position, or clocked by another modulator's pulses, with a glide
/// between steps. Audio thread only.
class ArpGate : public DSPShell {
 public:
  static constexpr int kSteps = 16;
  enum class Direction { Forward, Backward, ForwardBackward, Random };
  enum class Polarity { Positive, Negative, Bipolar };

  /// Where the song stands, for one sub-block.
  struct Clock {
    double beatPosition = 0.0;  ///< quarter notes; what is below 0 or not finite counts as 0
    double tempo = 120.0;       ///< beats per minute
  };

  ArpGate() = default;

  void setStepCount(int count) noexcept;  ///< 1..16
  void setLevel(int step, double level) noexcept { levels[static_cast<std::size_t>(step)] = level; }
  void setDirection(Direction way) noexcept { direction = way; }
  void setPolarity(Polarity polarity) noexcept;
  void setStepsPerBeat(double steps) noexcept;
  /// A flag whose rising edge moves the step; null for the internal clock.
  void setClockSource(const unsigned char* flag) noexcept { clockSource = flag; }
  /// Locks the step to the song position.
  void setSync(bool locked) noexcept { syncMode = locked; }
  void setDepth(double share) noexcept { depth = share; }
  void setGlide(double ms) noexcept;
  void seed(std::uint32_t start) noexcept { random.seed(start); }

  void rateChanged() noexcept override;
  /// To where a new gate begins, without a glide under way.
  void restart() noexcept;

  /// Computes the next vector of 32.
  using DSPShell::process;
  void process(const Clock& clock, double* out) noexcept;

  /// Level of a step, -1 for the one that sounds, with or without the depth.
  double stepValue(int step, bool withDepth) const noexcept;
  int currentStep() const noexcept { return stepNow; }

 private:
  void runFree(double tempo) noexcept;
  void runSynced(double beatPosition) noexcept;
  void countClock() noexcept;
  void countTime(double tempo) noexcept;
  int cycleLength() const noexcept;
  void placeStep() noexcept;
  int drawStep() noexcept;

  // Settings. The seventeenth level is 0: the highest draw of a random step reads it.
  std::array<double, kSteps + 1> levels{};
  int stepCount = 8;
  Direction direction = Direction::Forward;
  bool syncMode = false;
  const unsigned char* clockSource = nullptr;
  double stepsPerBeat = 1.0;
  double depth = 1.0;
  double glideMs = -1.0;
  double offset = 0.0;
  double gain = 1.0;

  // Derived.
  double tempoTaken = -1.0;  ///< tempo that the next one belongs to, below 0 for none
  double stepsPerVector = 0.0;

  // State.
  int counter = 0;
  int lastCounter = -1;  ///< so that the first step is taken at once
  int stepNow = 0;
  double fraction = 0.0;  ///< part of a step accumulated so far
  unsigned char lastClock = 0;
  RandomDraw random;
  Smoother glide;
};

}  // namespace orvantesco
