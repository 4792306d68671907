#include "cli/StateFile.h"

#include <fmt/format.h>

#include "cli/Failure.h"
#include "params/ParamConstants.h"
#include "presets/FileContent.h"
#include "presets/StateChunk.h"

namespace orvantesco::cli {
namespace {

/// A block has some nine thousand bytes and three short texts.
constexpr std::size_t kLargestFile = 1'000'000;

StateChunk chunkOf(const std::string& path) {
  const auto content = readFile(path, kLargestFile);
  if (const auto* error = std::get_if<FileError>(&content)) {
    throw workFailed(fmt::format("{}: cannot be read: {}", path, error->message));
  }
  const auto& bytes = std::get<std::string>(content);
  StateChunk chunk;
  chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
  return chunk;
}

void refuseVersion(const std::string& path, int version) {
  if (version >= kOldestStateVersion && version <= kStateVersion) return;
  throw workFailed(fmt::format("{}: is no state block or of version {}, expected {} to {}", path,
                               versionText(version), versionText(kOldestStateVersion),
                               versionText(kStateVersion)));
}

}  // namespace

std::string versionText(int stateVersion) {
  const auto version = static_cast<unsigned>(stateVersion);
  return fmt::format("{}.{}.{}", version >> 16, version >> 8 & 0xFF, version & 0xFF);
}

HostState readStateFile(const std::string& path) {
  const auto reading = readHostState(chunkOf(path), 0);
  if (!reading) throw workFailed(fmt::format("{}: is too short, expected a state block", path));
  refuseVersion(path, reading->state.stateVersion);
  if (reading->end >= 0) return reading->state;
  throw workFailed(fmt::format("{}: ends after {} parameters, expected {}", path,
                               reading->state.parameters.size(), kNumParams));
}

}  // namespace orvantesco::cli
