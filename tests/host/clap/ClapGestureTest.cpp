// What the plug-in tells the host of its own accord.

#include <gtest/gtest.h>

#include <cmath>

#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

Orvantesco& effectOf(const ClapInstance& instance) {
  return ClapPlugin::behind(instance.plugin)->parts()->effect;
}

void turnKnob(Orvantesco& effect, int index, double position) {
  effect.BeginInformHostOfParamChange(index);
  effect.SetParameterFromGUI(index, position);
  effect.EndInformHostOfParamChange(index);
}

TEST(ClapGesture, AHandOnAKnobReachesTheHostWhole) {
  ClapInstance instance;
  turnKnob(effectOf(instance), kFeedback, 0.3);
  EXPECT_GT(instance.host.flushRequests, 0);
  instance.flush();
  ASSERT_EQ(instance.out.told.size(), 3u);
  EXPECT_EQ(instance.out.told[0].type, CLAP_EVENT_PARAM_GESTURE_BEGIN);
  EXPECT_EQ(instance.out.told[1].type, CLAP_EVENT_PARAM_VALUE);
  EXPECT_EQ(instance.out.told[1].value, 0.3);
  EXPECT_EQ(instance.out.told[2].type, CLAP_EVENT_PARAM_GESTURE_END);
  for (const auto& told : instance.out.told) EXPECT_EQ(told.id, kFeedback);
  EXPECT_EQ(instance.value(kFeedback), 0.3);
}

TEST(ClapGesture, AStepIsToldAsItsNumber) {
  ClapInstance instance;
  turnKnob(effectOf(instance), kDelayMode, 1.0);
  instance.flush();
  ASSERT_GE(instance.out.told.size(), 2u);
  EXPECT_EQ(instance.out.told[1].value, 3.0);
}

TEST(ClapGesture, ABlockOfAudioFetchesItToo) {
  ClapInstance instance;
  instance.start();
  turnKnob(effectOf(instance), kFeedback, 0.3);
  throughClap(instance, StereoBuffer(64), {});
  EXPECT_EQ(instance.out.told.size(), 3u);
}

TEST(ClapGesture, WhatTheHostDoesNotTakeNowItGetsLater) {
  ClapInstance instance;
  instance.out.room = 2;
  turnKnob(effectOf(instance), kFeedback, 0.3);
  const int requests = instance.host.flushRequests;
  instance.flush();
  EXPECT_EQ(instance.out.told.size(), 2u);
  EXPECT_EQ(instance.host.flushRequests, requests + 1);
  instance.out.room = 100;
  instance.flush();
  ASSERT_EQ(instance.out.told.size(), 3u);
  EXPECT_EQ(instance.out.told[2].type, CLAP_EVENT_PARAM_GESTURE_END);
}

TEST(ClapGesture, WhatAnActiveHostDoesNotTakeWakesIt) {
  ClapInstance instance;
  instance.start();
  turnKnob(effectOf(instance), kFeedback, 0.3);
  const int requests = instance.host.flushRequests;
  instance.out.room = 2;
  instance.flush();
  EXPECT_EQ(instance.host.processRequests, 1);
  EXPECT_EQ(instance.host.flushRequests, requests);
}

/// Nothing is told back of what the host has moved itself, but for what follows from it.
TEST(ClapGesture, AutomationIsNotEchoedButItsConsequenceIs) {
  ClapInstance instance;
  instance.start();
  instance.in.value(0, kFeedback, 0.3);
  throughClap(instance, StereoBuffer(64), {});
  EXPECT_TRUE(instance.out.told.empty());
  const int requests = instance.host.flushRequests;
  instance.in.value(0, kLfoSync, 1.0);
  throughClap(instance, StereoBuffer(64), {});
  ASSERT_EQ(instance.out.told.size(), 1u);
  EXPECT_EQ(instance.out.told[0].id, kLfoRate);
  EXPECT_EQ(instance.out.told[0].flags, CLAP_EVENT_DONT_RECORD);
  EXPECT_EQ(instance.out.told[0].value, instance.value(kLfoRate));
  // Within a block no request is needed, nor allowed.
  EXPECT_EQ(instance.host.flushRequests, requests);
}

TEST(ClapGesture, AConsequenceIsToldAsItStandsWhenItIsTold) {
  ClapInstance instance;
  instance.start();
  instance.in.value(0, kLfoSync, 1.0);
  instance.in.value(1, kLfoRate, 0.9);
  throughClap(instance, StereoBuffer(64), {});
  ASSERT_EQ(instance.out.told.size(), 1u);
  EXPECT_EQ(instance.out.told[0].value, instance.value(kLfoRate));
}

TEST(ClapGesture, AConsequenceThatComesOftenIsToldOnceABlock) {
  ClapInstance instance;
  instance.start();
  for (std::uint32_t i = 0; i < 3000; ++i) instance.in.value(i / 50, kLfoSync + 1, i % 2);
  for (int lfo = 0; lfo < 4; ++lfo) instance.in.value(63, kLfoSync + lfo, 1.0);
  throughClap(instance, StereoBuffer(64), {});
  ASSERT_EQ(instance.out.told.size(), 4u);
  for (clap_id lfo = 0; lfo < 4; ++lfo) {
    EXPECT_EQ(instance.out.told[lfo].id, kLfoRate + lfo);
    EXPECT_EQ(instance.out.told[lfo].value, instance.value(kLfoRate + lfo));
  }
  // Nothing was lost on the way that the host would have to read again.
  instance.runMainThread();
  EXPECT_FALSE(instance.host.rescanned & CLAP_PARAM_RESCAN_VALUES);
  throughClap(instance, StereoBuffer(64), {});
  EXPECT_EQ(instance.out.told.size(), 4u);
}

