// A dispatch asks nothing of the heap and takes no lock, whoever moves the parameter.

#include <gtest/gtest.h>

#include "params/ParamIndex.h"
#include "realtime/AudioThreadGuard.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

struct Asked {
  int allocations = 0, frees = 0, locks = 0;
};

/// Moves every parameter through its range, with the user's hand on it.
Asked moveEverything(EngineRig& rig) {
  Asked asked;
  const AudioThreadGuard guard;
  for (int index = 0; index < kNumParams; ++index) {
    rig.effect.touchParameter(index);
    for (const double place : {0.0, 0.3, 0.77, 1.0}) {
      rig.effect.GetParam(index)->setNormalized(place);
      rig.effect.OnParamChange(index);
    }
  }
  asked = {guard.allocations(), guard.frees(), guard.locks()};
  return asked;
}

TEST(DispatchRealTime, MovingEveryParameterAsksForNothing) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  EditorPort editor;
  EngineRig rig;
  rig.effect.setEditor(&editor);
  const Asked asked = moveEverything(rig);
  EXPECT_EQ(asked.allocations, 0);
  EXPECT_EQ(asked.frees, 0);
  EXPECT_EQ(asked.locks, 0);
}

/// An editor in whose selectors the user keeps choosing.
class ChoosingEditor : public EditorPort {
 public:
  bool hasCommittedGesture(int) noexcept override { return true; }
};

TEST(DispatchRealTime, OnlyAChangeOfEffectTypeAsksForMemory) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  ChoosingEditor editor;
  EngineRig rig;
  rig.effect.setEditor(&editor);
  rig.effect.GetParam(kFxTypePre)->setValue(16);
  const AudioThreadGuard guard;
  rig.effect.OnParamChange(kFxTypePre);
  EXPECT_GT(guard.allocations(), 0);
  EXPECT_GT(guard.locks(), 0);
}

}  // namespace
}  // namespace orvantesco
