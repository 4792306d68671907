#include "fuzz/StateChecks.h"

#include "fuzz/Require.h"
#include "params/ParamConstants.h"
#include "presets/HostState.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

/// A current, whole block: what is read from it can be written again.
void checkWhole(const HostState& state) {
  StateChunk chunk;
  require(putHostStateHead(chunk, state), "a state can be written");
  for (const double value : state.parameters) chunk.putDouble(value);
  const auto again = readHostState(chunk, 0);
  require(again && again->end == chunk.size(), "what was written reads to its end");
  StateChunk twice;
  require(putHostStateHead(twice, again->state), "a state can be written twice");
  for (const double value : again->state.parameters) twice.putDouble(value);
  const std::string_view first(reinterpret_cast<const char*>(chunk.data()),
                               static_cast<std::size_t>(chunk.size()));
  const std::string_view second(reinterpret_cast<const char*>(twice.data()),
                                static_cast<std::size_t>(twice.size()));
  require(first == second, "what was written reads back to the byte");
}

}  // namespace

void checkStateBytes(std::string_view bytes) {
  StateChunk chunk;
  chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
  for (const int start : {0, 1, -1, chunk.size()}) {
    const auto reading = readHostState(chunk, start);
    if (!reading) continue;
    require(reading->end <= chunk.size(), "nothing is read behind the end");
    require(reading->state.parameters.size() <= kNumParams, "there are so many parameters");
    if (reading->end >= 0) checkWhole(reading->state);
  }
}

}  // namespace orvantesco
