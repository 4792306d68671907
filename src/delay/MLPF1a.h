#pragma once

#include "delay/Module.h"

namespace orvantesco {

/// One-pole low-pass y = a x - b y1, the damping in the loop of a delay network. With b = -c and
/// a = (1 - c) g, c within 0..1, its gain is g at 0 Hz and falls from there. Stable for |b| < 1.
class MLPF1a : public Module {
 public:
  void reset() noexcept override { state = 0.0F; }

  /// Factor of the input, and of the last output with its sign turned.
  void setCoefficients(float a, float b) noexcept {
    coefficientA = a;
    coefficientB = b;
  }

  float process(float in) noexcept {
    state = coefficientA * in - coefficientB * state;
    return state;
  }

 private:
  float coefficientA = 1.0F;
  float coefficientB = 0.0F;
  float state = 0.0F;
};

}  // namespace orvantesco
