#include "presets/PresetWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "presets/PresetReader.h"

namespace orvantesco {
namespace {

Preset filled() {
  Preset preset;
  for (std::size_t i = 0; i < 8; ++i) preset.tapMask[i] = static_cast<std::uint16_t>(60000 + i);
  preset.lastPage = 17;
  preset.stepFxMask = {1, 20, 300, 4000};
  preset.stepModMask = {{{5, 6, 7, 8}, {9, 10, 11, 65535}}};
  preset.values = {{"InputGain1", -12.25}, {"LFORate1", 0.001}, {"Level4", 1234567.0}};
  return preset;
}

TEST(PresetWriter, WritesTheFileToTheByte) {
  EXPECT_EQ(presetText(filled()),
            "Orvantesco V. 1.2.0r14 PresetFile!\n"
            "PresetVersion: 14\n"
            "\n"
            "ADDPARAMS:\n"
            "\n"
            "DelayTaps\n"
            "60000 60001 60002 60003 60004 60005 60006 60007 \n"
            "LastPage\n"
            "17\n"
            "StepFX\n"
            "1 20 300 4000 \n"
            "StepMod\n"
            "5 6 7 8 9 10 11 65535 \n"
            "\n"
            "EParams:\n"
            "InputGain1 -12.25\n"
            "LFORate1 0.001\n"
            "Level4 1.23457e+06\n");
}

TEST(PresetWriter, WritesTheCurrentVersionAlways) {
  Preset old = filled();
  old.version = 3;
  EXPECT_EQ(presetText(old), presetText(filled()));
}

TEST(PresetWriter, WritesNumbersAsAStreamDoes) {
  std::mt19937_64 draw(11);
  std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
  std::string expected, written;
  for (int i = 0; i < 2000; ++i) {
    const double value = mantissa(draw) * std::pow(10.0, static_cast<double>(draw() % 16) - 8.0);
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << "K " << value << "\n";
    expected += stream.str();
    Preset preset;
    preset.values = {{"K", value}};
    const std::string text = presetText(preset);
    written += text.substr(text.find("EParams:\n") + 9);
  }
  EXPECT_EQ(written, expected);
}

TEST(PresetWriter, WhatWasWrittenReadsBack) {
  const Preset preset = filled();
  const auto result = parsePreset(presetText(preset));
  const auto& reading = std::get<PresetReading>(result);
  EXPECT_TRUE(reading.problems.empty());
  EXPECT_EQ(reading.preset.tapMask, preset.tapMask);
  EXPECT_EQ(reading.preset.lastPage, preset.lastPage);
  EXPECT_EQ(reading.preset.stepFxMask, preset.stepFxMask);
  EXPECT_EQ(reading.preset.stepModMask, preset.stepModMask);
  EXPECT_EQ(presetText(reading.preset), presetText(preset));
}

TEST(PresetWriter, WhatIsAbsentIsWrittenAsAFreshEffectHasIt) {
  const std::string text = presetText({});
  EXPECT_NE(text.find("DelayTaps\n65535 65535 65535 65535 65535 65535 65535 65535 \n"), text.npos);
  EXPECT_NE(text.find("LastPage\n2\n"), text.npos);
}

}  // namespace
}  // namespace orvantesco
