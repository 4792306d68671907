// Loads of presets and states ask nothing of the audio thread that plays through them.

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>

#include "realtime/AudioThreadGuard.h"
#include "support/EngineRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

struct Asked {
  int allocations = 0, frees = 0, locks = 0;
  bool nothing() const { return allocations == 0 && frees == 0 && locks == 0; }
};

TEST(BulkRealTime, BlocksAskForNothingWhileStatesAndPresetsAreLoaded) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  EngineRig rig;
  rig.warmUp();
  std::mt19937 draw(41);
  std::vector<StateBytes> states;
  for (int i = 0; i < 4; ++i) states.push_back(randomState(draw));
  std::atomic<bool> done{false};
  std::thread loading([&] {
    for (int round = 0; round < 12; ++round) {
      const StateChunk chunk = states[static_cast<std::size_t>(round % 4)].chunk();
      rig.effect.UnserializeState(chunk, 0);
      rig.effect.settings().applyPreset(rig.effect.settings().currentPreset());
    }
    done = true;
  });
  StereoBuffer audio = noise(256);
  int blocks = 0;
  Asked asked;
  {
    const AudioThreadGuard guard;
    for (; !done.load() || blocks < 100; ++blocks) rig.block(audio, 0, 256);
    asked = {guard.allocations(), guard.frees(), guard.locks()};
  }
  loading.join();
  EXPECT_TRUE(asked.nothing()) << asked.allocations << " allocations, " << asked.frees << " frees, "
                               << asked.locks << " locks in " << blocks << " blocks";
}

TEST(BulkRealTime, TheFirstBlocksBehindALoadAskForNothing) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  EngineRig rig;
  rig.warmUp();
  std::mt19937 draw(42);
  StereoBuffer audio = noise(4800);
  for (int round = 0; round < 10; ++round) {
    rig.effect.UnserializeState(randomState(draw).chunk(), 0);
    Asked asked;
    {
      const AudioThreadGuard guard;
      rig.render(audio, 480);
      asked = {guard.allocations(), guard.frees(), guard.locks()};
    }
    EXPECT_TRUE(asked.nothing()) << "round " << round;
  }
}

}  // namespace
}  // namespace orvantesco
