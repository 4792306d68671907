#pragma once

#include "core/EffectPosition.h"
#include "core/SlotControls.h"

namespace orvantesco {

/// The position that instances belong to and the slot whose tap rows may drive them.
struct EffectContext {
  const EffectPosition& position;
  const SlotControls& slot;
  bool perTap = false;  ///< the POST position: instances 2t and 2t + 1 belong to tap t
};

/// Hands value k (0..4) to all instances, through the mapping of their type and the tap rows.
/// Audio thread, or the building thread before the instances are handed over.
void giveEffectParam(EffectInstances& instances, const EffectContext& context, int k) noexcept;

/// Hands source k and the address of its depth to all instances. A tap whose row takes the
/// parameter over and may not be modulated gets a depth of zero. Threads as above.
void giveEffectSource(EffectInstances& instances, const EffectContext& context, int k) noexcept;

/// Bypass follows the on switch; at on every instance starts from silence. Audio thread.
void giveEffectSwitch(EffectInstances& instances, bool on) noexcept;

/// All parameters, sources and the switch: what new instances take before they are handed over.
void configureInstances(EffectInstances& instances, const EffectContext& context) noexcept;

/// Takes rate-dependent constants anew and starts from silence. Audio thread.
void renewInstances(EffectInstances& instances) noexcept;

}  // namespace orvantesco
