#pragma once

#include <cstdint>

#include "fx/DSPShell.h"
#include "fx/RandomDraw.h"
#include "fx/SampleHold.h"

namespace orvantesco {

/// "LOFI II": drive, noise, a lower sample rate and fewer bits, in this order. Left and right are
/// independent, with noise of their own.
///
/// Controls, 0..1: 0 drive, 1 noise, 2 downsample, 3 bitcrush, 4 mix. Each of the first four adds
/// the first sample of its source, times its depth, once per vector. Only the drive is smoothed.
class Lofi : public DSPShell {
 public:
  explicit Lofi(bool isRight);

  /// Starts the noise anew from this number. Any thread that builds; not while the effect runs.
  void seed(std::uint32_t start) noexcept;

  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  /// Drops what `reset` keeps: the held sample and the level of the noise.
  void onStateCleared() noexcept override;

 private:
  double modulated(int index, double base) const noexcept;
  void overdrive() noexcept;
  void addNoise() noexcept;
  void reduceRate() noexcept;
  void reduceBits() noexcept;
  void deriveLevels() noexcept;

  double drive = 0.0;
  double noise = 0.0;
  double downsample = 0.0;
  double bitcrush = 0.0;

  double noiseNow = 0.0;
  double downsampleNow = 1.0;  ///< step of the hold per sample
  double bitcrushNow = 0.0;
  double levels = 0.0;  ///< of the quantiser, per unit; belongs to `bitcrushNow`

  SampleHold holder;
  Smoother noiseLevelSmoother;
  std::uint32_t firstSeed = 1;
  RandomDraw random;
};

}  // namespace orvantesco
