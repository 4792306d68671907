#pragma once

#include "delay/RingDelay.h"
#include "fx/DSPShell.h"
#include "fx/IppBiquad.h"
#include "fx/SimpleOSC.h"

namespace orvantesco {

/// "COMB": the signal and its echo of half a period behind a low-pass and a high-pass, with a
/// softly clipped share of the sum sent round again.
///
///     out = in + filtered(line),  line takes in + 1.66 tanh(out * feedback) of the vector before
///
/// What goes round is 32 samples late, so the loop is that much longer than the echo. Its gain for
/// small signals is at most 0.83 and the clip holds it at 1.66: no setting runs away.
///
/// Controls for `setParam` and modulation, as the effect slots use them:
///   0 frequency, 1 feedback, 2 high-pass, 3 low-pass, 4 spread
class Comb : public SimpleOSC, public DSPShell {
 public:
  /// Half a period of 1 Hz at the highest sample rate.
  static constexpr int kLongestDelay = 48000;

  explicit Comb(bool isRight = false);

  /// Frequency in Hz.
  void setRate(double rateHz) noexcept override;
  void setParam(int index, double value) noexcept override;
  void modSourceChanged(int index, const double* source) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;
  void prepare() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  int capacity() const noexcept { return delay.capacity(); }

 private:
  void refresh() noexcept;
  void updateDelay() noexcept;
  void updateFeedback() noexcept;
  bool hasSource(int index) const noexcept { return modSource[index] != nullptr; }

  double frequency = 100.0;  ///< Hz
  double feedbackKnob = 0.0;
  double highpassKnob = 0.0;
  double lowpassKnob = 1.0;

  double delaySamples = 0.0;
  double feedback = 0.0;

  RingDelay delay;
  IppBiquad lowpass;
  IppBiquad highpass;
  alignas(32) double fedBack[kVectorLength] = {};  ///< what the next vector takes in again
};

}  // namespace orvantesco
