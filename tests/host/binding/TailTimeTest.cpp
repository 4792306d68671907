#include "host/binding/TailTime.h"

#include <gtest/gtest.h>

#include <cmath>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

TEST(TailTime, IsInfiniteWhereALoopDoesNotFade) {
  EngineRig rig;
  rig.set(kFeedback, 99.0);
  EXPECT_TRUE(std::isfinite(tailSeconds(rig.effect)));
  rig.set(kFeedback, 100.0);
  EXPECT_TRUE(std::isinf(tailSeconds(rig.effect)));
}

TEST(TailTime, KnowsTheCircleBetweenSlots) {
  EngineRig rig;
  for (int slot = 0; slot < 2; ++slot) {
    rig.set(kSlotOn + slot, 1.0);
    rig.set(kFbMatrix + slot, 1.0);
    rig.set(kFeedback + slot, 100.0);
    rig.set(slotFbIndex(1 - slot, slot), 90.0);
  }
  EXPECT_TRUE(std::isfinite(tailSeconds(rig.effect)));
  rig.set(slotFbIndex(0, 1), 120.0 * 100.0 / 108.0);
  rig.set(kFeedback, 160.0);
  EXPECT_TRUE(std::isinf(tailSeconds(rig.effect)));
}

}  // namespace
}  // namespace orvantesco
