#include "cli/RenderStats.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace orvantesco::cli {
namespace {

/// The clock's own grain; keeps the factor finite for the shortest files.
constexpr double shortestCpuSeconds = 1e-9;

}  // namespace

nlohmann::ordered_json toJson(const RenderStats& stats) {
  const double seconds = static_cast<double>(stats.levels.frames) / stats.sampleRateHz;
  return {{"input", stats.job.input},
          {"output", stats.job.output},
          {"frames", stats.levels.frames},
          {"seconds", seconds},
          {"sample_rate", stats.sampleRateHz},
          {"cpu_seconds", stats.cpuSeconds},
          {"realtime_factor", seconds / std::max(stats.cpuSeconds, shortestCpuSeconds)},
          {"peak", stats.levels.peak},
          {"latency", stats.latency},
          {"non_finite", stats.levels.nonFinite}};
}

}  // namespace orvantesco::cli
