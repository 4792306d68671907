// What other threads can and cannot do while a restore or a load is under way.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <thread>
#include <utility>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

/// Where a bulk operation shows something, another thread gets its turn.
class OtherHand : public EditorPort {
 public:
  std::function<void()> atTheTimers, atTheFirstPostEffect;

  void runDisplayTimers() noexcept override { act(atTheTimers); }
  void showEffect(int position, int) noexcept override {
    if (position == 2 * numSlots) act(atTheFirstPostEffect);
  }

 private:
  static void act(const std::function<void()>& work) {
    if (work) std::thread(work).join();
  }
};

class BulkOtherHands : public ::testing::Test {
 protected:
  BulkOtherHands() {
    rig.effect.setEditor(&editor);
    state.values = defaultValues();
    state.values[kFxTypePost] = 5.0;
  }
  void restore() { rig.effect.UnserializeState(state.chunk(), 0); }

  /// Tells at each end of a bulk operation whether another thread could take the lock.
  void watchLock() {
    editor.atTheTimers = [this] {
      ++ends;
      const std::unique_lock lock(rig.effect.mutex, std::try_to_lock);
      lockedOut = lockedOut && !lock.owns_lock();
    };
  }

  OtherHand editor;
  EngineRig rig;
  StateBytes state;
  int ends = 0;
  bool lockedOut = true;
};

TEST_F(BulkOtherHands, NoRateComesIntoForceInTheMiddleOfALoadOrARestore) {
  watchLock();
  rig.effect.settings().applyPreset(Preset{});
  EXPECT_TRUE(lockedOut) << "a load";
  restore();
  EXPECT_TRUE(lockedOut) << "a restore";
  EXPECT_EQ(ends, 2);
}

TEST_F(BulkOtherHands, AutomationThatArrivesInARestoreOfOldValuesSpeaksOfTodays) {
  state.version = 0x1015F;
  editor.atTheFirstPostEffect = [this] { rig.set(kFxTypePre, 20.0); };
  restore();
  EXPECT_EQ(rig.effect.GetParam(kFxTypePre)->value(), 20.0);
}

TEST_F(BulkOtherHands, AutomationDoesNotEndTheMigrationOfARestore) {
  state.version = 0x1015F;
  state.values[kFxTypePost + 1] = 18.0;
  editor.atTheFirstPostEffect = [this] {
    rig.set(kDelayMode, 3.0);
    rig.set(kDelayRoute, 6.0);
  };
  restore();
  EXPECT_EQ(rig.effect.GetParam(kFxTypePost + 1)->value(), 19.0);
}

TEST_F(BulkOtherHands, AudioIsSilentDuringALoadAndARestore) {
  rig.warmUp();
  StereoBuffer before = noise(4800);
  rig.render(before);
  double peak = 0.0;
  editor.atTheTimers = [&] {
    ++ends;
    StereoBuffer audio = noise(512);
    rig.render(audio);
    for (const double sample : audio.left) peak = std::max(peak, std::abs(sample));
    for (const double sample : audio.right) peak = std::max(peak, std::abs(sample));
  };
  restore();
  rig.effect.settings().applyPreset(Preset{});
  EXPECT_EQ(ends, 2);
  EXPECT_EQ(peak, 0.0);
}

TEST_F(BulkOtherHands, TheSoundComesBackFromARestoreByAFadeWithoutAClick) {
  state.values[kDryLevel] = 100.0;
  state.values[kWetLevel] = 0.0;
  rig.warmUp();
  restore();
  StereoBuffer steady(24000);
  std::fill(steady.left.begin(), steady.left.end(), 1.0);
  rig.render(steady, 480);
  double step = std::abs(steady.left[0]);
  for (std::size_t i = 1; i < 24000; ++i) {
    step = std::max(step, std::abs(steady.left[i] - steady.left[i - 1]));
  }
  EXPECT_LT(step, 0.02);
  EXPECT_NEAR(steady.left[20000], 1.0, 0.01);
}

TEST_F(BulkOtherHands, ChangesOfRateRootAndMenuOnOtherThreadsMeetLoads) {
  std::atomic<bool> done{false};
  std::thread rates([&] {
    while (!done) rig.effect.InitForSampleRate(true);
  });
  std::thread wiring([&] {
    for (int i = 0; !done; ++i) {
      rig.effect.settings().setPresetRoot("/nowhere/" + std::to_string(i));
      rig.effect.settings().setPresetMenu(nullptr);
    }
  });
  for (int round = 0; round < 5; ++round) {
    restore();
    rig.effect.settings().applyPreset(Preset{});
    EXPECT_FALSE(rig.effect.readPresetFile("/User Presets/None.txt"));
  }
  done = true;
  rates.join();
  wiring.join();
  EXPECT_EQ(rig.effect.GetParam(kFxTypePost)->value(), 0.0);
}

}  // namespace
}  // namespace orvantesco
