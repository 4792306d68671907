#include "params/dispatch/ModulationSources.h"

#include <gtest/gtest.h>

#include "core/ModulatorOutputs.h"
#include "core/TriggerFlags.h"

namespace orvantesco {
namespace {

TEST(ModulationSources, FollowTheMenu) {
  const ModulatorOutputs out;
  const std::vector<const double*> expected{nullptr,
                                            out.lfo[0].data(),
                                            out.lfo[1].data(),
                                            out.lfo[2].data(),
                                            out.lfo[3].data(),
                                            out.gate[0].data(),
                                            out.gate[1].data(),
                                            out.gate[2].data(),
                                            out.gate[3].data(),
                                            out.envelope[0].data(),
                                            out.envelope[1].data(),
                                            out.logic[0].data(),
                                            out.logic[1].data(),
                                            out.logic[2].data(),
                                            out.logic[3].data()};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(sourcePointer(out, static_cast<int>(i)), expected[i]) << i;
  }
  EXPECT_EQ(sourcePointer(out, -1), nullptr);
  EXPECT_EQ(sourcePointer(out, 15), nullptr);
}

TEST(ModulationSources, ColoursFollowTheGroups) {
  using C = RingColour;
  const std::vector<C> expected{C::None,  C::Lfo,   C::Lfo,   C::Lfo,      C::Lfo,      C::Gate,
                                C::Gate,  C::Gate,  C::Gate,  C::Envelope, C::Envelope, C::Logic,
                                C::Logic, C::Logic, C::Logic, C::None};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(sourceColour(static_cast<int>(i)), expected[i]) << i;
  }
  EXPECT_EQ(sourceColour(-1), C::None);
}

TEST(ModulationSources, LfoTriggersFollowTheMenu) {
  const TriggerFlags f;
  const std::vector<const unsigned char*> expected{&f.off,
                                                   &f.quarterPulse,
                                                   &f.barPulse,
                                                   &f.twoBarPulse,
                                                   &f.envPulse[0],
                                                   &f.envPulse[1],
                                                   &f.gateLevelPulse[0],
                                                   &f.gateLevelPulse[1],
                                                   &f.gateLevelPulse[2],
                                                   &f.gateLevelPulse[3],
                                                   &f.gateStartPulse[0],
                                                   &f.gateStartPulse[1],
                                                   &f.gateStartPulse[2],
                                                   &f.gateStartPulse[3],
                                                   &f.off};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(lfoTrigger(f, static_cast<int>(i)), expected[i]) << i;
  }
}

TEST(ModulationSources, ReverseTriggersFollowTheMenu) {
  const TriggerFlags f;
  const std::vector<const unsigned char*> expected{&f.off, &f.barPulse, &f.envPulse[0],
                                                   &f.envPulse[1], &f.off};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(reverseTrigger(f, static_cast<int>(i)), expected[i]) << i;
  }
}

}  // namespace
}  // namespace orvantesco
