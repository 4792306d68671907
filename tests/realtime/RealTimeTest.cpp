// The audio thread allocates nothing, frees nothing and takes no lock.

#include <gtest/gtest.h>

#include <mutex>
#include <new>

#include "params/ParamIndex.h"
#include "realtime/RealTimeWork.h"
#include "support/EngineRig.h"
#include "support/ModulatorSettings.h"

namespace orvantesco {
namespace {

TEST(AudioThreadGuard, SeesAllocationsFreesAndLocks) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  std::mutex mutex;
  int allocations = 0, frees = 0, locks = 0;
  {
    const AudioThreadGuard guard;
    ::operator delete(::operator new(8));  // a new-expression may be optimised away
    ::operator delete[](::operator new[](8));
    { const std::lock_guard lock(mutex); }
    allocations = guard.allocations();
    frees = guard.frees();
    locks = guard.locks();
  }
  EXPECT_GE(allocations, 2);
  EXPECT_GE(frees, 2);
  EXPECT_EQ(locks, 1);
}

TEST(RealTime, BlocksAskForNothingInAnyDelayMode) {
  EngineRig rig;
  for (int slot = 0; slot < 4; ++slot) {
    rig.set(kSlotOn + slot, 1);
    rig.set(kDelayMode + slot, slot);
    rig.set(kFbMatrix + slot, 1);
    rig.set(kDelayTapsSwell + slot, 100);
  }
  rig.warmUp();
  StereoBuffer audio = noise(48000);
  expectRealTime("four slots, four modes", [&] { rig.render(audio, 333); });
}

TEST(RealTime, AllModulatorsAskForNothing) {
  EngineRig rig;
  switchOnModulators(rig);
  rig.warmUp();
  StereoBuffer audio = noise(48000);
  expectRealTime("fourteen modulators", [&] { rig.render(audio, 333); });
}

TEST(RealTime, TheLimiterAndItsChangesOfModeAskForNothing) {
  EngineRig rig;
  rig.warmUp();
  StereoBuffer audio = noise(9600);
  expectRealTime("in, through three modes, and out", [&] {
    for (const int mode : {1, 2, 3, 0, 2}) {
      rig.set(kLimiterOn, mode);
      rig.render(audio, 333);
    }
  });
}

TEST(RealTime, EveryMasterEffectItsKnobsAndItsChangesAskForNothing) {
  EngineRig rig;
  rig.set(kSlotOn, 1);
  rig.set(kMasterFxSend, 100);
  rig.warmUp();
  StereoBuffer audio = noise(3200);
  const auto setAndRender = [&](int paramIdx, double value) {
    rig.set(paramIdx, value);
    rig.render(audio, 333);
  };
  expectRealTime("all seven, from one straight to the next", [&] {
    for (const int choice : {1, 2, 3, 4, 5, 6, 7, 2, 1, 3, 0, 7}) {
      setAndRender(kMasterFx, choice);
      for (int knob = 0; knob < 4; ++knob) {
        for (const double value : {0.0, 100.0, 40.0}) setAndRender(kMasterFxParam + knob, value);
      }
      for (const int bypass : {1, 0}) setAndRender(kMasterFxBypass, bypass);
    }
  });
}

TEST(RealTime, AutomationOnTheAudioThreadAsksForNothing) {
  EngineRig rig;
  for (int slot = 0; slot < 4; ++slot) rig.set(kSlotOn + slot, 1);
  rig.warmUp();
  StereoBuffer audio = noise(64 * 1095);
  expectRealTime("every parameter to its ends and back", [&] {
    std::size_t at = 0;
    for (int index = 0; index < kNumParams; ++index) {
      IParam& param = *rig.effect.GetParam(index);
      const double before = param.getNormalized();
      param.setNormalized(before < 0.5 ? 1.0 : 0.0);
      rig.effect.OnParamChange(index);
      rig.block(audio, at, 64);
      at += 64;
      param.setNormalized(before);
      rig.effect.OnParamChange(index);
    }
  });
}

TEST(RealTime, BlocksThatAreNotFiniteAskForNothing) {
  EngineRig rig;
  rig.warmUp();
  StereoBuffer audio(4800);
  audio.left.assign(audio.size(), std::nan(""));
  audio.right.assign(audio.size(), 1e300);
  expectRealTime("NaN and huge input", [&] { rig.render(audio, 480); });
}

}  // namespace
}  // namespace orvantesco
