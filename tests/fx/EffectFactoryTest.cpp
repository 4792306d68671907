#include "fx/EffectFactory.h"

#include <gtest/gtest.h>

#include <set>

#include "fx/BiquadFixture.h"
#include "fx/Comb.h"
#include "fx/Compressor.h"
#include "fx/EffectCatalogue.h"
#include "fx/PhaseFilter.h"
#include "fx/PhaserC.h"

namespace orvantesco {
namespace {

TEST(EffectFactory, buildsWhatItSaysExists) {
  for (int id = -2; id < 80; ++id) {
    EXPECT_EQ(createEffect(id, false, nullptr) != nullptr, effectExists(id)) << id;
  }
}

TEST(EffectFactory, offAndTheGapsBuildNothing) {
  const std::set<int> effects{1,  2,  3,  4,  5,  6,  7,  14, 15, 16, 17, 18, 19, 20, 21,
                              22, 23, 24, 29, 30, 31, 32, 33, 34, 35, 36, 37, 56, 57};
  for (int id = -1; id < 80; ++id) {
    EXPECT_EQ(createEffect(id, false, nullptr) != nullptr, effects.contains(id)) << id;
  }
}

TEST(EffectFactory, buildsTheFiltersInTheirModes) {
  const std::tuple<int, int, int> expected[] = {
      {30, 16, 4}, {31, 0, 1}, {32, 25, 1}, {33, 10, 2}, {36, 21, 3}};
  for (auto [id, mode, stages] : expected) {
    const auto effect = createEffect(id, false, nullptr);
    const auto* filter = dynamic_cast<IppBiquad*>(effect.get());
    ASSERT_NE(filter, nullptr) << id;
    EXPECT_EQ(filter->filterMode(), mode);
    EXPECT_EQ(filter->stageCount(), stages);
  }
}

template <class Block>
bool builds(int id) {
  return dynamic_cast<Block*>(createEffect(id, false, nullptr).get()) != nullptr;
}

TEST(EffectFactory, buildsPhaserCombPhaseFilterAndCompressor) {
  EXPECT_TRUE(builds<PhaserC>(3));
  EXPECT_TRUE(builds<PhaseFilter>(34));
  EXPECT_TRUE(builds<Comb>(35));
  EXPECT_TRUE(builds<Compressor>(37));
  const auto filter = createEffect(34, false, nullptr);
  EXPECT_EQ(dynamic_cast<PhaseFilter&>(*filter).stageCount(), 5);
}

TEST(EffectFactory, theChannelsMoveApart) {
  const auto left = createEffect(31, false, nullptr);
  const auto right = createEffect(31, true, nullptr);
  for (const auto& effect : {left, right}) {
    effect->setParam(0, 0.5);
    effect->setParam(2, 0.5);
  }
  const double upper = 50.0 * std::pow(400.0, 0.75);
  EXPECT_GT(testing_support::responseDb(*left, upper),
            testing_support::responseDb(*right, upper) + 20.0);
}

TEST(EffectFactory, aRightRingModulatorKnowsItsLeftOne) {
  const auto left = createEffect(2, false, nullptr);
  const auto right = createEffect(2, true, left.get());
  const auto settle = [&](double spread) {
    testing_support::Signal l(3200, 1.0), r = l;
    for (const auto& effect : {left, right}) effect->setParam(0, 0.8);
    for (const auto& effect : {left, right}) effect->setParam(3, spread);
    for (size_t at = 0; at < l.size(); at += kVectorLength) {
      left->process(&l[at], nullptr);
      right->process(&r[at], nullptr);
    }
    return std::fabs(l.back() - r.back());
  };
  EXPECT_GT(settle(0.5), 0.1);
  EXPECT_LT(settle(0.0), 1e-12);
}

TEST(EffectFactory, onlyTheStereoPitchShifterHasACoarseKnobForEachChannel) {
  for (int id : {4, 5}) {
    const auto right = createEffect(id, true, nullptr);
    right->setParam(0, 1.0);
    right->setParam(2, 10.0);
    const auto still = createEffect(id, true, nullptr);
    still->setParam(2, 10.0);
    const auto in = testing_support::noise(100);
    const bool moved = testing_support::run(*right, in) != testing_support::run(*still, in);
    EXPECT_EQ(moved, id == 4);
  }
}

}  // namespace
}  // namespace orvantesco
