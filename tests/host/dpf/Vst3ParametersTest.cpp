// What sessions know a parameter of the VST3 by. A failure here means that they would lose it.

#include <gtest/gtest.h>

#include <string>

#include "host/dpf/Vst3Host.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

constexpr std::int32_t inFront = 1;  ///< the latency, which the wrapper adds

TEST(Vst3Parameters, KeepTheirIds) {
  Vst3Host host;
  ASSERT_EQ(host.parameterCount(), inFront + kNumParams + 1);
  for (std::int32_t index = 0; index < host.parameterCount(); ++index) {
    ASSERT_EQ(host.parameter(index).param_id, static_cast<v3_param_id>(index));
  }
  EXPECT_EQ(asciiOf(host.parameter(0).title), "Latency");
  EXPECT_EQ(asciiOf(host.parameter(inFront + kSlotOn).title), "SlotOn 1");
  EXPECT_EQ(asciiOf(host.parameter(inFront + kFeedback + 1).title), "Feedback 2");
  EXPECT_EQ(asciiOf(host.parameter(inFront + kLfoRate).title), "LFO Rate 1");
  EXPECT_EQ(asciiOf(host.parameter(inFront + kNumParams).title), "Bypass");
}

/// Sessions find the plug-in itself by this.
TEST(Vst3Parameters, BelongToAClassThatStaysTheSame) {
  EXPECT_EQ(vst3ClassOfBundle(), "2046504473616C634373564F00000000");
}

TEST(Vst3Parameters, MarkTheBypassAsOne) {
  Vst3Host host;
  const v3_param_info bypass = host.parameter(inFront + kNumParams);
  EXPECT_TRUE(bypass.flags & V3_PARAM_IS_BYPASS);
  EXPECT_EQ(bypass.step_count, 1);
}

TEST(Vst3Parameters, AreListsWhereTheyHaveLabels) {
  Vst3Host host;
  const v3_param_info directOut = host.parameter(inFront + kDirectOut);
  EXPECT_TRUE(directOut.flags & V3_PARAM_IS_LIST);
  EXPECT_EQ(directOut.step_count, 3);
  EXPECT_EQ(host.text(inFront + kSlotOn, 1.0), "ON");
  EXPECT_EQ(host.plain(inFront + kFeedback, 0.5), 80.0);
}

TEST(Vst3Parameters, BelongToAnEffectWithASideChain) {
  Vst3Host host;
  ASSERT_EQ(host.busCount(V3_INPUT), 2);
  ASSERT_EQ(host.busCount(V3_OUTPUT), 1);
  EXPECT_EQ(host.bus(V3_INPUT, 0).channel_count, 2);
  EXPECT_EQ(host.bus(V3_INPUT, 0).bus_type, V3_MAIN);
  EXPECT_EQ(host.bus(V3_INPUT, 1).channel_count, 1);
  EXPECT_EQ(host.bus(V3_INPUT, 1).bus_type, V3_AUX);
  EXPECT_EQ(host.bus(V3_OUTPUT, 0).channel_count, 2);
}

}  // namespace
}  // namespace orvantesco
