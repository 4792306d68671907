// When a host is asked to read the parameters' names and texts again.

#include <gtest/gtest.h>

#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

constexpr double kHz = 0.0;
constexpr double kStraight = 1.0;
constexpr double kTriplet = 3.0;

void send(ClapInstance& instance, int index, double value, std::uint32_t flags = 0) {
  instance.in.value(0, static_cast<clap_id>(index), value);
  instance.in.last().flags = flags;
  instance.flush();
}

/// How often the host was asked in a turn of its main thread.
int asked(ClapInstance& instance) {
  const int before = instance.host.rescans;
  instance.runMainThread();
  return instance.host.rescans - before;
}

TEST(ClapRescan, IsAskedForWhenARateTurnsFromHzToNotesAndBack) {
  ClapInstance instance;
  send(instance, kLfoSync, kStraight);
  EXPECT_EQ(asked(instance), 1);
  EXPECT_TRUE(instance.host.rescanned & CLAP_PARAM_RESCAN_TEXT);
  send(instance, kLfoSync, kHz);
  EXPECT_EQ(asked(instance), 1);
}

TEST(ClapRescan, IsNotAskedForWhereTheHostSeesTheSame) {
  ClapInstance instance;
  send(instance, kLfoSync, kStraight);
  ASSERT_EQ(asked(instance), 1);
  const int callbacks = instance.host.callbacks;
  const std::string text = instance.text(kLfoRate, 0.5);
  for (int i = 0; i < 101; ++i) send(instance, kLfoSync, i % 2 == 0 ? kTriplet : kStraight);
  EXPECT_EQ(asked(instance), 0);
  EXPECT_EQ(instance.host.callbacks, callbacks);
  EXPECT_EQ(instance.text(kLfoRate, 0.5), text);
}

TEST(ClapRescan, IsAskedForOnceForManyChanges) {
  ClapInstance instance;
  const int callbacks = instance.host.callbacks;
  for (int i = 0; i < 101; ++i) {
    for (int lfo = 0; lfo < 4; ++lfo) send(instance, kLfoSync + lfo, i % 2 == 0 ? kStraight : kHz);
  }
  EXPECT_EQ(instance.host.callbacks, callbacks + 1);
  EXPECT_EQ(asked(instance), 1);
  EXPECT_EQ(asked(instance), 0);
}

TEST(ClapRescan, EachRateIsWatchedByItself) {
  ClapInstance instance;
  send(instance, kLfoSync + 3, kStraight);
  EXPECT_EQ(asked(instance), 1);
  send(instance, kLfoSync + 2, kStraight);
  EXPECT_EQ(asked(instance), 1);
}

/// The load itself tells the host, once; what it brought is known from then on.
TEST(ClapRescan, AfterALoadOnlyWhatIsNewCounts) {
  ClapInstance one;
  send(one, kLfoSync, kStraight);
  ClapInstance other;
  const int before = other.host.rescans;
  ASSERT_TRUE(other.load(one.state()));
  EXPECT_EQ(other.host.rescans - before, 1);
  EXPECT_EQ(asked(other), 0);
  send(other, kLfoSync, kTriplet);
  EXPECT_EQ(asked(other), 0);
  send(other, kLfoSync, kHz);
  EXPECT_EQ(asked(other), 1);
}

/// Behind the delay, an effect's parameters are what the tap selectors offer.
TEST(ClapRescan, IsAskedForWhenAnEffectRenamesTheTapSelectors) {
  ClapInstance instance;
  const std::string plain = instance.text(kTapFxParam1, 1.0);
  send(instance, kFxTypePost, 14.0, CLAP_EVENT_IS_LIVE);
  instance.runMainThread();
  EXPECT_NE(instance.text(kTapFxParam1, 1.0), plain);
  EXPECT_EQ(asked(instance), 1);
  send(instance, kFxTypePre, 14.0, CLAP_EVENT_IS_LIVE);
  instance.runMainThread();
  EXPECT_EQ(asked(instance), 0);
}

}  // namespace
}  // namespace orvantesco
