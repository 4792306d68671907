// Slots that listen to the master effect and lead back into it: whether such a circle is closed,
// and that a closed one of any gain stays bounded and lets go.

#include <gtest/gtest.h>

#include "core/MasterEffectScale.h"
#include "fx/Runaway.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr int kFromMasterFx = 4;  // "MASTER-FX" in every menu of inputs
constexpr int kFromSlot1 = 5;

double largest(const StereoBuffer& audio) {
  double highest = 0.0;
  for (const std::vector<double>* channel : {&audio.left, &audio.right}) {
    for (const double x : *channel) {
      if (!std::isfinite(x)) return HUGE_VAL;
      highest = std::max(highest, std::fabs(x));
    }
  }
  return highest;
}

double largest(const StereoVector& vector) {
  double highest = 0.0;
  for (const AudioVector* channel : {&vector.left, &vector.right}) {
    for (const double x : *channel) {
      highest = std::fabs(x) <= highest ? highest : std::fabs(x);
      if (!std::isfinite(x)) return HUGE_VAL;
    }
  }
  return highest;
}

/// Slot 1 listens to the master effect, slot 2 to slot 1, slot 3 to the host; 2 and 3 send. No
/// delays, so that the circle turns once in every sub-block, with 24 dB of gain in the slots.
struct CircleRig : EngineRig {
  CircleRig(int menuPosition, bool bypass) {
    for (int slot = 0; slot < 3; ++slot) {
      set(kSlotOn + slot, 1);
      set(kDelayOn + slot, 0);
      set(kInputGain + slot, slot < 2 ? 12.0 : 0.0);
    }
    set(kMasterFxSource + 1, kStageInput);
    set(kMasterFxSource + 2, kStageInput);
    set(kMasterFxSend + 1, 100.0);
    set(kMasterFxSend + 2, 100.0);
    set(kInput, kFromMasterFx);
    set(kInput + 1, kFromSlot1);
    set(kMasterFxBypass, bypass ? 1 : 0);
    set(kMasterFx, menuPosition);
    warmUp(0.5);
  }

  /// A new choice takes the direct out of a slot that listens to the master effect into use.
  void closeCircle() {
    set(kDirectOut, 0);
    set(kInput + 1, kFromSlot1);
  }

  /// Takes the send of slot 2 and the input of slot 3 out, and what still sounds.
  void openCircle() {
    set(kMasterFxSend + 1, 0.0);
    set(kMasterFxSend + 2, 0.0);
    set(kMasterFx, kMasterOff);
    set(kMasterFxBypass, 1);
    set(kMasterFx, kMasterRoom);
    warmUp(0.5);
  }

  /// The largest value that the master effect has given back, and that the host has got.
  struct Heights {
    double returned = 0.0;
    double heard = 0.0;
  };

  Heights run(StereoBuffer audio) {
    Heights heights;
    for (std::size_t at = 0; at < audio.size(); at += kVectorLength) {
      block(audio, at, kVectorLength);
      heights.returned = std::max(heights.returned, largest(probe.buses().masterReturn));
    }
    heights.heard = largest(audio);
    return heights;
  }

  OrvantescoProbe probe{effect};
};

TEST(MasterEffectLoop, ASlotThatListensGivesNothingToLaterSlotsAndSendsNothing) {
  CircleRig rig(kMasterRoom, true), alone(kMasterRoom, true);
  rig.set(kMasterFxSend, 100.0);
  for (const int slot : {0, 1}) alone.set(kSlotOn + slot, 0);
  const CircleRig::Heights heights = rig.run(noise(9600, 0.1));
  EXPECT_EQ(heights.returned, alone.run(noise(9600, 0.1)).returned);
  EXPECT_GT(largest(rig.probe.engineSlot(0).stage[kStageInput]), 0.01);
  EXPECT_EQ(largest(rig.probe.engineSlot(1).stage[kStageInput]), 0.0);
}

TEST(MasterEffectLoop, WhenItIsClosedItGrowsNoFurtherThanTheGuard) {
  for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
    for (const bool bypass : {false, true}) {
      CircleRig rig(menuPosition, bypass);
      rig.closeCircle();
      const CircleRig::Heights heights = rig.run(noise(96000, 0.1));
      const auto what = testing::Message() << menuPosition << (bypass ? " bypassed" : "");
      EXPECT_LE(heights.returned, kRunawayLimit) << what;
      EXPECT_TRUE(std::isfinite(heights.heard)) << what;
      EXPECT_GT(heights.returned, bypass ? 1e4 : 0.1) << what;
    }
  }
}

TEST(MasterEffectLoop, WhatHasRunAwayIsGoneOnceTheCircleIsOpened) {
  for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
    for (const bool bypass : {false, true}) {
      CircleRig rig(menuPosition, bypass);
      rig.closeCircle();
      rig.run(noise(48000, 0.1));
      rig.openCircle();
      const CircleRig::Heights heights = rig.run(noise(9600, 0.1));
      EXPECT_LT(heights.returned, 1e-6) << menuPosition << bypass;
      EXPECT_LT(heights.heard, 1.0) << menuPosition << bypass;
      EXPECT_GT(heights.heard, 0.01) << menuPosition << bypass;
    }
  }
}

TEST(MasterEffectLoop, ThroughTheFeedbackMatrixIsHeldByTheSlotsOwnLimit) {
  // Slot 1 sends; slot 2 hears the return; the matrix leads slot 2 back into the delay of slot 1.
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
  for (int slot = 0; slot < 2; ++slot) {
    rig.set(kSlotOn + slot, 1);
    rig.set(kInputGain + slot, 12.0);
    rig.set(kFeedback + slot, 160.0);
  }
  rig.set(kFbMatrix, 1);
  rig.set(slotFbIndex(1, 0), 100.0);
  rig.set(kMasterFxSource, kStagePost);
  rig.set(kMasterFxSend, 100.0);
  rig.set(kInput + 1, kFromMasterFx);
  rig.set(kMasterFxParam, 100.0);
  rig.set(kMasterFx, kMasterReverb);
  StereoBuffer burst = noise(480000, 1.0);
  std::fill(burst.left.begin() + 9600, burst.left.end(), 0.0);
  std::fill(burst.right.begin() + 9600, burst.right.end(), 0.0);
  rig.render(burst);
  EXPECT_LT(largest(burst), 1000.0);
  EXPECT_GT(largest(probe.buses().masterReturn), 0.01) << "the circle goes on by itself";
}

}  // namespace
}  // namespace orvantesco
