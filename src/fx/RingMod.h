#pragma once

#include "fx/DSPShell.h"
#include "fx/SimpleOSC.h"

namespace orvantesco {

/// "RING MOD": multiplies one channel by an oscillator between a sine and a pulse train.
///
/// With x the phase and a the shape, 0..0.9, the oscillator is
///
///     sqrt(1 - a^2) sin x / (1 + a^2 - 2 a cos x) = sqrt(1 - a^2) (sin x + a sin 2x + a^2 sin 3x
///     ...)
///
/// (J. A. Moorer, "The synthesis of complex audio spectra by means of discrete summation
/// formulas", 1976): a bare sine at 0, decaying partials above, without aliasing to speak of.
///
/// The frequency is (0.5 r)^4 4999.9 + 0.1 Hz for a knob at r, so that the knob's end, where the
/// read-out says 5000 Hz, sounds at 312.6 Hz. Presets are tuned by ear to it.
///
/// Left and right run at the same phase while nothing spreads them: see `joinPartner`. A wander of
/// half a cycle a second then moves their phases apart and together, by `wanderWidth`; it takes
/// the knob alone, so a modulator routed to WIDTH is not heard.
///
/// Parameters: 0 frequency 0..1; 1 pulse shape 0..1; 2 wander width 0..1; 3 spread -1..1; 4 wet
/// share. Modulated: 0, 1, 3.
class RingMod final : public SimpleOSC, public DSPShell {
 public:
  /// `partner`: the left instance for a right one, else null. It is only read, and must be run
  /// before this one in each vector; who owns the pair replaces both together.
  explicit RingMod(bool isRight, const RingMod* partner = nullptr) noexcept;

  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;

 private:
  /// Where an instance stands between two vectors.
  struct Course {
    double phase = 0.0;      ///< 0..2 for one cycle
    double increment = 0.0;  ///< state of the frequency's smoother
    double wanderPhase = 0.0;
    bool operator==(const Course&) const = default;
  };
  Course course() const noexcept;

  bool isSpread() const noexcept { return spread != 0.0 || modSource[3] != nullptr; }
  void updateIncrement() noexcept;
  bool noticeApart() noexcept;
  void wander() noexcept;
  /// The angles of this vector, `step` of phase apart.
  void sweep(double step) noexcept;
  void advance() noexcept;
  void joinPartner() noexcept;
  void modulate() noexcept;

  // Settings
  double pulseShape = 0.0;
  double wanderWidth = 0.0;
  const RingMod* const partner;

  // Derived
  double frequency = 0.1;  ///< Hz
  double increment = 0.0;  ///< of the phase, per sample

  // State
  Smoother frequencySmoother;
  Smoother spreadSmoother;
  double lfoPhase = 0.0;  ///< of the wander, 0..2
  double offset = 0.0;    ///< of this channel's phase in this vector
  Course courseBefore;    ///< at the start of the last vector, which a partner reads
  unsigned vectorCount = 0;
  unsigned partnerCount = 0;  ///< the partner's count when last seen
  alignas(32) double phases[kVectorLength] = {};
};

}  // namespace orvantesco
