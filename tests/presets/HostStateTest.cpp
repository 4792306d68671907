#include "presets/HostState.h"

#include <gtest/gtest.h>

#include "support/StateBytes.h"

namespace orvantesco {
namespace {

StateBytes sample() {
  StateBytes state;
  state.colourSet = 3;
  state.page = 11;
  state.attenuation = 0.5;
  state.name = "Name";
  state.folder = "U:Folder";
  state.item = 2;
  state.folderPath = "/User Presets/Folder/";
  state.touched = 70;
  state.taps = {1, 2, 3, 4, 5, 6, 7, 0x12345};
  state.stepFx = {1, 2, 3, 4};
  state.stepMod = {{{1, 2, 3, 4}, {5, 6, 7, 8}}};
  state.dryLock = 200;
  for (int i = 0; i < kNumParams; ++i) state.values.push_back(i * 0.5);
  return state;
}

HostStateReading readingOf(const StateChunk& chunk) {
  const auto reading = readHostState(chunk, 0);
  EXPECT_TRUE(reading);
  return reading.value_or(HostStateReading{});
}

TEST(HostState, ReadsEveryFieldInItsPlace) {
  const StateChunk chunk = sample().chunk();
  const HostStateReading reading = readingOf(chunk);
  const HostState& state = reading.state;
  EXPECT_EQ(reading.end, chunk.size());
  EXPECT_EQ(state.stateVersion, 0x10200);
  EXPECT_EQ(state.colourSet, 3);
  EXPECT_EQ(state.currentPage, 11);
  EXPECT_EQ(state.attenuation, 0.5);
  EXPECT_EQ(state.presetName, "Name");
  EXPECT_EQ(state.presetFolderLabel, "U:Folder");
  EXPECT_EQ(state.presetItemIndex, 2);
  EXPECT_EQ(state.presetFolderPath, "/User Presets/Folder/");
  EXPECT_EQ(state.touchedParam, 70);
  EXPECT_EQ(state.tapMask[7], 0x12345);
  EXPECT_EQ(state.stepFxMask[2], 3);
  EXPECT_EQ(state.stepModMask[0][1], 2);
  EXPECT_EQ(state.stepModMask[1][3], 8);
  EXPECT_EQ(state.dryLock, true) << "any byte but zero";
  ASSERT_EQ(state.parameters.size(), 1095u);
  EXPECT_EQ(state.parameters[1094], 547.0);
}

TEST(HostState, ReadsAtAnyPosition) {
  StateChunk chunk;
  chunk.putString("before");
  const auto bytes = sample().bytes();
  chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
  const auto reading = readHostState(chunk, 10);
  ASSERT_TRUE(reading);
  EXPECT_EQ(reading->end, chunk.size());
  EXPECT_EQ(reading->state.presetName, "Name");
}

TEST(HostState, KnowsTheFieldsOfEveryVersion) {
  for (const int version : {0x833, 0x10100, 0x10101, 0x1015B, 0x1015C, 0x10160, 0x10200}) {
    StateBytes bytes = sample();
    bytes.version = version;
    const HostStateReading reading = readingOf(bytes.chunk());
    EXPECT_EQ(reading.state.colourSet.has_value(), version >= 0x1015C) << version;
    EXPECT_EQ(reading.state.attenuation.has_value(), version >= 0x10101) << version;
    EXPECT_EQ(reading.state.touchedParam, 70) << version;
    EXPECT_EQ(reading.end, bytes.chunk().size()) << version;
  }
}

TEST(HostState, TakesNothingBehindTheVersionOfANewerOrTooOldBlock) {
  for (const int version : {0x832, 0, -1, 0x10201, 0x7FFFFFFF}) {
    StateBytes bytes = sample();
    bytes.version = 0x10200;
    auto raw = bytes.bytes();
    for (std::size_t i = 0; i < 4; ++i) {
      raw[i] = static_cast<std::uint8_t>(static_cast<unsigned>(version) >> (8 * i));
    }
    const HostStateReading reading = readingOf(StateBytes::chunkOf(raw));
    EXPECT_EQ(reading.state.stateVersion, version);
    EXPECT_FALSE(reading.state.currentPage);
    EXPECT_TRUE(reading.state.parameters.empty());
    EXPECT_EQ(reading.end, -1);
  }
}

TEST(HostState, WhatABlockDoesNotReachIsAbsent) {
  const auto whole = sample().bytes();
  for (std::size_t length = 0; length < 160; ++length) {
    const std::vector<std::uint8_t> bytes(whole.begin(),
                                          whole.begin() + static_cast<std::ptrdiff_t>(length));
    const auto reading = readHostState(StateBytes::chunkOf(bytes), 0);
    EXPECT_EQ(reading.has_value(), length >= 4);
    if (!reading) continue;
    EXPECT_EQ(reading->state.colourSet.has_value(), length >= 8);
    EXPECT_EQ(reading->state.currentPage.has_value(), length >= 12);
    EXPECT_EQ(reading->state.attenuation.has_value(), length >= 20);
    EXPECT_EQ(reading->state.presetName, length >= 28 ? "Name" : "");
    EXPECT_EQ(reading->state.presetFolderLabel, length >= 40 ? "U:Folder" : "");
    EXPECT_EQ(reading->state.presetItemIndex.has_value(), length >= 44);
    EXPECT_EQ(reading->state.presetFolderPath.has_value(), length >= 69);
    EXPECT_EQ(reading->state.touchedParam.has_value(), length >= 73);
    EXPECT_EQ(reading->state.tapMask[0].has_value(), length >= 77);
    EXPECT_EQ(reading->state.stepModMask[1][3].has_value(), length >= 153);
    EXPECT_EQ(reading->state.dryLock.has_value(), length >= 154);
    EXPECT_EQ(reading->end, -1);
  }
}

TEST(HostState, IsWholeToTheLastByteUnlessAnOlderProgramWroteLess) {
  const auto isWholeOf = [](const std::vector<std::uint8_t>& bytes) {
    const auto reading = readHostState(StateBytes::chunkOf(bytes), 0);
    return reading && isWhole(*reading);
  };
  StateBytes state;
  state.values = defaultValues();
  auto bytes = state.bytes();
  EXPECT_TRUE(isWholeOf(bytes));
  for (std::size_t length = 0; length < bytes.size(); length += length < 200 ? 1 : 801) {
    EXPECT_FALSE(isWholeOf({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)}));
  }
  bytes.pop_back();
  EXPECT_FALSE(isWholeOf(bytes));
  state.values.resize(900);
  state.version = 0x10100;
  EXPECT_TRUE(isWholeOf(state.bytes()));
  state.version = 0x832;
  EXPECT_FALSE(isWholeOf(state.bytes()));
  state.version = 0x10201;
  EXPECT_FALSE(isWholeOf(state.bytes()));
}

TEST(HostState, SurvivesTextsOfImpossibleLengths) {
  for (const std::uint32_t length : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0xFFFFFFF0u}) {
    auto bytes = sample().bytes();
    for (std::size_t i = 0; i < 4; ++i)
      bytes[20 + i] = static_cast<std::uint8_t>(length >> (8 * i));
    const auto reading = readHostState(StateBytes::chunkOf(bytes), 0);
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->state.presetName, "");
  }
}

