#pragma once

#include "fx/IppBiquad.h"

namespace orvantesco {

/// One channel of the master equaliser, in one of three forms. Its filters run one behind the
/// other, the peak first:
///
///     form                  filters                  parameters 0..3
///     kFixEq                peak, low shelf at       low gain, peak frequency, peak gain,
///                           500 Hz, high at 3 kHz    high gain
///     kTwoBandEq            two peaks                gain and frequency of one, of the other
///     kShelfEq              low shelf, high shelf    gain and frequency of one, of the other
///
/// Frequencies are Hz. The gain of a peak is 0..1 for -18..18 dB; that of a shelf is the root of
/// its amplitude, exp(dB / 2 * ln(10) / 20), since a shelf's section squares it. The sections are
/// those of BiquadDesign.h. At 0 dB all of them pass the signal.
///
/// The twin for two channels is EQ_ST.
class EQ_M : public DSPShell {
 public:
  enum Form { kFixEq, kTwoBandEq, kShelfEq };
  static constexpr double kMaxDriveDb = 18.0;

  /// A form out of range is the last.
  explicit EQ_M(int eqForm, bool isRight = false);

  void setParam(int index, double value) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 private:
  /// A filter with its corner in Hz, from which a change of rate takes the fraction anew.
  struct Band {
    IppBiquad filter;
    double frequencyHz = 0.0;

    Band(bool isRight, int mode, double hz);
    void setFrequency(double hz) noexcept;
  };
  struct Control {
    Band* band = nullptr;
    bool isGain = false;
  };

  Control controlAt(int index) noexcept;
  template <class Operation>
  void forEachFilter(Operation operation) noexcept;

  Form form = kFixEq;
  Band low, midA, midB, high;
};

}  // namespace orvantesco
