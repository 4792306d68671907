#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvantesco {

class StateChunk;

/// Version of the state blocks that this program writes: major, minor and patch in a byte each.
inline constexpr int kStateVersion = 0x10200;

/// The oldest version whose fields behind the colour set are known.
inline constexpr int kOldestStateVersion = 0x833;

/// The last version without the attenuation, which then counts as full level.
inline constexpr int kLastWithoutAttenuation = 0x10100;

/// Number of colour sets that a block can name.
inline constexpr int kColourSets = 11;

/// The selected preset in the menu of the library.
struct PresetSelection {
  std::string folderPath;  ///< relative path of its folder; empty where nothing is selected
  int itemIndex = -1;      ///< place in the menu of that folder; -1 where nothing is selected
};

/// What the host's state block says, of any version, before migration. It knows no engine.
///
/// What is absent, because the version has no such field or the block ends before it, leaves the
/// engine as it is, but for parameters, which then have their defaults. Bit t of a mask stands for
/// tap t; blocks hold masks as 32 bits, of which the low 16 count.
struct HostState {
  int stateVersion = kStateVersion;
  std::optional<int> colourSet;
  std::optional<int> currentPage;
  std::optional<double> attenuation;  ///< of the editor's control; 0..1 once applied
  std::string presetName;             ///< empty for absent
  std::string presetFolderLabel;      ///< with its "U:" or "F:"; empty for absent
  std::optional<int> presetItemIndex;
  std::optional<std::string> presetFolderPath;
  std::optional<int> touchedParam;
  std::array<std::optional<std::int32_t>, 8> tapMask{};     ///< slot * 2 + side (0 left, 1 right)
  std::array<std::optional<std::int32_t>, 4> stepFxMask{};  ///< one for each slot
  std::array<std::array<std::optional<std::int32_t>, 4>, 2> stepModMask{};  ///< row, slot
  std::optional<bool> dryLock;
  std::vector<double> parameters;  ///< in index order, as many as there are, 1095 at most
};

/// A block as it was read.
struct HostStateReading {
  HostState state;
  int end = -1;  ///< position behind the parameters; -1 where the block ends early or is too old
};

/// Reads the block that begins at a position. Nothing where not even its version can be read. Takes
/// any bytes; of a version above `kStateVersion` or below `kOldestStateVersion` nothing behind the
/// colour set is read. Any thread.
std::optional<HostStateReading> readHostState(const StateChunk& chunk, int startPos);

/// Whether a block says all that its version has to say, so that a session can be trusted to it: of
/// a version that can be read, and one of this version to its end. An older one may end early,
/// since its program had fewer parameters.
bool isWhole(const HostStateReading& reading) noexcept;

/// Appends everything but the parameters, whose doubles follow in index order. What is absent in
/// `state` is written as a fresh effect has it. The version is `kStateVersion` in any case. False
/// where the chunk could not grow.
bool putHostStateHead(StateChunk& chunk, const HostState& state);

}  // namespace orvantesco
