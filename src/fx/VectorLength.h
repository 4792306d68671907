#pragma once

namespace orvantesco {

/// Samples of one audio vector: every block of the signal path works on exactly this many doubles
/// for each channel, so that the length is known to the compiler and never travels along.
inline constexpr int kVectorLength = 32;

}  // namespace orvantesco
