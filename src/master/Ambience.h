#pragma once

#include <array>

#include "delay/RingDelayQuad.h"
#include "fx/DSPShell.h"
#include "fx/IppBiquad.h"

namespace orvantesco {

/// A wide, slowly drifting ambience of four long lines that feed each other through a Householder
/// matrix. Left goes into the first line and right into the second, each through a low-pass that
/// also damps what comes round; a Rössler oscillator, which never repeats, moves these two.
///
/// Controls for `setParam`:
///   0 size, 0..6: factor of the lines' lengths, the longest of which is 97 ms at 1
///   1 feedback, 0..0.998; the low-passes peak slightly above 1, so that 1 would run away
///   2 depth of the drift, 0..1
///   3 corner of the low-passes, 0..1 on the curve of all filters
///
/// `reset` leaves the oscillator as it is, so that no two passages drift alike. Memory is taken
/// once, for 96000 Hz. Audio thread, but for construction.
class Ambience : public DSPShell {
 public:
  Ambience();

  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void prepare() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 private:
  static constexpr int kLines = RingDelayQuad::kLines;

  /// A chaotic oscillator: x and y circle with a period of some 6, irregularly (O. Rössler, "An
  /// equation for continuous chaos", 1976, with a = 0.15, b = 0.2, c = 10). Advanced by Euler's
  /// rule, whose steps of 0.004 at most it bears; |x| and |y| stay below 25.
  struct Rossler {
    double x = 0.0;
    double y = 1.0;
    double z = 1.0;
    void advance(double q) noexcept;
  };

  void applySize() noexcept;
  void drift() noexcept;
  void mixLines() noexcept;

  double size = 0.0;
  double feedback = 0.0;  ///< stored with its sign turned
  double modDepth = 0.0;

  double ratio = 1.0;  ///< rate of the engine over 44100
  std::array<double, kLines> delaySamples{};

  Rossler oscillator;
  RingDelayQuad line;
  IppBiquad lowpassLeft{false, kLowpassFilter, 1, 24.0};
  IppBiquad lowpassRight{false, kLowpassFilter, 1, 24.0};
  alignas(64) double feed[kLines][kVectorLength] = {};
};

}  // namespace orvantesco
