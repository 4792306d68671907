#pragma once

#include <span>

#include "params/dispatch/ReadoutText.h"

namespace orvantesco {

class ParamDispatch;

/// Brings the value of one member of a family into the engine.
using DispatchOperation = void (*)(ParamDispatch&);

/// Whether the value of a parameter that has a read-out also flashes up on its knob.
enum class KnobFlash { no, yes };

/// One family of parameters: the indices that it covers, what a change of a member does, and how
/// its value is shown.
struct DispatchFamily {
  int base = 0;   ///< index of the first member
  int count = 0;  ///< members, without gaps
  DispatchOperation apply = nullptr;
  ReadoutStyle readout{};
  KnobFlash flash = KnobFlash::yes;
};

// The families by subject. Each file holds its operations and, behind them, its table.
extern const std::span<const DispatchFamily> slotFamilies;
extern const std::span<const DispatchFamily> slotGainFamilies;
extern const std::span<const DispatchFamily> effectFamilies;
extern const std::span<const DispatchFamily> delayFamilies;
extern const std::span<const DispatchFamily> delayTimeFamilies;
extern const std::span<const DispatchFamily> tapFamilies;
extern const std::span<const DispatchFamily> grainFamilies;
extern const std::span<const DispatchFamily> laneFamilies;
extern const std::span<const DispatchFamily> lfoFamilies;
extern const std::span<const DispatchFamily> gateFamilies;
extern const std::span<const DispatchFamily> envelopeFamilies;
extern const std::span<const DispatchFamily> logicFamilies;
extern const std::span<const DispatchFamily> masterFamilies;
extern const std::span<const DispatchFamily> globalFamilies;

/// The family of a parameter, or null for an index that drives nothing. Any thread.
const DispatchFamily* dispatchFamilyOf(int paramIdx) noexcept;

}  // namespace orvantesco
