#pragma once

#include "core/SlotControls.h"

namespace orvantesco {

/// Row (0 or 1) that drives parameter k (0..4) of a slot's POST effect per tap, -1 for none. Rows
/// act in "TAPPED" mode with the delay on. Any thread.
int rowDriving(const SlotControls& slot, int param) noexcept;

/// What a row makes of a parameter at one tap, 0..1: the step moves it around its own setting.
struct TapFxInput {
  double stepPercent = 0.0;  ///< 0..100
  double rowDepth = 1.0;     ///< 0..1; at 0 every tap has the base value
  double base = 0.0;         ///< the parameter's own setting, 0..1
  bool bipolar = false;      ///< 50 % is the row's rest position
};
double tapFxControl(const TapFxInput& input) noexcept;

}  // namespace orvantesco
