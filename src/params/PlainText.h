#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvantesco {

// Text as people type it, read and written alike in every locale.

/// The text without white space at its ends.
std::string_view trimmed(std::string_view text) noexcept;

/// ASCII letters lowered.
std::string lowered(std::string_view text);

/// Lowered and without any white space: two spellings of one name become equal.
std::string folded(std::string_view text);

/// Whether two texts differ in the case of ASCII letters at most.
bool sameLetters(std::string_view a, std::string_view b) noexcept;

/// Insertions, deletions and replacements of single characters that lead from one to the other.
int editDistance(std::string_view from, std::string_view to);

/// The decimal number that the whole text is, with a point and an exponent or not. Beyond the range
/// of a double it is infinite; words ("inf", "nan") and hexadecimal digits are no number.
std::optional<double> numberIn(std::string_view text) noexcept;

/// A number as short as it can be printed without loss.
std::string shortest(double number);

}  // namespace orvantesco
