// Presets and states are loaded and saved on several threads while audio plays.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <random>
#include <thread>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

/// Plays noise through an effect until it is told to stop.
class Player {
 public:
  explicit Player(EngineRig& played) : rig(played), thread([this] { play(); }) {}
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  ~Player() { stop(); }

  bool stop() {
    done = true;
    if (thread.joinable()) thread.join();
    return finite;
  }

 private:
  void play() {
    while (!done.load()) {
      StereoBuffer buffer = noise(256);
      rig.block(buffer, 0, 256);
      for (const double sample : buffer.left) finite = finite && std::isfinite(sample);
    }
  }

  EngineRig& rig;
  std::atomic<bool> done{false};
  bool finite = true;
  std::thread thread;
};

std::string saved(EngineRig& rig) {
  StateChunk chunk;
  rig.effect.SerializeState(chunk);
  return std::string(reinterpret_cast<const char*>(chunk.data()),
                     static_cast<std::size_t>(chunk.size()));
}

TEST(BulkThreads, StatesAndPresetsAreLoadedWhileAudioPlays) {
  EngineRig rig;
  std::mt19937 draw(31);
  std::vector<StateBytes> states;
  for (int i = 0; i < 6; ++i) states.push_back(randomState(draw));
  Player player(rig);
  std::atomic<bool> whole{true};
  std::thread restoring([&] {
    for (int round = 0; round < 12; ++round) {
      const auto chunk = states[static_cast<std::size_t>(round % 6)].chunk();
      rig.effect.UnserializeState(chunk, 0);
    }
  });
  std::thread loading([&] {
    for (int round = 0; round < 12; ++round)
      rig.effect.settings().applyPreset(rig.effect.settings().currentPreset());
  });
  std::thread saving([&] {
    for (int round = 0; round < 40; ++round) {
      StateChunk chunk;
      whole = whole && rig.effect.SerializeState(chunk) && chunk.size() > 1095 * 8;
    }
  });
  restoring.join();
  loading.join();
  saving.join();
  EXPECT_TRUE(player.stop());
  EXPECT_TRUE(whole);
}

TEST(BulkThreads, ASaveNeverSeesHalfOfALoad) {
  EngineRig rig;
  std::mt19937 draw(32);
  const StateBytes one = randomState(draw);
  const StateBytes two = randomState(draw);
  rig.effect.UnserializeState(one.chunk(), 0);
  std::atomic<bool> done{false};
  std::thread restoring([&] {
    for (int round = 0; round < 20; ++round) {
      rig.effect.UnserializeState((round % 2 == 0 ? two : one).chunk(), 0);
    }
    done = true;
  });
  const auto text = [](const StateBytes& state) {
    const auto bytes = state.bytes();
    return std::string(bytes.begin(), bytes.end());
  };
  const std::string first = text(one), second = text(two);
  int halves = 0;
  while (!done.load()) {
    const std::string now = saved(rig);
    if (now != first && now != second) ++halves;
  }
  restoring.join();
  EXPECT_EQ(halves, 0);
}

TEST(BulkThreads, TwoEffectsLoadAtOnceWithoutDisturbingEachOther) {
  EngineRig one, two;
  std::mt19937 draw(33);
  for (int round = 0; round < 5; ++round) {
    one.effect.UnserializeState(randomState(draw).chunk(), 0);
    two.effect.UnserializeState(randomState(draw).chunk(), 0);
    const PresetFile first = one.effect.settings().currentPreset();
    const PresetFile second = two.effect.settings().currentPreset();
    Player playerOne(one), playerTwo(two);
    std::thread a([&] { one.effect.settings().applyPreset(first); });
    std::thread b([&] { two.effect.settings().applyPreset(second); });
    a.join();
    b.join();
    const auto same = [](const PresetFile& x, const PresetFile& y) {
      return x.values.size() == y.values.size() && x.tapMask == y.tapMask;
    };
    EXPECT_TRUE(same(one.effect.settings().currentPreset(), first));
    EXPECT_TRUE(same(two.effect.settings().currentPreset(), second));
  }
}

TEST(BulkThreads, AChangeOfRateOnTheAudioThreadMeetsALoad) {
  EngineRig rig;
  std::mt19937 draw(34);
  const StateBytes state = randomState(draw);
  std::atomic<bool> done{false};
  std::thread audio([&] {
    StereoBuffer buffer = noise(256);
    for (int round = 0; !done.load(); ++round) {
      rig.host.setSampleRate(round % 2 == 0 ? 44100.0 : 48000.0);
      rig.block(buffer, 0, 256);
    }
  });
  for (int round = 0; round < 5; ++round) rig.effect.UnserializeState(state.chunk(), 0);
  done = true;
  audio.join();
  const auto bytes = state.bytes();
  EXPECT_EQ(saved(rig), std::string(bytes.begin(), bytes.end()));
}

}  // namespace
}  // namespace orvantesco
