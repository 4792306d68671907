#pragma once

#include <string>

namespace orvantesco::cli {

struct ParamsOptions {
  bool json = false;
  std::string match;  ///< part of a name or key; empty for all parameters
};

/// Prints the parameters to stdout. Returns the exit code: 0, or 1 where stdout takes no more,
/// which is said on stderr.
int runParams(const ParamsOptions& options);

}  // namespace orvantesco::cli
