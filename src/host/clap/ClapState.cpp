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

bool isReadable(const HostStateReading& reading) {
  return reading.state.stateVersion <= kStateVersion &&
         reading.state.stateVersion >= kOldestStateVersion;
}

bool bypassBehind(const StateChunk& chunk, int end) {
  std::int32_t mark = 0;
  std::uint8_t on = 0;
  const int behindMark = chunk.getInt32(end, mark);
  return mark == kBypassMark && chunk.getByte(behindMark, on) >= 0 && on != 0;
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
  if (!reading || !isReadable(*reading)) return false;
  effect.settings().restoreState(reading->state);
  parameters.setBypassed(bypassBehind(*chunk, reading->end));
  return true;
}

}  // namespace orvantesco
