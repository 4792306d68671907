#pragma once

namespace orvantesco::kernels {

/// The processor levels that the kernels are built for, the weakest first.
enum class Level { kScalar, kSse2, kAvx2 };

/// Whether this processor, and the build, can run the level.
bool supports(Level level) noexcept;

/// Whether a level is in force yet: the first call into the library chooses it.
bool isChosen() noexcept;

/// The level in force, chosen now if no kernel was called yet.
Level levelInForce() noexcept;

/// For tests and benchmarks: puts a level in force, before or after the first call into the
/// library, and returns false (changing nothing) where the processor lacks it. States of filters
/// and all data stay valid across a change, since no layout depends on the level.
bool forceLevel(Level level) noexcept;

/// For tests: forgets the choice, so that the next call into the library chooses anew.
void forgetLevel() noexcept;

const char* nameOf(Level level) noexcept;

}  // namespace orvantesco::kernels
