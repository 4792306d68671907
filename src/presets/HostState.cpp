#include "presets/HostState.h"

#include "host/EditorPages.h"
#include "params/ParamConstants.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

/// The first version that names the colour set.
constexpr int kWithColourSet = 0x1015C;

constexpr std::int32_t kNothingTouched = -1;
constexpr std::int32_t kAllTaps = 0xFFFF;

/// Reads one field behind the other; behind the end of the block every field is absent.
class FieldReader {
 public:
  FieldReader(const StateChunk& source, int startPos) : chunk(source), position(startPos) {}

  template <class Number>
  void read(std::optional<Number>& field) {
    Number value{};
    position = get(value);
    if (position >= 0) field = value;
  }

  void read(std::string& text) { position = chunk.getString(position, text); }

  /// An empty path says that nothing is selected; a path that the block cuts off says nothing.
  void read(std::optional<std::string>& path) {
    std::int32_t length = 0;
    const bool isThere = chunk.getInt32(position, length) >= 0;
    std::string text;
    position = chunk.getString(position, text);
    if (isThere && (length == 0 || !text.empty())) path = text;
  }

  int place() const noexcept { return position; }

 private:
  int get(std::int32_t& value) const { return chunk.getInt32(position, value); }
  int get(double& value) const { return chunk.getDouble(position, value); }
  int get(bool& value) const {
    std::uint8_t byte = 0;
    const int next = chunk.getByte(position, byte);
    value = byte != 0;
    return next;
  }

  const StateChunk& chunk;
  int position;
};

/// The rows of one slot stand side by side.
template <class StepMods, class Operation>
void forEachStepMod(StepMods& masks, Operation operation) {
  for (std::size_t slot = 0; slot < masks[0].size(); ++slot) {
    for (auto& row : masks) operation(row[slot]);
  }
}

void readPreset(FieldReader& fields, HostState& state) {
  fields.read(state.presetName);
  fields.read(state.presetFolderLabel);
  fields.read(state.presetItemIndex);
  fields.read(state.presetFolderPath);
}

void readMasks(FieldReader& fields, HostState& state) {
  for (auto& mask : state.tapMask) fields.read(mask);
  for (auto& mask : state.stepFxMask) fields.read(mask);
  forEachStepMod(state.stepModMask, [&fields](auto& mask) { fields.read(mask); });
}

int readParameters(const StateChunk& chunk, int position, std::vector<double>& values) {
  for (int i = 0; i < kNumParams; ++i) {
    double value = 0.0;
    position = chunk.getDouble(position, value);
    if (position < 0) break;
    values.push_back(value);
  }
  return position;
}

bool putPreset(StateChunk& chunk, const HostState& state) {
  return chunk.putString(state.presetName) > 0 && chunk.putString(state.presetFolderLabel) > 0 &&
         chunk.putInt32(state.presetItemIndex.value_or(-1)) > 0 &&
         chunk.putString(state.presetFolderPath.value_or("")) > 0 &&
         chunk.putInt32(state.touchedParam.value_or(kNothingTouched)) > 0;
}

bool putMasks(StateChunk& chunk, const HostState& state) {
  bool done = true;
  const auto put = [&](const std::optional<std::int32_t>& mask, std::int32_t fresh) {
    done = done && chunk.putInt32(mask.value_or(fresh)) > 0;
  };
  for (const auto& mask : state.tapMask) put(mask, kAllTaps);
  for (const auto& mask : state.stepFxMask) put(mask, kAllTaps);
  forEachStepMod(state.stepModMask, [&put](const auto& mask) { put(mask, 0); });
  return done;
}

}  // namespace

std::optional<HostStateReading> readHostState(const StateChunk& chunk, int startPos) {
  HostStateReading reading;
  HostState& state = reading.state;
  const int behindVersion = chunk.getInt32(startPos, state.stateVersion);
  if (behindVersion < 0) return std::nullopt;
  if (state.stateVersion > kStateVersion) return reading;
  FieldReader fields(chunk, behindVersion);
  if (state.stateVersion >= kWithColourSet) fields.read(state.colourSet);
  if (state.stateVersion < kOldestStateVersion) return reading;
  fields.read(state.currentPage);
  if (state.stateVersion > kLastWithoutAttenuation) fields.read(state.attenuation);
  readPreset(fields, state);
  fields.read(state.touchedParam);
  readMasks(fields, state);
  fields.read(state.dryLock);
  reading.end = readParameters(chunk, fields.place(), state.parameters);
  return reading;
}

bool isWhole(const HostStateReading& reading) noexcept {
  const int version = reading.state.stateVersion;
  if (version == kStateVersion) return reading.end >= 0;
  return version >= kOldestStateVersion && version < kStateVersion;
}

bool putHostStateHead(StateChunk& chunk, const HostState& state) {
  return chunk.putInt32(kStateVersion) > 0 && chunk.putInt32(state.colourSet.value_or(0)) > 0 &&
         chunk.putInt32(state.currentPage.value_or(kDelayPage)) > 0 &&
         chunk.putDouble(state.attenuation.value_or(1.0)) > 0 && putPreset(chunk, state) &&
         putMasks(chunk, state) && chunk.putByte(state.dryLock.value_or(false) ? 1 : 0) > 0;
}

}  // namespace orvantesco
