#pragma once

#include "fx/IppBiquad.h"
#include "fx/Shaper.h"

namespace orvantesco {

/// A drive stage before a low-pass and a high-pass of equal slope: in series a band, in parallel
/// the two ends of the spectrum with a gap between them.
///
/// The drive stage always runs: without gain it still bends what is near full scale, and as it
/// averages neighbouring samples it takes cos(pi f / rate) off the top.
///
/// Controls for `setParam` and modulation:
///   0 corner of the high-pass, 1 corner of the low-pass, 2 drive, 3 slope and wiring (`PairMode`;
///   takes no modulation), 4 the mix
class LPHP : public DSPShell {
 public:
  /// Slope of both filters in dB an octave; S in series, P in parallel.
  enum PairMode : int {
    k24DbSeries = 0,
    k48DbSeries = 1,
    k72DbSeries = 2,
    k24DbParallel = 3,
    k48DbParallel = 4,
    k72DbParallel = 5,
  };

  explicit LPHP(bool isRight = false);

  /// Takes a `PairMode`, held within its range. A change of slope clears the filters.
  void setSecondary(int pairMode) noexcept override;
  /// Clears the filters. The drive stage goes on from its last sample.
  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void modSourceChanged(int index, const double* source) noexcept override;
  void modDepthChanged(int index, const double* depth) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;
  /// Drops the one sample that the drive stage remembers.
  void onStateCleared() noexcept override;
  void prepare() noexcept override;

 protected:
  LPHP(bool isRight, bool hasDrive);

  IppBiquad lowpass;
  IppBiquad highpass;

 private:
  /// The block that control `index` modulates with its own control 0, or null.
  virtual DSPShell* modulatedBy(int index) noexcept;

  const bool drive;
  bool parallel = false;
  int slopeMode = -1;

  Shaper driveShaper;
};

}  // namespace orvantesco
