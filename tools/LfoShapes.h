#pragma once

#include <span>

namespace orvantesco {

/// One wave of the LFOs as a formula: its value, -1..1, at entry 0..4095 of the cycle.
struct LfoShape {
  int id;
  const char* name;
  double (*value)(int entry);
};

/// All 33 shapes. The first 27 are those that are offered, in the order of their menu.
std::span<const LfoShape> lfoShapes();

}  // namespace orvantesco
