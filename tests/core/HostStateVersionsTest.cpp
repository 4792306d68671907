// State blocks of older and newer programs.

#include <gtest/gtest.h>

#include <cmath>

#include "core/HostStateRig.h"

namespace orvantesco {
namespace {

using HostStateVersions = HostStateRig;

TEST_F(HostStateVersions, ABlockWithoutColourAndAttenuationKeepsTheOneAndResetsTheOther) {
  rig.effect.settings().setColourSet(4);
  rig.effect.settings().setAttenuation(0.0);
  StateBytes state = moved();
  state.version = 0x10100;
  restore(state);
  state.version = 0x10200;
  state.colourSet = 4;
  state.attenuation = 1.0;
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateVersions, TheColourSetIsThereFrom1015COn) {
  for (const int version : {0x1015B, 0x1015C}) {
    rig.effect.settings().setColourSet(2);
    StateBytes state = moved();
    state.version = version;
    restore(state);
    const Bytes after = saved(rig);
    EXPECT_EQ(after[4], version == 0x1015B ? 2 : 7);
    EXPECT_EQ(rig.effect.settings().presetName(), "Slap")
        << "and what follows is read in its place";
  }
}

TEST_F(HostStateVersions, TheAttenuationIsThereFrom10101On) {
  StateBytes state = moved();
  state.version = 0x10101;
  restore(state);
  EXPECT_NEAR(probe.globals().inputAttenuation, std::pow(10.0, -7.0 / 20.0), 1e-9);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
}

TEST_F(HostStateVersions, ANewerBlockChangesNothingAndTellsTheUser) {
  const Bytes before = saved(rig);
  StateBytes state = moved();
  state.version = 0x10201;
  editor.clear();
  restore(state);
  EXPECT_EQ(saved(rig), before);
  EXPECT_EQ(editor.lines(),
            (std::vector<std::string>{"showMessage Saved data is newer than the actual ORVANTESCO "
                                      "version!\nCan't restore saved state!"}));
}

TEST_F(HostStateVersions, ABlockThatIsTooOldLeavesDefaultsWithoutNotice) {
  restore(moved());
  editor.clear();
  StateBytes state = moved();
  state.version = 0x832;
  restore(state);
  EXPECT_EQ(value(kFeedback + 2), 50.0);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.33) << "the engine was told nothing";
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_TRUE(editor.lines().empty());
  rig.set(kFxTypePre, 20.0);
  EXPECT_EQ(value(kFxTypePre), 20.0) << "nothing is migrated behind it";
  state.version = 0x833;
  restore(state);
  EXPECT_EQ(value(kFeedback + 2), 33.0);
}

TEST_F(HostStateVersions, OldRoutesAreQuietenedInTheFirstSlotAlone) {
  StateBytes state = moved();
  state.version = 0x10161;
  for (const int slot : {0, 1}) {
    state.values[static_cast<std::size_t>(kDelayMode + slot)] = 3.0;
    state.values[static_cast<std::size_t>(kDelayRoute + slot)] = 6.0;
  }
  state.values[kFeedback] = 80.0;
  restore(state);
  EXPECT_DOUBLE_EQ(value(kFeedback), 56.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.56);
  EXPECT_EQ(value(kFeedback + 1), 50.0);
}

TEST_F(HostStateVersions, TheFirstQuietenedRouteEndsTheMigrationOfARestore) {
  StateBytes state = moved();
  state.version = 0x1015F;
  for (const int slot : {1, 3}) {
    const auto s = static_cast<std::size_t>(slot);
    state.values[kDelayMode + s] = 3.0;
    state.values[kDelayRoute + s] = 6.0;
    state.values[kFeedback + s] = 100.0;
    state.values[kFxTypePre + s] = 18.0;
    state.values[kFxTypeFeedback + s] = 13.0;
    state.values[kFxTypePost + s] = 18.0;
  }
  state.touched = kFxTypePost + 3;
  restore(state);
  EXPECT_DOUBLE_EQ(value(kFeedback + 1), 70.0);
  EXPECT_EQ(value(kFeedback + 3), 100.0);
  for (const int slot : {1, 3}) {
    EXPECT_EQ(value(kFxTypePre + slot), 19.0) << "types come before the routes";
    EXPECT_EQ(value(kFxTypeFeedback + slot), 14.0);
    EXPECT_EQ(value(kFxTypePost + slot), 19.0) << "also for the one that is dispatched once more";
  }
}

TEST_F(HostStateVersions, AMigrationRunsOnceForEachParameter) {
  StateBytes state = moved();
  state.version = 0x1015F;
  state.values[kFxTypePre] = 18.0;
  state.values[kFxTypeFeedback] = 13.0;
  state.values[kFxTypePost + 3] = 17.0;
  state.touched = kFxTypePre;
  restore(state);
  EXPECT_EQ(value(kFxTypePre), 19.0) << "also where the user's hand lay on it";
  EXPECT_EQ(value(kFxTypeFeedback), 14.0);
  EXPECT_EQ(value(kFxTypePost + 3), 17.0);
  state.version = 0x10160;
  restore(state);
  EXPECT_EQ(value(kFxTypePre), 18.0);
  EXPECT_EQ(value(kFxTypeFeedback), 14.0);
  state.version = 0x10161;
  restore(state);
  EXPECT_EQ(value(kFxTypeFeedback), 13.0);
}

}  // namespace
}  // namespace orvantesco
