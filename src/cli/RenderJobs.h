#pragma once

#include <string>
#include <vector>

#include "cli/RenderCall.h"

namespace orvantesco::cli {

/// Where outputs go: exactly one of the two is given.
struct OutputPlace {
  std::string file;    ///< -o
  std::string folder;  ///< --output-dir
};

/// One job for each input. Throws a `Failure` where the place does not fit the number of inputs or
/// two inputs would write one output.
std::vector<RenderJob> pairInputsWithOutputs(const std::vector<std::string>& inputs,
                                             const OutputPlace& place);

/// Throws a `Failure` where an output is one of the files that the call reads.
void protectInputs(const RenderCall& call);
void protectInputs(const std::string& output, const std::vector<std::string>& inputs);

/// Makes the folder of the outputs if it is not there.
void makeOutputFolder(const std::string& folder);

}  // namespace orvantesco::cli
