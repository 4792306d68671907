#pragma once

#include <cstdint>
#include <memory>

#include "fx/DSPShell.h"

namespace orvantesco {

/// True for a type whose effect can be built.
bool effectExists(int typeId) noexcept;

/// Builds one channel's instance of an effect; null for "OFF" and for ids without an effect.
/// `partner` is the left instance where a right one shares its state, else null. Allocates: not
/// for the audio thread. May throw std::bad_alloc.
std::shared_ptr<DSPShell> createEffect(int typeId, bool isRight, DSPShell* partner);

/// Sets where the noise of an effect that makes some begins; before the audio thread sees it.
void seedEffect(DSPShell& effect, std::uint32_t seed) noexcept;

}  // namespace orvantesco
