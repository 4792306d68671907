#pragma once

#include "fx/BiquadDesign.h"
#include "fx/Lanes.h"
#include "fx/QLMFilter.h"

namespace orvantesco {

/// One filter of the master equaliser: its two controls, smoothed as those of every filter, and
/// the second-order section that follows from them. The sections of several bands and of both
/// channels run together in `EqChain`, since each alone would mostly wait for itself.
///
/// The smoothers are ticked every second vector: after a turn of a knob the frequency has arrived,
/// to 0.2 %, in 64 ms and the gain in 10 ms, at any rate. They begin at 0, so a new band sweeps its
/// corner up from 0 Hz, and a new shelf starts 9 dB below its gain. `reset` leaves them alone.
class EqBand : public QLMFilter {
 public:
  enum class Shape { lowShelf, peak, highShelf };
  static constexpr double kMaxDriveDb = 18.0;

  /// The section as the recursion takes it, and its memory (transposed direct form II):
  ///     y = b0 x + p,   p' = q + c1 x - a1 p,   q' = c2 x - a2 p,   ck = bk - ak b0
  struct Section {
    double b0 = 1.0, c1 = 0.0, c2 = 0.0, a1 = 0.0, a2 = 0.0;
    double p = 0.0, q = 0.0;
  };

  EqBand(Shape bandShape, double hz) noexcept;

  /// The amplitude of a shelf's section, or the position 0..1 of a peak's gain.
  void setGain(double value) noexcept;
  /// Hz; the corner is held where a section is stable.
  void setFrequency(double hz) noexcept;

  void reset() noexcept override;
  void rateChanged() noexcept override;

  /// Brings the section up to the controls: every second vector, and at once after a reset.
  void followControls() noexcept;

  Section& currentSection() noexcept { return section; }

 private:
  BiquadSection designed() const noexcept;

  Shape shape = Shape::peak;
  double frequencyHz = 0.0;
  Section section;
};

}  // namespace orvantesco
