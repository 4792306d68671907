#pragma once

#include <cstdlib>

namespace orvantesco {

/// How often a test repeats what it does: more where ORVANTESCO_LONG_TESTS is set.
inline int timesOrLong(int ordinary, int longTests) {
  return std::getenv("ORVANTESCO_LONG_TESTS") == nullptr ? ordinary : longTests;
}

}  // namespace orvantesco
