#pragma once

#include <nlohmann/json_fwd.hpp>

#include "cli/OutputLevels.h"
#include "cli/RenderCall.h"

namespace orvantesco::cli {

/// What `--stats` prints of one output.
struct RenderStats {
  RenderJob job;
  OutputLevels levels;
  double sampleRateHz = 0.0;
  double cpuSeconds = 0.0;
  int latency = 0;  ///< samples
};

nlohmann::ordered_json toJson(const RenderStats& stats);

}  // namespace orvantesco::cli
