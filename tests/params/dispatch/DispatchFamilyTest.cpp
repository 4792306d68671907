#include "params/dispatch/DispatchFamily.h"

#include <gtest/gtest.h>

#include <set>

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

TEST(DispatchFamily, EveryParameterHasOneButThoseThatDriveNothing) {
  std::set<int> silent{kNoOp, kBypass};
  for (int slot = 0; slot < 4; ++slot) {
    silent.insert({kDelayTimeLModDepth + slot, kDelayTimeLModSource + slot,
                   kDelayTimeRModDepth + slot, kDelayTimeRModSource + slot});
  }
  for (int index = 0; index < kNumParams; ++index) {
    const DispatchFamily* family = dispatchFamilyOf(index);
    ASSERT_EQ(family == nullptr, silent.count(index) == 1) << index;
    if (family == nullptr) continue;
    EXPECT_NE(family->apply, nullptr);
    EXPECT_GE(index, family->base);
    EXPECT_LT(index, family->base + family->count);
  }
}

TEST(DispatchFamily, NoTwoFamiliesShareAParameter) {
  std::vector<int> owners(kNumParams, 0);
  for (const auto& table :
       {slotFamilies, slotGainFamilies, effectFamilies, delayFamilies, delayTimeFamilies,
        tapFamilies, grainFamilies, laneFamilies, lfoFamilies, gateFamilies, envelopeFamilies,
        logicFamilies, masterFamilies, globalFamilies}) {
    for (const DispatchFamily& family : table) {
      for (int m = 0; m < family.count; ++m) ++owners[static_cast<std::size_t>(family.base + m)];
    }
  }
  EXPECT_EQ(*std::max_element(owners.begin(), owners.end()), 1);
}

TEST(DispatchFamily, BeyondTheBankThereIsNone) {
  EXPECT_EQ(dispatchFamilyOf(-1), nullptr);
  EXPECT_EQ(dispatchFamilyOf(kNumParams), nullptr);
}

}  // namespace
}  // namespace orvantesco
