#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstring>
#include <thread>

#include "params/ParamBank.h"

namespace orvantesco {
namespace {

constexpr int readings = 500000;
constexpr double writtenValues[] = {0.5, 3.0, 250.0};

bool isOneOf(double value, std::span<const double> values) {
  return std::ranges::find(values, value) != values.end();
}

/// Name, range, curve and texts of one form, or of the other: never of both.
bool belongsTogether(const ParamForm& form) {
  if (std::strcmp(form.name.data(), "LFO Rate 1") == 0)
    return form.min == 0.001 && form.max == 500.0 && form.shape == 4.0 &&
           form.displayTexts.empty() && std::strcmp(form.label.data(), "Hz") == 0;
  return std::strcmp(form.name.data(), "LFO Sync 1") == 0 && form.min == 0.0 && form.max == 7.0 &&
         form.shape == 1.0 && form.displayTexts.size() == 8;
}

/// Calls `write` until each of two threads has called `read` often enough; true if every reading
/// was sound.
template <class Read, class Write>
bool holdsWhile(Read read, Write write) {
  std::atomic<int> reading{2};
  std::atomic<bool> sound{true};
  const auto readAll = [&] {
    for (int i = 0; i < readings; ++i)
      if (!read()) sound = false;
    --reading;
  };
  std::array readers{std::thread(readAll), std::thread(readAll)};
  for (int i = 0; reading > 0; i = (i + 1) % 6) write(i);
  for (std::thread& reader : readers) reader.join();
  return sound;
}

class IParamThreadTest : public testing::Test {
 protected:
  IParamThreadTest() { bank.buildParameterBank(); }
  ParamBank bank;
};

TEST_F(IParamThreadTest, AReaderNeverSeesHalfAChangeOfForm) {
  const IParam& rate = *bank.getParam(kLfoRate);
  EXPECT_TRUE(holdsWhile([&] { return belongsTogether(rate.form()); },
                         [&](int i) { bank.setLfoRateInNotes(0, i % 2 == 0); }));
}

TEST_F(IParamThreadTest, ATextIsThatOfOneFormOrTheOther) {
  const IParam& rate = *bank.getParam(kLfoRate);
  const auto read = [&] {
    char text[paramTextSize];
    rate.formatValue(3.0, false, text);
    return std::strcmp(text, "3.00") == 0 || std::strcmp(text, "1/2") == 0;
  };
  EXPECT_TRUE(holdsWhile(read, [&](int i) { bank.setLfoRateInNotes(0, i % 2 == 0); }));
}

TEST_F(IParamThreadTest, AValueIsOneThatWasWritten) {
  IParam& rate = *bank.getParam(kLfoRate);
  const auto read = [&] { return isOneOf(rate.value(), writtenValues); };
  EXPECT_TRUE(holdsWhile(read, [&](int i) { rate.setValue(writtenValues[i % 3]); }));
}

TEST_F(IParamThreadTest, AReplacedTextIsTheOldOneOrTheNewOne) {
  IParam& selector = *bank.getParam(kTapFxParam1);
  const auto read = [&] {
    char text[paramTextSize];
    selector.formatValue(2.0, false, text);
    return std::strcmp(text, "PARAMETER 2") == 0 || std::strcmp(text, "RINGMOD SHAPE") == 0;
  };
  const auto write = [&](int i) {
    selector.replaceDisplayText(2, i % 2 == 0 ? "RINGMOD SHAPE" : "PARAMETER 2");
  };
  EXPECT_TRUE(holdsWhile(read, write));
}

TEST_F(IParamThreadTest, AReplacedShapeIsTheOldOneOrTheNewOne) {
  IParam& value = *bank.getParam(kFxParam1);
  constexpr double expected[] = {50.0, 6.25};
  const auto read = [&] { return isOneOf(value.fromNormalized(0.5), expected); };
  EXPECT_TRUE(holdsWhile(read, [&](int i) { value.setShape(i % 2 == 0 ? 4.0 : 1.0); }));
}

TEST_F(IParamThreadTest, WritersOfEverythingMeetWithoutHarm) {
  IParam& rate = *bank.getParam(kLfoRate);
  const auto alsoWrite = [&] {
    rate.setNormalized(0.5);
    rate.replaceDisplayText(3, "1/2");
    bank.setLfoRateInNotes(0, true);
    return std::isfinite(rate.getNormalized());
  };
  EXPECT_TRUE(holdsWhile(alsoWrite, [&](int i) { bank.setLfoRateInNotes(0, i % 2 == 0); }));
}

}  // namespace
}  // namespace orvantesco
