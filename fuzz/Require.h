#pragma once

#include <cstdio>
#include <cstdlib>

namespace orvantesco {

/// Ends the program where a promise is broken, in every kind of build.
inline void require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

}  // namespace orvantesco