/// The bytes of two hexadecimal digits each.
std::vector<std::uint8_t> bytesOfHex(std::string_view digits) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 3) {
    bytes.push_back(
        static_cast<std::uint8_t>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

/// The block of `sample` up to its first parameters, as a person would put it down.
constexpr std::string_view kSampleInHex =
    "00 02 01 00 03 00 00 00 0B 00 00 00 00 00 00 00 00 00 E0 3F "        // to the attenuation
    "04 00 00 00 4E 61 6D 65 08 00 00 00 55 3A 46 6F 6C 64 65 72 "        // name, folder label
    "02 00 00 00 15 00 00 00 2F 55 73 65 72 20 50 72 65 73 65 74 73 2F "  // item, folder path
    "46 6F 6C 64 65 72 2F 46 00 00 00 "                                   // touched parameter
    "01 00 00 00 02 00 00 00 03 00 00 00 04 00 00 00 05 00 00 00 06 00 00 00 "
    "07 00 00 00 45 23 01 00 "                          // tap masks
    "01 00 00 00 02 00 00 00 03 00 00 00 04 00 00 00 "  // StepFX masks
    "01 00 00 00 05 00 00 00 02 00 00 00 06 00 00 00 "  // StepMod masks
    "03 00 00 00 07 00 00 00 04 00 00 00 08 00 00 00 "
    "C8 "  // dry lock
    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 E0 3F 00 00 00 00 00 00 F0 3F ";

TEST(HostState, TheBytesOfABlockAreTheseFromTheFirstOn) {
  const auto bytes = bytesOfHex(kSampleInHex);
  auto laidOut = sample().bytes();
  EXPECT_EQ(laidOut.size(), 154u + 8u * 1095u);
  laidOut.resize(bytes.size());
  EXPECT_EQ(differences(laidOut, bytes), "");
  const HostStateReading reading = readingOf(StateBytes::chunkOf(bytes));
  StateChunk chunk;
  ASSERT_TRUE(putHostStateHead(chunk, reading.state));
  for (const double value : reading.state.parameters) chunk.putDouble(value);
  auto expected = bytes;
  expected[153] = 1;
  EXPECT_EQ(differences(StateBytes::bytesOf(chunk), expected), "");
}

TEST(HostState, WritesTheHeadOfABlockToTheByte) {
  const StateBytes bytes = sample();
  const HostStateReading reading = readingOf(bytes.chunk());
  StateChunk chunk;
  ASSERT_TRUE(putHostStateHead(chunk, reading.state));
  for (const double value : reading.state.parameters) chunk.putDouble(value);
  auto expected = sample();
  expected.dryLock = 1;
  EXPECT_EQ(differences(StateBytes::bytesOf(chunk), expected.bytes()), "");
}

}  // namespace
}  // namespace orvantesco
