#pragma once

#include <cstdint>
#include <string_view>

#include "cli/Failure.h"

namespace orvantesco::cli {

/// What an option takes, in numbers and in words for its error message.
struct ExpectedNumber {
  const char* option = "";
  double least = 0.0;
  double most = 0.0;
  const char* words = "";
};

/// Says that an option was given a text that it does not take.
Failure unexpected(const ExpectedNumber& expected, std::string_view text);

/// The number or whole number that a text is, read alike in every locale. Throws a `Failure` that
/// names the option and what it takes.
double numberFor(const ExpectedNumber& expected, std::string_view text);
std::int64_t wholeFor(const ExpectedNumber& expected, std::string_view text);

}  // namespace orvantesco::cli
