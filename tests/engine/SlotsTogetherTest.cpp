// Several slots: what each hears of the others, and the matrix that leads back.

#include <gtest/gtest.h>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;
using model::slotName;

/// The slots given as on, each with times and a loop of its own, so that no two can be confused.
Settings slotsOn(const std::vector<int>& numbers) {
  Settings settings{{"Dry Level", 0}, {"Wet Level", 100}, {"Main ModDepth", 0}, {"SlotOn 1", 0}};
  for (int slot = 0; slot < 4; ++slot) {
    const double k = slot;
    settings[slotName("Input", slot)] = 3;
    settings[slotName("Timebase", slot)] = 0;
    settings[slotName("Delay TimeL", slot)] = 21.3 + 17.7 * k;
    settings[slotName("Delay TimeR", slot)] = 26.9 + 19.3 * k;
    settings[slotName("Feedback", slot)] = 25 + 5 * k;
    settings[slotName("Level", slot)] = -3 - k;
    settings[slotName("Panning", slot)] = 30 * k - 45;
    settings[slotName("Delay Lopass", slot)] = 9000 - 1500 * k;
  }
  for (const int number : numbers) settings[slotName("SlotOn", number - 1)] = 1;
  return settings;
}

void expectAgreement(const Settings& settings, const std::string& what, double minimumPeak = 0.02) {
  for (const double rate : kComparedRates) {
    SideBySide both({rate}, settings);
    const auto frames = static_cast<size_t>(0.5 * rate);
    EXPECT_LT(both.settledDifference(model::noise(frames, 11)), kAgreement) << what << " " << rate;
    EXPECT_GE(both.lastPeak, minimumPeak) << what << " " << rate;
  }
}

TEST(SlotsTogether, FourSlotsAddUp) { expectAgreement(slotsOn({1, 2, 3, 4}), "four"); }

/// Every choice of "Input n", with the listening slot alone on the output.
class InputChoice : public testing::TestWithParam<std::pair<int, int>> {};

TEST_P(InputChoice, HearsWhatItNames) {
  const auto [number, choice] = GetParam();
  Settings settings = slotsOn({1, 2, 3, 4});
  for (int slot = 0; slot < 4; ++slot)
    settings[slotName("Output Mode", slot)] = slot + 1 == number ? 0 : 2;
  settings[slotName("Input", number - 1)] = choice;
  expectAgreement(settings, "all on", choice == 4 ? 0.0 : 0.02);
}

std::vector<std::pair<int, int>> allInputChoices() {
  constexpr int kLast[] = {4, 5, 7, 11};
  std::vector<std::pair<int, int>> choices;
  for (int slot = 0; slot < 4; ++slot)
    for (int choice = 0; choice <= kLast[slot]; ++choice) choices.emplace_back(slot + 1, choice);
  return choices;
}

INSTANTIATE_TEST_SUITE_P(Slot, InputChoice, testing::ValuesIn(allInputChoices()),
                         [](const auto& test) {
                           return std::to_string(test.param.first) + "Value" +
                                  std::to_string(test.param.second);
                         });

TEST(SlotsTogether, SumsLeaveOutSlotsThatAreOff) {
  for (const int choice : {5, 6, 7, 8, 9, 10, 11}) {
    for (const std::vector<int>& on : {std::vector{2, 3, 4}, {1, 3, 4}, {1, 2, 4}, {3, 4}, {4}}) {
      Settings settings = slotsOn(on);
      settings["Input 4"] = choice;
      for (const char* name : {"Output Mode 1", "Output Mode 2", "Output Mode 3"})
        settings[name] = 2;
      expectAgreement(settings, "choice " + std::to_string(choice), 0.0);
    }
  }
}

TEST(SlotsTogether, SlotThatIsOffIsSilentToItsListener) {
  Settings settings = slotsOn({4});
  settings["Input 4"] = 11;
  SideBySide both({44100}, settings);
  EXPECT_LT(both.settledDifference(model::noise(20000, 3)), kAgreement);
  EXPECT_LT(both.lastPeak, 1e-12);
}

