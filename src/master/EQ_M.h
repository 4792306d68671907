#pragma once

#include "master/EqBand.h"

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

  /// A form out of range is the last.
  explicit EQ_M(int eqForm, bool isRight = false);

  void setParam(int index, double value) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  /// Filters a vector of each of two channels of one form in place: what two calls of `process`
  /// would do, in half their time.
  static void processPair(EQ_M& left, EQ_M& right, double* leftVector,
                          double* rightVector) noexcept;

 private:
  struct Control {
    EqBand* band = nullptr;
    bool isGain = false;
  };

  Control controlAt(int index) noexcept;
  template <class Operation>
  void forEachBand(Operation operation) noexcept;

  Form form = kFixEq;
  EqBand low, midA, midB, high;
};

}  // namespace orvantesco
