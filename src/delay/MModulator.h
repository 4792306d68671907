#pragma once

namespace orvantesco {

/// What swings the read position of a modulated delay line: one value, -1..1, for each tick.
class MModulator {
 public:
  MModulator() = default;
  virtual ~MModulator() = default;
  MModulator(const MModulator&) = delete;
  MModulator& operator=(const MModulator&) = delete;

  virtual float tick() noexcept = 0;
};

}  // namespace orvantesco
