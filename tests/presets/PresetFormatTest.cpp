// The preset format as a program of its own sees it, that reads and writes it with plain streams.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "params/ParamBank.h"
#include "presets/FactoryPresets.h"
#include "presets/PlainPreset.h"
#include "presets/PresetMigration.h"
#include "presets/PresetReader.h"
#include "presets/PresetWriter.h"

namespace orvantesco {
namespace {

const ParamKeys& allKeys() {
  static ParamBank bank;
  [[maybe_unused]] static const bool once = (bank.buildParameterBank(), true);
  return bank.keys();
}

/// What a reader made of a text, each thing that it read on a line of its own.
std::string told(const PlainPreset& preset) {
  std::string text = "version " + std::to_string(preset.version.value_or(-1)) + "\n";
  for (const auto& mask : preset.taps) text += "tap " + std::to_string(mask.value_or(-1)) + "\n";
  text += "page " + std::to_string(preset.page.value_or(-1)) + "\n";
  for (const int mask : preset.stepFx) text += "fx " + std::to_string(mask) + "\n";
  for (const auto& row : preset.stepMod) {
    for (const int mask : row) text += "mod " + std::to_string(mask) + "\n";
  }
  for (const auto& [key, value] : preset.values) {
    text += key + " " + std::to_string(std::bit_cast<std::uint32_t>(value)) + "\n";
  }
  return text;
}

PlainPreset plain(const Preset& preset) {
  PlainPreset same;
  if (preset.version >= 0) same.version = preset.version;
  for (std::size_t i = 0; i < 8; ++i) {
    if (preset.tapMask[i]) same.taps[i] = *preset.tapMask[i];
  }
  same.page = preset.lastPage;
  for (std::size_t slot = 0; slot < 4; ++slot) {
    same.stepFx[slot] = preset.stepFxMask[slot];
    for (std::size_t row = 0; row < 2; ++row)
      same.stepMod[row][slot] = preset.stepModMask[row][slot];
  }
  for (const PresetValue& value : preset.values) {
    same.values.emplace_back(value.key, static_cast<float>(value.value));
  }
  return same;
}

std::string told(const PresetResult& result) {
  const auto* reading = std::get_if<PresetReading>(&result);
  return reading != nullptr ? told(plain(reading->preset)) : "no preset";
}

std::string toldPlainly(const std::string& text) {
  const auto preset = plainlyRead(text);
  return preset ? told(*preset) : "no preset";
}

/// Any number that six digits can say.
float anyNumber(std::mt19937& draw) {
  const int digits = static_cast<int>(draw() % 2'000'000) - 1'000'000;
  if (std::abs(digits) == 1'000'000) return 1.0f;
  const std::string text = std::to_string(digits) + "e" + std::to_string(int(draw() % 9) - 6);
  return std::stof(text);
}

Preset anyPreset(std::mt19937& draw, int oneOf) {
  const auto mask = [&draw] { return static_cast<std::uint16_t>(draw()); };
  Preset preset;
  for (auto& one : preset.tapMask) one = mask();
  for (auto& one : preset.stepFxMask) one = mask();
  for (auto& row : preset.stepModMask) {
    for (auto& one : row) one = mask();
  }
  preset.lastPage = static_cast<int>(draw() % 20);
  for (const std::string& key : allKeys()) {
    if (draw() % static_cast<unsigned>(oneOf) == 0) preset.values.push_back({key, anyNumber(draw)});
  }
  return preset;
}

/// A file as an old version might have written it.
std::string anyOldFile(std::mt19937& draw, int version) {
  std::string text = presetText(anyPreset(draw, 60));
  const std::string current = "PresetVersion: 14";
  text.replace(text.find(current), current.size(), "PresetVersion: " + std::to_string(version));
  if (version < 8) text.insert(text.find("\n\nEParams:"), "1 2 4 8 16 32 64 128");
  for (const std::string& key : allKeys()) {
    const bool mayChange = key.starts_with("FX") || key.starts_with("LFO") ||
                           key.find("Timebase") != key.npos || key.starts_with("Level") ||
                           key.starts_with("Delay");
    if (!mayChange || draw() % 2 == 0) continue;
    text += key + " " + std::to_string(draw() % 26) + (draw() % 4 == 0 ? ".5\n" : "\n");
  }
  return text;
}

const std::string& wholeFile() {
  static const std::string text = [] {
    std::mt19937 draw(1);
    return presetText(anyPreset(draw, 30));
  }();
  return text;
}

TEST(PresetFormat, AFileCutAtAnyByteReadsAsStreamsReadIt) {
  const std::string& whole = wholeFile();
  int different = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string text = whole.substr(0, length);
    if (told(parsePreset(text)) != toldPlainly(text)) ++different;
  }
  EXPECT_EQ(different, 0) << "of " << whole.size();
}

TEST(PresetFormat, AnOldFileCutAtAnyByteReadsAsStreamsReadIt) {
  std::mt19937 draw(2);
  const std::string whole = anyOldFile(draw, 7).substr(0, 2000);
  int different = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string text = whole.substr(0, length);
    if (told(parsePreset(text)) != toldPlainly(text)) ++different;
  }
  EXPECT_EQ(different, 0);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find('\n', start) + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

TEST(PresetFormat, ShuffledLinesReadAsStreamsReadThem) {
  std::mt19937 draw(3);
  std::vector<std::string> lines = linesOf(wholeFile());
  int different = 0;
  for (int round = 0; round < 500; ++round) {
    std::shuffle(lines.begin(), lines.end(), draw);
    std::string text = "Orvantesco V. x y PresetVersion: 14\n";
    for (const std::string& line : lines) text += line;
    if (told(parsePreset(text)) != toldPlainly(text)) ++different;
  }
  EXPECT_EQ(different, 0);
}

TEST(PresetFormat, EveryShippedFileReadsAsStreamsReadIt) {
  for (const FactoryPreset& preset : factoryPresets()) {
    const std::string text(preset.text);
    EXPECT_EQ(told(parsePreset(text)), toldPlainly(text)) << preset.name;
    EXPECT_EQ(plainlyWritten(*plainlyRead(text)), text) << preset.name;
  }
}

TEST(PresetFormat, RandomFilesOfAllVersionsMeanWhatTheRulesSay) {
  std::mt19937 draw(4);
  int different = 0;
  for (int round = 0; round < 320; ++round) {
    const std::string text = anyOldFile(draw, round % 16);
    const auto result = parsePreset(text);
    const auto& reading = std::get<PresetReading>(result);
    const auto expected = plainlyRead(text);
    ASSERT_TRUE(expected);
    ASSERT_EQ(told(plain(reading.preset)), told(*expected)) << "version " << round % 16;
    const MigratedValues values = migrated(reading.preset, allKeys());
    const auto wanted = plainlyMigrated(*expected, allKeys());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const auto bits = [](std::optional<float> v) {
        return v && !std::isnan(*v) ? std::optional(std::bit_cast<std::uint32_t>(*v))
                                    : std::optional(v ? 1u : 0u);
      };
      if (bits(values.byIndex[i]) != bits(wanted[i])) ++different;
    }
    for (std::size_t slot = 0; slot < 4; ++slot) {
      const bool loses = losesFeedback(*expected, static_cast<char>('1' + slot));
      if (values.quietenFeedback[slot] != loses) ++different;
    }
  }
  EXPECT_EQ(different, 0);
}

TEST(PresetFormat, TenThousandRandomPresetsAreWrittenAsByStreamsAndComeBack) {
  std::mt19937 draw(5);
  int badlyWritten = 0;
  int badlyRead = 0;
  for (int round = 0; round < 10'000; ++round) {
    // Most have few parameters, as people make them; some have all.
    const Preset preset = anyPreset(draw, round % 200 == 0 ? 1 : 50);
    const std::string text = presetText(preset);
    const PresetResult again = parsePreset(text);
    if (told(again) != told(plain(preset))) ++badlyRead;
    if (round % 10 == 0 && text != plainlyWritten(plain(preset))) ++badlyWritten;
  }
  EXPECT_EQ(badlyRead, 0);
  EXPECT_EQ(badlyWritten, 0);
}

}  // namespace
}  // namespace orvantesco