TEST(SlotsTogether, EveryDirectOutReachesTheNextSlot) {
  for (const int directOut : {0, 1, 2, 3}) {
    for (const int route : {0, 1, 6, 7, 8}) {
      Settings settings = slotsOn({1, 2});
      settings["Output Mode 1"] = 2;
      settings["Direct Out 1"] = directOut;
      settings["Direct In 1"] = 30;
      settings["Delay Route 1"] = route;
      settings["Input 2"] = 5;
      expectAgreement(settings, "direct out " + std::to_string(directOut));
    }
  }
}

TEST(SlotsTogether, DirectOutOfASlotWithoutDelay) {
  for (const int directOut : {0, 1, 2, 3}) {
    Settings settings = slotsOn({1, 2});
    settings["Output Mode 1"] = 2;
    settings["DelayOn 1"] = 0;
    settings["Direct Out 1"] = directOut;
    settings["Input 2"] = 5;
    expectAgreement(settings, std::to_string(directOut), directOut == 1 ? 0.0 : 0.02);
  }
}

TEST(SlotsTogether, SlotOnTheMasterReturnAddsNothingToTheSums) {
  Settings settings = slotsOn({1, 2, 4});
  settings["Input 1"] = 4;
  settings["Input 4"] = 8;
  settings["Output Mode 2"] = 2;
  expectAgreement(settings, "parked");
}

TEST(SlotsTogether, AChainOfAllFourSlots) {
  Settings settings = slotsOn({1, 2, 3, 4});
  settings["Input 2"] = 5;
  settings["Input 3"] = 6;
  settings["Input 4"] = 7;
  for (const char* name : {"Output Mode 1", "Output Mode 2", "Output Mode 3"}) settings[name] = 2;
  expectAgreement(settings, "chain", 0.001);
}

/// A matrix in which every slot hears every slot, with gains of both signs.
Settings fullMatrix() {
  Settings settings = slotsOn({1, 2, 3, 4});
  for (int to = 0; to < 4; ++to) {
    settings[slotName("FB Matrix", to)] = 1;
    settings[slotName("Feedback", to)] = 90;
    for (int from = 0; from < 4; ++from)
      settings[slotName("Slot" + std::to_string(from + 1) + " FB", to)] =
          10.0 + 17.0 * from - 13.0 * to;
  }
  return settings;
}

TEST(Matrix, EverySlotFeedsEverySlot) { expectAgreement(fullMatrix(), "full"); }

TEST(Matrix, OneReceiverAmongPlainLoops) {
  Settings settings = fullMatrix();
  for (const char* name : {"FB Matrix 1", "FB Matrix 3", "FB Matrix 4"}) settings[name] = 0;
  expectAgreement(settings, "one row");
}

TEST(Matrix, WithRoutesAndProportionalFeedback) {
  const Settings changes{
      {"Delay Route 1", 6}, {"Delay Route 2", 2}, {"Delay Route 3", 7}, {"FBProportional 4", 1}};
  expectAgreement(with(fullMatrix(), changes), "routes");
}

TEST(Matrix, LeavesOutSlotsThatAreOffAndDelaysThatAreOff) {
  expectAgreement(with(fullMatrix(), {{"SlotOn 2", 0}}), "slot off");
  expectAgreement(with(fullMatrix(), {{"DelayOn 3", 0}}), "delay off");
}

TEST(Matrix, StaysBoundedAtFullGains) {
  Settings settings = fullMatrix();
  for (int to = 0; to < 4; ++to) {
    settings[slotName("Feedback", to)] = 160;
    for (int from = 0; from < 4; ++from)
      settings[slotName("Slot" + std::to_string(from + 1) + " FB", to)] = 100;
  }
  EngineUnderTest engine({44100}, settings);
  const model::Signal out = engine.render(joined(model::noise(44100, 5), model::silence(88200)));
  EXPECT_LT(model::peak(out), 4 * 4 * 1.5 * 1.6);
  EXPECT_GT(model::peak(part(out, 100000, 132300)), 0.1) << "it sounds on";
}

}  // namespace
}  // namespace orvantesco
