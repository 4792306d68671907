#include "presets/PresetReader.h"

#include "presets/FileContent.h"
#include "presets/TokenReader.h"

namespace orvantesco {
namespace {

constexpr std::string_view kFirstWord = "Orvantesco";
constexpr std::string_view kParamsWord = "EParams:";

/// Words before the parameters that are passed over. Masks are read as one with their name, so a
/// file of this program passes with six.
constexpr int kMostSections = 1095;

// The first versions that know a form.
constexpr int kSingleStepMods = 8;   // one mask for each slot and row; before, a pair
constexpr int kSquaredLfoDepth = 3;  // modulation depths of the LFO rates in today's scale

constexpr double kLfoDepthScale = 0.278207956148936;
constexpr std::string_view kLfoDepthKey = "LFOFreqModDepth";

/// Only the low 16 bits of what stands in a file count.
std::uint16_t maskOf(int number) noexcept { return static_cast<std::uint16_t>(number); }

bool isLfoDepth(std::string_view key) {
  if (key.size() != kLfoDepthKey.size() + 1 || !key.starts_with(kLfoDepthKey)) return false;
  return key.back() >= '1' && key.back() <= '4';
}

/// Goes through the text of one preset file.
class Reading {
 public:
  explicit Reading(std::string_view text) : tokens(text) {}

  bool isPreset() { return tokens.word() == kFirstWord; }

  PresetReading run() && {
    readVersion();
    readSections();
    if (preset().version >= 0) readValues();
    return std::move(result);
  }

 private:
  Preset& preset() { return result.preset; }

  void complain(int line, std::string message) {
    result.problems.push_back({line, std::move(message)});
  }

  /// Behind the first word: the rest of the first line, the version's caption, the version.
  void readVersion() {
    for (int discarded = 0; discarded < 4; ++discarded) tokens.word();
    const int line = tokens.line();
    preset().version = tokens.integer().value_or(kUnknownPresetVersion);
    if (preset().version < 0) complain(line, "expected the preset version, a whole number from 0");
    if (preset().version > kPresetVersion) {
      complain(line, "is of preset version " + std::to_string(preset().version) +
                         ", expected at most " + std::to_string(kPresetVersion));
    }
  }

  /// Values begin behind the word that ends this, even where it is only one too many.
  void readSections() {
    auto word = tokens.word();
    for (int passed = 0; word && word != kParamsWord && passed < kMostSections; ++passed) {
      readSection(*word);
      word = tokens.word();
    }
    if (word != kParamsWord) complain(0, "expected a section \"EParams:\" with the parameters");
  }

  void readSection(std::string_view word) {
    if (word == "DelayTaps") readTapMasks();
    if (word == "LastPage") readPage();
    if (word == "StepFX") readStepFx();
    if (word != "StepMod") return;
    if (preset().version >= kSingleStepMods) {
      readStepMods();
    } else {
      readStepModPairs();
    }
  }

  std::optional<int> integer(const char* what) {
    const int line = tokens.line();
    const auto number = tokens.integer();
    // One complaint for a list that ends early.
    if (!number && listIsWhole) complain(line, std::string("expected ") + what);
    listIsWhole = listIsWhole && number;
    return number;
  }

  void readTapMasks() {
    listIsWhole = true;
    for (auto& mask : preset().tapMask) {
      if (const auto number = integer("eight tap masks")) mask = maskOf(*number);
    }
  }

  void readPage() {
    listIsWhole = true;
    if (const auto number = integer("the number of a page")) preset().lastPage = *number;
  }

  void readStepFx() {
    listIsWhole = true;
    for (auto& mask : preset().stepFxMask) {
      if (const auto number = integer("four StepFX masks")) mask = maskOf(*number);
    }
  }

  void readStepMods() {
    listIsWhole = true;
    for (auto& row : preset().stepModMask) {
      for (auto& mask : row) {
        if (const auto number = integer("eight StepMod masks")) mask = maskOf(*number);
      }
    }
  }

  /// Two masks for each slot and row, which act as one. The effect ran on all taps then.
  void readStepModPairs() {
    listIsWhole = true;
    for (auto& row : preset().stepModMask) {
      for (std::size_t slot = 0; slot < row.size(); ++slot) {
        const auto first = integer("sixteen StepMod masks");
        const auto second = integer("sixteen StepMod masks");
        if (!first && !second) continue;
        row[slot] = maskOf(first.value_or(0) | second.value_or(0));
        preset().stepFxMask[slot] = 0xFFFF;
      }
    }
  }

  void readValues() {
    for (;;) {
      const int line = tokens.line();
      const auto key = tokens.word();
      if (!key) return;
      const auto number = tokens.number();
      if (!number) {
        complain(line, "expected a number of single precision behind \"" +
                           std::string(key->substr(0, 40)) + "\"; nothing behind it was read");
        return;
      }
      preset().values.push_back({std::string(*key), scaled(*key, *number), line});
    }
  }

  double scaled(std::string_view key, float value) const {
    const bool isOldDepth = result.preset.version < kSquaredLfoDepth && isLfoDepth(key);
    return isOldDepth ? static_cast<float>(value * kLfoDepthScale) : value;
  }

  TokenReader tokens;
  PresetReading result;
  bool listIsWhole = true;
};

}  // namespace

PresetResult parsePreset(std::string_view text) {
  Reading reading(text);
  if (!reading.isPreset()) {
    return PresetError{PresetError::Kind::wrongFile,
                       "is no preset file, expected \"Orvantesco\" as its first word"};
  }
  return std::move(reading).run();
}

PresetResult readPreset(const std::string& path) {
  const auto content = readFile(path, kLargestPresetBytes);
  if (const auto* error = std::get_if<FileError>(&content)) {
    const auto kind = error->isTooLong ? PresetError::Kind::wrongFile : PresetError::Kind::noFile;
    return PresetError{kind, "cannot be read: " + error->message};
  }
  return parsePreset(std::get<std::string>(content));
}

}  // namespace orvantesco
