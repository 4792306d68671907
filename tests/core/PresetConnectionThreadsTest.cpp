// The preset library in several instances and on several threads at once.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <thread>
#include <utility>

#include "core/LibraryRig.h"
#include "presets/HostState.h"

namespace orvantesco {
namespace {

using PresetConnectionThreads = LibraryRig;

/// Steps on and counts how often what is in the engine is not what was selected.
int strayedSteps(LibraryInstance& instance, int steps) {
  const std::map<std::string, double> feedbackOf{
      {"/User Presets/A", 11.0}, {"/User Presets/Deep/B", 22.0}, {"/Factory Presets/C", 33.0}};
  int strayed = 0;
  for (int i = 0; i < steps; ++i) {
    instance.step(i % 4 != 3);
    const std::string path = instance.selected();
    const auto known = feedbackOf.find(path);
    const bool isRight =
        known != feedbackOf.end() && instance.feedback() == known->second &&
        instance.rig.effect.settings().presetName() == path.substr(path.size() - 1);
    if (!isRight) ++strayed;
  }
  return strayed;
}

TEST_F(PresetConnectionThreads, TwoInstancesThatLoadAtOnceDoNotDisturbEachOther) {
  LibraryInstance one(library);
  LibraryInstance other(library);
  one.step();  // so that they load different presets
  int strayedOther = 0;
  std::thread editor([&] { strayedOther = strayedSteps(other, 30); });
  EXPECT_EQ(strayedSteps(one, 30), 0);
  editor.join();
  EXPECT_EQ(strayedOther, 0);
}

/// Lets another thread work between the reading of a preset and its application, which shows the
/// name once more.
class BetweenReadAndApply : public EditorPort {
 public:
  explicit BetweenReadAndApply(std::function<void()> work) : other(std::move(work)) {}
  void showPresetName(std::string_view) noexcept override {
    if (!std::exchange(hasWorked, true)) std::thread(other).join();
  }

 private:
  bool hasWorked = false;
  std::function<void()> other;
};

TEST_F(PresetConnectionThreads, WhatAnInstanceHasReadIsItsOwn) {
  LibraryInstance one(library);
  LibraryInstance other(library);
  one.step();
  BetweenReadAndApply pause([&] { other.step(); });
  one.rig.effect.setEditor(&pause);
  one.step();
  EXPECT_EQ(one.feedback(), 22.0);
  EXPECT_EQ(other.feedback(), 11.0);
}

TEST_F(PresetConnectionThreads, AnInstanceSavesWhileItsHostRestores) {
  LibraryInstance one(library);
  one.setFeedback(44.0);
  const StateChunk chunk = one.state();
  std::atomic<bool> stop{false};
  std::thread host([&] {
    while (!stop) one.rig.effect.UnserializeState(chunk, 0);
  });
  std::vector<std::string> texts;
  for (int i = 0; i < 10; ++i) {
    one.step();
    one.saveAs(tree.full("/User Presets/Saved.txt"));
    texts.push_back(tree.content("/User Presets/Saved.txt"));
  }
  stop = true;
  host.join();
  EXPECT_FALSE(one.wasTold(PresetMessage::cannotWrite));
  const std::set<std::string> known{"Feedback1 11\n", "Feedback1 22\n", "Feedback1 33\n",
                                    "Feedback1 44\n"};
  for (const std::string& text : texts) {
    const std::string values = text.substr(text.find("EParams:\n") + 9);
    EXPECT_TRUE(known.contains(values)) << "of the state or of a preset: " << values;
  }
}

/// Whether a saved state is of one piece: selection, name and values of the same preset.
bool isOfOnePreset(const StateChunk& chunk) {
  const auto reading = readHostState(chunk, 0);
  if (!reading || reading->end != chunk.size()) return false;
  const HostState& state = reading->state;
  const std::map<std::string, std::pair<double, std::string>> known{
      {"A", {11.0, "/User Presets/"}},
      {"B", {22.0, "/User Presets/Deep/"}},
      {"C", {33.0, "/User Presets/"}}};  // both trees share the root of the menu
  const auto found = known.find(state.presetName);
  return found != known.end() && state.parameters[kFeedback] == found->second.first &&
         state.presetFolderPath == found->second.second;
}

TEST_F(PresetConnectionThreads, PresetsAreSteppedThroughWhileAudioPlaysAndTheHostSaves) {
  LibraryInstance one(library);
  one.step();
  std::atomic<bool> done{false};
  bool isFinite = true;
  std::thread audio([&] {
    while (!done) {
      StereoBuffer buffer = noise(256);
      one.rig.block(buffer, 0, 256);
      for (const double sample : buffer.left) isFinite = isFinite && std::isfinite(sample);
    }
  });
  std::thread editor([&] {
    for (int i = 0; i < 12; ++i) one.step(i % 4 != 3);
    done = true;
  });
  int mixed = 0;
  do {
    if (!isOfOnePreset(one.state())) ++mixed;
  } while (!done);
  editor.join();
  audio.join();
  EXPECT_EQ(mixed, 0);
  EXPECT_TRUE(isFinite);
}

}  // namespace
}  // namespace orvantesco
