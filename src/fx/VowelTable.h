#pragma once

namespace orvantesco {

/// Formants of the vowel filter. A set is three vowels that a position glides through; all vowel
/// filters of the process share the set that the last of them chose.

inline constexpr int kVowelSetCount = 4;
inline constexpr int kFormantCount = 3;

struct Vowel {
  double formantHz[kFormantCount] = {};
};

/// Three vowels, and a fourth row that the glide reads with weight 0 at its far end.
struct VowelSet {
  Vowel rows[4] = {};
};

/// Puts a set in force for the whole process; `index` is held within 0..kVowelSetCount - 1.
/// Any thread.
void selectVowelSet(int index) noexcept;

/// The vowel at a position (held within 0..1) of the set in force.
Vowel vowelAt(double position) noexcept;

}  // namespace orvantesco
