// Changes arrive on several threads at once, one within another, and while audio runs.

#include <atomic>
#include <random>
#include <thread>

#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

/// An editor that answers a read-out by changing another parameter.
class MeddlingEditor : public RecordingEditor {
 public:
  explicit MeddlingEditor(EngineRig& answered) : rig(answered) {}
  void flashKnobValue(int paramIdx, std::string_view text, double seconds) noexcept override {
    if (paramIdx == kWidth) rig.set(kFeedback + 3, 120.0);
    RecordingEditor::flashKnobValue(paramIdx, text, seconds);
  }
  EngineRig& rig;
};

TEST(DispatchThreads, AChangeWithinAChangeLeavesTheOuterOneAlone) {
  EngineRig rig;
  MeddlingEditor editor(rig);
  rig.effect.setEditor(&editor);
  rig.effect.touchParameter(kWidth);
  rig.set(kWidth, 25.0);
  EXPECT_TRUE(editor.saw("showReadout 32 WIDTH|25.00| %||"));
  EXPECT_TRUE(editor.saw("flashKnobValue 32 25.00 0.08"));
  EXPECT_DOUBLE_EQ(OrvantescoProbe{rig.effect}.slot(3).feedback, 1.2);
}

/// Moves the parameters of a range to random places, `rounds` times, and last to `last`.
void stir(EngineRig& rig, int first, int end, unsigned seed) {
  std::minstd_rand draw(seed);
  for (int round = 0; round < 2000; ++round) {
    const int index = first + static_cast<int>(draw() % static_cast<unsigned>(end - first));
    rig.effect.GetParam(index)->setNormalized(static_cast<double>(draw() % 1000) / 999.0);
    rig.effect.OnParamChange(index);
  }
}

TEST(DispatchThreads, TwoControlThreadsAndTheAudioThreadWorkAtOnce) {
  EngineRig rig;
  RecordingEditor editor;
  rig.effect.setEditor(&editor);
  std::atomic<bool> done{false};
  bool finite = true;
  std::thread audio([&] {
    StereoBuffer buffer = noise(512);
    std::minstd_rand draw(3);
    while (!done.load()) {
      const int index = static_cast<int>(draw() % kNumParams);
      rig.effect.GetParam(index)->setNormalized(static_cast<double>(draw() % 1000) / 999.0);
      rig.effect.OnParamChange(index);
      rig.block(buffer, 0, 512);
      for (const double sample : buffer.left) finite = finite && std::isfinite(sample);
      buffer = noise(512);
    }
  });
  std::thread one([&] { stir(rig, 0, kNumParams, 1); });
  std::thread two([&] { stir(rig, 0, kNumParams, 2); });
  one.join();
  two.join();
  done = true;
  audio.join();
  EXPECT_TRUE(finite);
}

TEST(DispatchThreads, EffectsAreReplacedWhileTheyRun) {
  EngineRig rig;
  RecordingEditor editor;
  rig.effect.setEditor(&editor);
  for (int slot = 0; slot < 4; ++slot) rig.set(kSlotOn + slot, 1);
  for (int position = 0; position < 12; ++position) rig.set(kFxOnPre + position, 1);
  std::atomic<bool> done{false};
  bool finite = true;
  std::thread audio([&] {
    while (!done.load()) {
      StereoBuffer buffer = noise(256);
      rig.block(buffer, 0, 256);
      for (const double sample : buffer.right) finite = finite && std::isfinite(sample);
    }
  });
  std::thread values([&] { stir(rig, kFxParam1, kFxParam1 + 180, 5); });
  std::minstd_rand draw(7);
  for (int round = 0; round < 100; ++round) {
    const int position = static_cast<int>(draw() % 12);
    editor.committed[static_cast<std::size_t>(position)] = true;
    rig.set(kFxTypePre + position, static_cast<double>(draw() % 23));
  }
  values.join();
  done = true;
  audio.join();
  EXPECT_TRUE(finite);
}

TEST(DispatchThreads, NoChangeIsLostBetweenTwoThreads) {
  EngineRig rig;
  std::thread one([&] { stir(rig, kTapStepTime, kTapStepTime + 64, 1); });
  std::thread two([&] { stir(rig, kTapStepLevel, kTapStepLevel + 64, 2); });
  one.join();
  two.join();
  const OrvantescoProbe probe{rig.effect};
  for (int slot = 0; slot < 4; ++slot) {
    for (int step = 0; step < 16; ++step) {
      const auto s = static_cast<std::size_t>(step);
      const auto bank = [&](int lane) {
        return rig.effect.GetParam(tapStepIndex(lane, slot, step))->value() * 0.01;
      };
      EXPECT_DOUBLE_EQ(probe.taps(slot).timeStep[s], bank(kTapStepTime));
      EXPECT_DOUBLE_EQ(probe.taps(slot).levelStep[s], bank(kTapStepLevel));
    }
  }
}

}  // namespace
}  // namespace orvantesco
