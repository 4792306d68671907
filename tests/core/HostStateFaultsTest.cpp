// State blocks that are cut off or hold what no program wrote.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

#include "core/HostStateRig.h"

namespace orvantesco {
namespace {

using HostStateFaults = HostStateRig;

constexpr int kRandomBytes = 200;

TEST_F(HostStateFaults, AStoredAttenuationIsHeldInItsRange) {
  StateBytes state = moved();
  for (const auto& [stored, gain] : {std::pair{std::nan(""), 1.0}, std::pair{2.0, 1.0},
                                     std::pair{-1.0, std::pow(10.0, -12.0 / 20.0)}}) {
    state.attenuation = stored;
    restore(state);
    EXPECT_NEAR(probe.globals().inputAttenuation, gain, 1e-9) << stored;
  }
}

TEST_F(HostStateFaults, ABlockWithoutAWholeVersionChangesNothing) {
  restore(moved());
  const Bytes before = saved(rig);
  for (int length = 0; length < 4; ++length) {
    const Bytes bytes(static_cast<std::size_t>(length), 0);
    EXPECT_EQ(rig.effect.UnserializeState(StateBytes::chunkOf(bytes), 0), -1);
  }
  EXPECT_EQ(rig.effect.UnserializeState(moved().chunk(), -1), -1);
  EXPECT_EQ(saved(rig), before);
}

TEST_F(HostStateFaults, ParametersAreHeldInTheirRanges) {
  StateBytes state = moved();
  state.values[kFeedback] = std::nan("");
  state.values[kFeedback + 1] = 1e300;
  state.values[kFeedback + 2] = -std::numeric_limits<double>::infinity();
  restore(state);
  EXPECT_EQ(value(kFeedback), 0.0);
  EXPECT_EQ(value(kFeedback + 1), 160.0);
  EXPECT_EQ(value(kFeedback + 2), 0.0);
}

/// What an effect holds once it was brought the first bytes of a block.
StateBytes cutAt(std::size_t length, const StateBytes& whole, const StateBytes& held) {
  StateBytes model = held;
  model.values = defaultValues();
  std::size_t end = 4;
  const auto take = [&end, length](std::size_t bytes, auto& target, const auto& source) {
    end += bytes;
    if (end <= length) target = source;
  };
  take(4, model.colourSet, whole.colourSet);
  take(4, model.page, whole.page);
  take(8, model.attenuation, whole.attenuation);
  take(4 + whole.name.size(), model.name, whole.name);
  take(4 + whole.folder.size(), model.folder, whole.folder);
  end += 4;  // a place in a folder counts with the folder
  take(4 + whole.folderPath.size(), model.folderPath, whole.folderPath);
  take(0, model.item, whole.item);
  take(4, model.touched, whole.touched);
  for (std::size_t i = 0; i < 8; ++i) take(4, model.taps[i], whole.taps[i]);
  for (std::size_t i = 0; i < 4; ++i) take(4, model.stepFx[i], whole.stepFx[i]);
  for (std::size_t i = 0; i < 8; ++i) {
    take(4, model.stepMod[i % 2][i / 2], whole.stepMod[i % 2][i / 2]);
  }
  take(1, model.dryLock, whole.dryLock);
  for (std::size_t i = 0; i < whole.values.size(); ++i) {
    take(8, model.values[i], whole.values[i]);
  }
  return model;
}

TEST_F(HostStateFaults, EveryTruncationKeepsWhatIsMissing) {
  std::mt19937 draw(23);
  const StateBytes whole = moved();
  const StateBytes held = randomState(draw);
  const Bytes all = whole.bytes();
  const std::size_t head = all.size() - 1095 * 8;
  for (std::size_t length = 4; length < all.size(); length += length < head + 24 ? 1 : 211) {
    restore(held);
    const Bytes bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(rig.effect.UnserializeState(StateBytes::chunkOf(bytes), 0), -1);
    ASSERT_EQ(differences(saved(rig), cutAt(length, whole, held).bytes()), "") << length;
  }
}

TEST_F(HostStateFaults, ParametersThatAreNotReachedGetTheirDefaults) {
  restore(moved());
  StateBytes state = moved();
  state.values.assign(kFeedback + 1, 0.0);
  restore(state);
  EXPECT_EQ(value(kFeedback), 0.0);
  EXPECT_EQ(value(kFeedback + 2), 50.0);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.5) << "and the engine knows";
}

TEST_F(HostStateFaults, WhatNoEditorCouldShowIsNotTakenOver) {
  restore(moved());
  StateBytes state = moved();
  state.colourSet = 1000000;
  state.page = -5;
  state.touched = std::numeric_limits<int>::max();
  restore(state);
  StateBytes expected = moved();
  expected.touched = std::numeric_limits<int>::max();
  EXPECT_EQ(saved(rig), expected.bytes());
}

TEST_F(HostStateFaults, AnyBytesAreSurvived) {
  std::mt19937 draw(99);
  const Bytes whole = moved().bytes();
  for (int round = 0; round < kRandomBytes; ++round) {
    Bytes bytes = whole;
    for (int change = 0; change < 40; ++change) {
      bytes[draw() % (change % 2 == 0 ? 130 : bytes.size())] = static_cast<std::uint8_t>(draw());
    }
    bytes[1] = static_cast<std::uint8_t>(draw() % 3);
    bytes[2] = 1;
    bytes[3] = 0;
    rig.effect.UnserializeState(StateBytes::chunkOf(bytes), 0);
    const Bytes after = saved(rig);
    const auto again = StateBytes::chunkOf(after);
    rig.effect.UnserializeState(again, 0);
    ASSERT_EQ(saved(rig), after) << "round " << round;
  }
}

}  // namespace
}  // namespace orvantesco
