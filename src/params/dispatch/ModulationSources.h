#pragma once

#include "host/EditorPort.h"

namespace orvantesco {

struct ModulatorOutputs;
struct TriggerFlags;

/// Menu position of a modulation source's label "OFF", and the number of positions.
inline constexpr int kSourceOff = 0;
inline constexpr int kSources = 15;

/// The 32-sample vector of a modulation source: menu positions 1..4 are the LFOs, 5..8 the gates,
/// 9 and 10 the envelopes, 11..14 the logic units. Null for "OFF" and for any other position.
/// The vectors live as long as the effect object, so a reader may keep the pointer.
const double* sourcePointer(const ModulatorOutputs& modulators, int menuPosition) noexcept;

/// The colour group of a menu position of the same menu.
RingColour sourceColour(int menuPosition) noexcept;

/// The flag behind a position of the LFOs' trigger menu: off, quarter, bar, two bars, both
/// envelopes, the gates' levels, the gates' starts. The off flag for any other position.
const unsigned char* lfoTrigger(const TriggerFlags& triggers, int menuPosition) noexcept;

/// The flag behind a position of the reverse readers' trigger menu: off, bar, both envelopes.
const unsigned char* reverseTrigger(const TriggerFlags& triggers, int menuPosition) noexcept;

}  // namespace orvantesco
