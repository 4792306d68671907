#include <gtest/gtest.h>

#include <new>

#include "params/AllocationCount.h"
#include "params/ParamBank.h"

namespace orvantesco {
namespace {

TEST(IParamRealTime, NothingThatMayRunOnTheAudioThreadAllocates) {
  ParamBank bank;
  bank.buildParameterBank();
  IParam& rate = *bank.getParam(kLfoRate);
  IParam& selector = *bank.getParam(kTapFxParam1);
  char text[paramTextSize];

  const long before = allocationsOfThread();
  for (int i = 0; i < 100; ++i) {
    bank.setLfoRateInNotes(0, i % 2 == 0);
    rate.setNormalized(i * 0.01);
    rate.setValue(rate.value() + rate.getNormalized());
    rate.setShape(rate.shape());
    rate.formatValue(0.3, true, text);
    selector.replaceDisplayText(1, "PITCH COARSE");
    selector.formatValue(1.0, false, text);
    ASSERT_NE(selector.getDisplayText(1), nullptr);
    ASSERT_NE(rate.shownLabel(1.0), nullptr);
  }
  EXPECT_EQ(allocationsOfThread(), before);
}

TEST(IParamRealTime, TheCounterSeesAnAllocation) {
  const long before = allocationsOfThread();
  void* const memory = ::operator new(8);  // a new-expression may be optimised away
  EXPECT_EQ(allocationsOfThread(), before + 1);
  ::operator delete(memory);
}

}  // namespace
}  // namespace orvantesco
