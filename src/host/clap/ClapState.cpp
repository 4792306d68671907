#include "host/clap/ClapState.h"

#include <array>
#include <optional>

#include "host/PlugInfo.h"
#include "presets/HostState.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

/// Begins what stands behind the effect's block.
constexpr auto kBypassMark = static_cast<std::int32_t>(fourCharacterId("BYPS"));

/// A state is some 10 kB; what goes on beyond this is none.
constexpr int kLongestState = 1 << 24;

bool writeAll(const clap_ostream_t& stream, const StateChunk& chunk) {
  for (int done = 0; done < chunk.size();) {
    const int rest = chunk.size() - done;
    const std::int64_t written =
        stream.write(&stream, chunk.data() + done, static_cast<std::uint64_t>(rest));
    if (written <= 0 || written > rest) return false;
    done += static_cast<int>(written);
  }
  return true;
}

std::optional<StateChunk> readAll(const clap_istream_t& stream) {
  StateChunk chunk;
  std::array<std::uint8_t, 4096> buffer{};
  for (;;) {
    const std::int64_t got = stream.read(&stream, buffer.data(), buffer.size());
    if (got == 0) return chunk;
    if (got < 0 || got > static_cast<std::int64_t>(buffer.size())) return std::nullopt;
    if (chunk.size() > kLongestState) return std::nullopt;
    if (chunk.putBytes(buffer.data(), static_cast<int>(got)) == 0) return std::nullopt;
  }
}

/// Off where the block ends with the effect's part; nothing where it breaks off behind that.
std::optional<bool> bypassBehind(const StateChunk& chunk, int end) {
  if (end < 0 || end == chunk.size()) return false;
  std::int32_t mark = 0;
  std::uint8_t on = 0;
  if (chunk.getByte(chunk.getInt32(end, mark), on) < 0) return std::nullopt;
  return mark == kBypassMark && on != 0;
}

}  // namespace

bool ClapState::save(const clap_ostream_t& stream) const {
  if (stream.write == nullptr) return false;
  StateChunk chunk;
  const bool whole = effect.SerializeState(chunk) && chunk.putInt32(kBypassMark) > 0 &&
                     chunk.putByte(parameters.isBypassed() ? 1 : 0) > 0;
  return whole && writeAll(stream, chunk);
}

bool ClapState::load(const clap_istream_t& stream) {
  if (stream.read == nullptr) return false;
  const auto chunk = readAll(stream);
  if (!chunk) return false;
  const auto reading = readHostState(*chunk, 0);
  if (!reading || !isWhole(*reading)) return false;
  const auto bypass = bypassBehind(*chunk, reading->end);
  if (!bypass) return false;
  effect.settings().restoreState(reading->state);
  parameters.setBypassed(*bypass);
  return true;
}

}  // namespace orvantesco
