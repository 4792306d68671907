#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "host/OfflineHost.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Vst3Host.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

/// An effect with settings that no float holds.
std::string unusualState() {
  OfflineHost host;
  Orvantesco effect(host);
  const auto set = [&effect](int index, double value) {
    effect.GetParam(index)->setValue(value);
    effect.OnParamChange(index);
  };
  set(kFeedback, 100.0 / 3.0);
  set(kFeedback + 1, 12.3456789012345);
  set(kSlotOn + 2, 1.0);
  set(kLevel, -7.1);
  return stateText(effect);
}

double feedbackIn(const std::string& state) {
  OfflineHost host;
  Orvantesco effect(host);
  EXPECT_TRUE(restoreStateText(effect, state.c_str()));
  return effect.GetParam(kFeedback)->value();
}

/// Numbers have a comma for as long as it lives.
class CommaLocale {
 public:
  CommaLocale() {
    ::setenv("LOCPATH", ORVANTESCO_TEST_LOCALES, 1);
    EXPECT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  }
  ~CommaLocale() { std::setlocale(LC_NUMERIC, "C"); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
};

TEST(Vst3State, KeepsValuesThatNoFloatHolds) {
  const std::string text = unusualState();
  Vst3Host first;
  ASSERT_TRUE(first.setState(vst3StreamOf(text)));
  const std::string session = first.state();
  Vst3Host second;
  ASSERT_TRUE(second.setState(session));
  EXPECT_EQ(vst3StateTextIn(second.state()), text);
  EXPECT_EQ(feedbackIn(vst3StateTextIn(session)), 100.0 / 3.0);
}

TEST(Vst3State, PassesStreamsThatMoveAFewBytesAtOnce) {
  Vst3Host first;
  ASSERT_TRUE(first.setState(vst3StreamOf(unusualState())));
  const std::string session = first.state();
  EXPECT_EQ(first.state(7), session);
  EXPECT_EQ(first.state(4096), session);
  Vst3Host second;
  ASSERT_TRUE(second.setState(session, {13}));
  EXPECT_EQ(second.state(), session);
}

/// What an earlier, longer read has left behind the bytes of a shorter one says nothing: the first
/// words of a stream end at bytes 19 and 25.
TEST(Vst3State, ComesThroughReadsOfChangingLengths) {
  Vst3Host first;
  ASSERT_TRUE(first.setState(vst3StreamOf(unusualState())));
  const std::string session = first.state();
  for (const std::vector<std::int32_t>& lengths :
       {std::vector<std::int32_t>{511, 19, 25, 200}, {511, 13, 1, 200}, {1}}) {
    Vst3Host second;
    ASSERT_TRUE(second.setState(session, lengths));
    EXPECT_TRUE(second.state() == session) << lengths[0];
  }
}

TEST(Vst3State, IsTheSameWhereNumbersHaveAComma) {
  Vst3Host first;
  ASSERT_TRUE(first.setState(vst3StreamOf(unusualState())));
  const std::string session = first.state();
  const CommaLocale comma;
  Vst3Host second;
  ASSERT_TRUE(second.setState(session));
  EXPECT_EQ(second.state(), session);
  EXPECT_NEAR(second.normalized(vst3IdOf(kFeedback)) * 160.0, 100.0 / 3.0, 1e-4);
}

TEST(Vst3State, ShowsItsParametersToTheHost) {
  Vst3Host host;
  ASSERT_TRUE(host.setState(vst3StreamOf(unusualState())));
  Vst3Host other;
  ASSERT_TRUE(other.setState(host.state()));
  EXPECT_NEAR(other.normalized(vst3IdOf(kFeedback + 1)) * 160.0, 12.3456789, 1e-4);
  EXPECT_EQ(other.normalized(vst3IdOf(kSlotOn + 2)), 1.0);
}

TEST(Vst3State, ShowsWhatAStreamWithoutAListOfValuesHolds) {
  Vst3Host host;
  ASSERT_TRUE(host.setState(vst3StreamOf(unusualState())));
  EXPECT_NEAR(host.normalized(vst3IdOf(kFeedback)) * 160.0, 100.0 / 3.0, 1e-4);
  EXPECT_EQ(host.normalized(vst3IdOf(kSlotOn + 2)), 1.0);
}

TEST(Vst3State, TellsNothingToAHostThatHandsItOver) {
  Vst3Host host;
  host.countRestarts();
  ASSERT_TRUE(host.setState(vst3StreamOf(unusualState())));
  ASSERT_TRUE(host.setState(host.state()));
  EXPECT_EQ(host.restarts, 0);
}

TEST(Vst3State, ThatCannotBeReadChangesNothing) {
  Vst3Host host;
  ASSERT_TRUE(host.setState(vst3StreamOf(unusualState())));
  const std::string before = host.state();
  const std::string whole = unusualState();
  const std::size_t inTheParameters = whole.size() / 2 / 4 * 4;
  for (const std::string& text :
       {std::string(), std::string("no base64!"), std::string("AAAA"), std::string("Zm9v"),
        std::string("/////w=="), whole.substr(0, 8), whole.substr(0, 64),
        whole.substr(0, inTheParameters), whole.substr(0, whole.size() - 4)}) {
    EXPECT_EQ(host.setState(vst3StreamOf(text)), text.empty());
    EXPECT_TRUE(host.state() == before) << text.size();
  }
}

/// The list of values behind the text is the same settings once more, to the rounding of floats.
TEST(Vst3State, ThatCannotBeReadLeavesItsListOfValuesAsideToo) {
  Vst3Host saved;
  ASSERT_TRUE(saved.setState(vst3StreamOf(unusualState())));
  std::string session = saved.state();
  const std::string text = vst3StateTextIn(session);
  session.replace(session.find(text), text.size(), text.substr(0, text.size() - 4));
  Vst3Host host;
  const std::string before = host.state();
  EXPECT_FALSE(host.setState(session));
  EXPECT_TRUE(host.state() == before);
}

TEST(Vst3State, WithoutATextIsItsListOfValues) {
  Vst3Host saved;
  ASSERT_TRUE(saved.setState(vst3StreamOf(unusualState())));
  std::string session = saved.state();
  const std::string text = vst3StateTextIn(session);
  session.erase(session.find(text), text.size());
  Vst3Host host;
  EXPECT_TRUE(host.setState(session));
  EXPECT_NEAR(host.normalized(vst3IdOf(kFeedback)) * 160.0, 100.0 / 3.0, 1e-4);
}

}  // namespace
}  // namespace orvantesco
