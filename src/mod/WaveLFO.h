#pragma once

#include "fx/RandomDraw.h"
#include "fx/Smoother.h"
#include "fx/VectorLength.h"
#include "mod/WaveRecord.h"

namespace orvantesco {

/// One of the user's four LFOs: reads a table of one wave cycle and gives vectors of 32 values.
///
/// The table is read without interpolation: at 4096 entries a step is inaudible at these rates,
/// and the stairs of stepped waves stay stairs. The phase offset shifts the place that is read,
/// not the phase that runs. Audio thread only.
class WaveLFO {
 public:
  enum class Mode { Loop, OneShot, Latch };
  enum class Polarity { Positive, Negative, Bipolar };

  WaveLFO() = default;
  WaveLFO(const WaveLFO&) = delete;
  WaveLFO& operator=(const WaveLFO&) = delete;

  /// Rate in Hz, limited to what the increment allows: 46 entries a sample.
  void setRate(double hz) noexcept;
  double getRate() const noexcept { return rateHz; }
  /// Takes the increment anew at another sample rate; the glide starts from 0.
  void rateChanged() noexcept;

  void setGlide(double ms) noexcept;                       ///< smoothing of the output
  void setDepth(double share) noexcept { depth = share; }  ///< 0..1
  void setRateModDepth(double cubed) noexcept { rateModDepth = cubed; }
  /// Vector whose first sample moves the rate by up to 500 Hz; null for none.
  void setRateModSource(const double* source) noexcept { rateModSource = source; }
  /// A flag that restarts the cycle; null for none.
  void setTrigger(const unsigned char* flag) noexcept { trigger = flag; }
  /// Values beyond -1..1 are limited to it.
  void setWave(const WaveRecord* record) noexcept;
  void setSwap(bool upsideDown) noexcept { swapSign = upsideDown ? -1.0 : 1.0; }
  void setReverse(bool backwards) noexcept { reverse = backwards; }
  void setMode(Mode mode) noexcept;
  void setPolarity(Polarity polarity) noexcept;
  void setPhase(double share) noexcept;  ///< 0..1 of the cycle
  void drawRandom() noexcept;            ///< a new level for sample and hold
  void seed(std::uint32_t start) noexcept { random.seed(start); }

  /// To the beginning of the cycle, without a level held or a glide under way.
  void restart() noexcept;

  /// Computes the next vector of 32. Without a wave the vector stays as it is.
  void process(double* out) noexcept;

  double value() const noexcept { return firstValue; }   ///< first value of the last vector
  double rawValue() const noexcept { return lastWave; }  ///< last wave value before polarity

 private:
  double incrementNow() const noexcept;
  bool advance(double inc, bool triggered, bool restart) noexcept;
  int entryAt(double position) const noexcept;
  void turn(double inc, bool triggered, double* wave) noexcept;
  void sweep(double inc, double* wave) noexcept;
  void rest(double* wave) const noexcept;
  void shapeWave(double* wave) noexcept;

  // Settings.
  double rateHz = 0.0;
  double glideMs = -1.0;
  double depth = 1.0;
  double offset = 0.5, scale = 0.5;
  double swapSign = 1.0;
  double rateModDepth = 0.0;
  bool reverse = false;
  bool latch = false;
  bool loop = true;
  bool sampleAndHold = false;
  int phaseOffset = 0;
  const double* table = nullptr;
  bool tableIsWithin = true;  ///< all values of the table lie within -1..1
  const unsigned char* trigger = nullptr;
  const double* rateModSource = nullptr;

  // State.
  double increment = 0.0;  ///< table entries per sample
  double phase = 0.0;      ///< 0..4096
  double heldValue = 0.0;  ///< 0..1
  double firstValue = 0.0;
  double lastWave = 0.0;
  RandomDraw random;
  Smoother glide;
};

}  // namespace orvantesco
