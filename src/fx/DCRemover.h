#pragma once

#include "fx/DSPShell.h"

namespace orvantesco {

/// Takes the constant part out of a signal: y = 0.9999 y' + x - x', a zero at 0 Hz and a pole just
/// inside the unit circle, so -3 dB at about 0.7 Hz (44100 Hz). The coefficient is not scaled
/// with the rate.
class DCRemover : public DSPShell {
 public:
  using DSPShell::process;

  /// What stands before the first sample of all, and before the first one behind a reset.
  enum class Start {
    fromZero,         ///< silence: a signal with an offset begins with its whole step
    fromFirstSample,  ///< that sample itself: a constant is gone from the start
  };

  explicit DCRemover(Start firstStep = Start::fromZero) noexcept : start(firstStep) {}

  void reset() noexcept override;
  void processBlock() noexcept override;

  /// n samples in place. What runs away is cleared and silent.
  void process(double* buffer, int n) noexcept;
  /// One vector of each channel, with the bits of two calls of `process`.
  static void processPair(DCRemover& left, double* leftBuffer, DCRemover& right,
                          double* rightBuffer) noexcept;

 private:
  void run(const double* in, double* out, int n) noexcept;
  void dropRunaway(double* buffer, int n) noexcept;

  Start start;
  bool isFresh = true;  ///< nothing has come in yet
  double xPrevious = 0.0;
  double yPrevious = 0.0;
};

}  // namespace orvantesco
