#pragma once

namespace orvantesco {

/// A rate and the phase increment that belongs to it: the base of every block that oscillates.
///
/// The increment counts with 44100 steps a second whatever the engine runs at, so what derives
/// from here sounds in proportion to the sample rate; users know its knobs that way. Audio thread.
class SimpleOSC {
 public:
  virtual ~SimpleOSC() = default;
  SimpleOSC(const SimpleOSC&) = delete;
  SimpleOSC& operator=(const SimpleOSC&) = delete;

  /// Rate in Hz at 44100 steps a second. A rate that is not finite is ignored.
  virtual void setRate(double rateHz) noexcept;

 protected:
  static constexpr double reference = 44100.0;

  SimpleOSC() = default;

  /// Called by `setRate` when `rate` is stored and before the increment is computed.
  virtual void rateStored() noexcept {}
  /// Called by `setRate` behind the increment: the place to derive from it.
  virtual void update() noexcept {}

  double phase = 0.0;
  double ratio = 0.0;  ///< cycles per step
  double rate = 0.0;   ///< Hz
  double halfRatio = 0.0;
};

}  // namespace orvantesco
