#include "host/dpf/DpfState.h"

#include <limits>

#include "host/dpf/Base64.h"
#include "presets/HostState.h"
#include "presets/StateChunk.h"

namespace orvantesco {

std::string stateText(Orvantesco& effect) {
  StateChunk chunk;
  if (!effect.SerializeState(chunk)) return {};
  return toBase64({chunk.data(), static_cast<std::size_t>(chunk.size())});
}

bool restoreStateText(Orvantesco& effect, const char* text) {
  const auto bytes = fromBase64(text);
  constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
  if (!bytes || bytes->empty() || bytes->size() > most) return false;
  StateChunk chunk;
  if (chunk.putBytes(bytes->data(), static_cast<int>(bytes->size())) == 0) return false;
  const auto reading = readHostState(chunk, 0);
  if (!reading || !isWhole(*reading)) return false;
  effect.settings().restoreState(reading->state);
  return true;
}

}  // namespace orvantesco