TEST(ClapGesture, ConsequencesThatTheHostDoesNotTakeNowItGetsLater) {
  ClapInstance instance;
  instance.out.room = 3;
  for (int lfo = 0; lfo < 4; ++lfo) instance.in.value(0, kLfoSync + lfo, 1.0);
  instance.flush();
  EXPECT_EQ(instance.out.told.size(), 3u);
  instance.out.room = 100;
  instance.flush();
  ASSERT_EQ(instance.out.told.size(), 4u);
  EXPECT_EQ(instance.out.told[3].id, kLfoRate + 3);
}

/// A hand moves what also followed: the host ends with the value that stands.
TEST(ClapGesture, AfterAHandTheConsequenceTellsNothingOlder) {
  ClapInstance instance;
  auto& effect = effectOf(instance);
  turnKnob(effect, kLfoSync, 1.0);
  turnKnob(effect, kLfoRate, 0.9);
  instance.flush();
  double last = -1.0;
  for (const auto& told : instance.out.told) {
    if (told.type == CLAP_EVENT_PARAM_VALUE && told.id == kLfoRate) last = told.value;
  }
  EXPECT_EQ(last, instance.value(kLfoRate));
}

TEST(ClapGesture, AHostThatNeverFetchesIsToldToReadAgain) {
  ClapInstance instance;
  effectOf(instance).BeginInformHostOfParamChange(kFeedback);
  for (int i = 0; i < 5000; ++i) {
    effectOf(instance).SetParameterFromGUI(kFeedback, i % 100 / 100.0);
  }
  effectOf(instance).EndInformHostOfParamChange(kFeedback);
  EXPECT_GT(instance.host.callbacks, 0);
  instance.plugin->on_main_thread(instance.plugin);
  EXPECT_TRUE(instance.host.rescanned & CLAP_PARAM_RESCAN_VALUES);
  instance.flush();
  ASSERT_FALSE(instance.out.told.empty());
  EXPECT_EQ(instance.out.told.back().type, CLAP_EVENT_PARAM_GESTURE_END);
}

/// Hands of which a full queue never told the host do not fill it with their ends.
TEST(ClapGesture, AnEndWithoutABeginningIsNotTold) {
  ClapInstance instance;
  auto& effect = effectOf(instance);
  effect.BeginInformHostOfParamChange(kFeedback);
  for (int i = 0; i < 5000; ++i) turnKnob(effect, kWetLevel, i % 100 / 100.0);
  effect.EndInformHostOfParamChange(kFeedback);
  instance.out.room = 10000;
  instance.flush();
  int begun = 0;
  int ended = 0;
  for (const auto& told : instance.out.told) {
    begun += told.type == CLAP_EVENT_PARAM_GESTURE_BEGIN ? 1 : 0;
    ended += told.type == CLAP_EVENT_PARAM_GESTURE_END ? 1 : 0;
  }
  EXPECT_GT(begun, 100);
  EXPECT_EQ(ended, begun);
  EXPECT_EQ(instance.out.told.back().id, kFeedback);
}

TEST(ClapGesture, ALoadIsToldAsOne) {
  ClapInstance instance;
  const auto state = instance.state();
  instance.flush();
  instance.out.told.clear();
  ASSERT_TRUE(instance.load(state));
  instance.flush();
  EXPECT_TRUE(instance.out.told.empty());
  EXPECT_TRUE(instance.host.rescanned & CLAP_PARAM_RESCAN_VALUES);
}

TEST(ChangeQueue, KeepsOrderAndContentAllTheWayRound) {
  ChangeQueue queue;
  int pushed = 0;
  int popped = 0;
  for (int round = 0; round < 500; ++round) {
    for (int i = 0; i < 17; ++i) {
      ASSERT_TRUE(queue.push({HostChange::Kind::value, pushed++, 0.5}));
    }
    while (const HostChange* change = queue.front()) {
      ASSERT_EQ(change->paramIdx, popped++);
      queue.pop();
    }
  }
  EXPECT_EQ(popped, pushed);
}

TEST(ChangeQueue, FullOfValuesItStillTakesEnds) {
  ChangeQueue queue;
  std::size_t values = 0;
  while (queue.push({HostChange::Kind::value, 1, 0.5})) ++values;
  EXPECT_EQ(values, ChangeQueue::roomForValues);
  std::size_t ends = 0;
  while (queue.push({HostChange::Kind::end, 1, 0.0})) ++ends;
  EXPECT_EQ(values + ends, ChangeQueue::capacity);
  queue.pop();
  EXPECT_TRUE(queue.push({HostChange::Kind::end, 1, 0.0}));
}

TEST(FollowedSet, TellsEachOnceAndKeepsWhatIsRefused) {
  FollowedSet set;
  EXPECT_TRUE(set.isEmpty());
  for (const int index : {1094, 0, 63, 64, 700, 64}) set.note(index);
  EXPECT_FALSE(set.note(700));
  std::vector<int> told;
  const auto upTo = [&told](std::size_t room) {
    return [&told, room](int index) {
      if (told.size() >= room) return false;
      told.push_back(index);
      return true;
    };
  };
  set.tellEach(upTo(3));
  EXPECT_EQ(told, (std::vector<int>{0, 63, 64}));
  EXPECT_FALSE(set.isEmpty());
  set.tellEach(upTo(100));
  EXPECT_EQ(told, (std::vector<int>{0, 63, 64, 700, 1094}));
  EXPECT_TRUE(set.isEmpty());
  set.tellEach(upTo(100));
  EXPECT_EQ(told.size(), 5u);
  EXPECT_TRUE(set.note(64));
}

}  // namespace
}  // namespace orvantesco
