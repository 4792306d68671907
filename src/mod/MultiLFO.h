#pragma once

#include <array>

#include "fx/SimpleOSC.h"

namespace orvantesco {

/// The main modulator: a slow chaotic oscillator whose four outputs wobble the delay times of all
/// slots. It takes one Euler step of the Rössler system for each sub-block (O. E. Rössler, "An
/// equation for continuous chaos", Physics Letters A 57, 1976):
///
///     x' = -(y + z),  y' = x + a y,  z' = b + z (x - c),  a = 0.15, b = 0.2, c = 10
///
/// Steps of up to 0.08 stay on the attractor; a state that has left it starts anew. Audio thread.
class MultiLFO : public SimpleOSC {
 public:
  /// Shapes. The engine uses `Chaos`; the others are periodic.
  enum class Wave { Chaos, Sine, Saw, FallingSaw, Square, Triangle };

  void setWave(Wave shape) noexcept { wave = shape; }

  /// One step, for a sub-block of 32 samples.
  void process() noexcept;

  /// To where a new one begins.
  void restart() noexcept;

  /// Four outputs of about -1..1; with `Chaos` the last two are the first two inverted, with the
  /// other shapes only the first two move.
  const std::array<double, 4>& mainMod() const noexcept { return outputs; }

 protected:
  void update() noexcept override;

 private:
  void stepChaos() noexcept;
  double periodic() const noexcept;

  Wave wave = Wave::Chaos;
  double step = 0.0;
  double x = 0.0, y = 1.0, z = 1.0;
  double waveOffset = 0.0;
  double waveGain = 1.0;
  std::array<double, 4> outputs{};
};

}  // namespace orvantesco
