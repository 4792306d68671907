// Presets and states are loaded and saved on several threads while audio plays.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <random>
#include <set>
#include <thread>

#include "params/ParamIndex.h"
#include "presets/HostState.h"
#include "presets/PresetWriter.h"
#include "support/EngineRig.h"
#include "support/LongTests.h"
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

  /// Returns once so many frames have been played.
  void waitForFrame(long frame) const {
    while (frames.load() < frame) std::this_thread::yield();
  }

  /// Whether all that was played is finite.
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
      frames += 256;
    }
  }

  EngineRig& rig;
  std::atomic<bool> done{false};
  std::atomic<long> frames{0};
  bool finite = true;
  std::thread thread;
};

std::string saved(EngineRig& rig) {
  StateChunk chunk;
  rig.effect.SerializeState(chunk);
  return std::string(reinterpret_cast<const char*>(chunk.data()),
                     static_cast<std::size_t>(chunk.size()));
}

/// The parameters of a block as presets keep them; empty for what is no whole block.
std::vector<float> parametersOf(const StateChunk& chunk) {
  const auto reading = readHostState(chunk, 0);
  if (!reading || reading->end != chunk.size()) return {};
  return {reading->state.parameters.begin(), reading->state.parameters.end()};
}

TEST(BulkThreads, StatesAndPresetsAreLoadedWhileAudioPlays) {
  EngineRig rig;
  std::mt19937 draw(31);
  std::vector<StateBytes> states;
  std::set<std::vector<float>> known;
  for (int i = 0; i < 6; ++i) {
    states.push_back(randomState(draw));
    known.insert(parametersOf(states.back().chunk()));
  }
  rig.effect.UnserializeState(states[0].chunk(), 0);
  Player player(rig);
  std::thread restoring([&] {
    for (int round = 0; round < 12; ++round) {
      rig.effect.UnserializeState(states[static_cast<std::size_t>(round % 6)].chunk(), 0);
    }
  });
  std::thread loading([&] {
    SettingsStore& settings = rig.effect.settings();
    for (int round = 0; round < 12; ++round) settings.applyPreset(settings.currentPreset());
  });
  int strange = 0;
  for (int round = 0; round < 40; ++round) {
    StateChunk chunk;
    if (!rig.effect.SerializeState(chunk) || !known.contains(parametersOf(chunk))) ++strange;
  }
  restoring.join();
  loading.join();
  EXPECT_TRUE(player.stop());
  EXPECT_EQ(strange, 0) << "saved blocks that are none of what was loaded";
}

TEST(BulkThreads, AHundredLoadsInEachSecondOfSoundAreSurvived) {
  constexpr int framesForALoad = 480;  // at 48000 Hz
  const int loads = 100 * timesOrLong(2, 60);
  EngineRig rig;
  std::mt19937 draw(35);
  std::vector<StateBytes> states;
  for (int i = 0; i < 4; ++i) states.push_back(randomState(draw));
  Player player(rig);
  for (int load = 0; load < loads; ++load) {
    player.waitForFrame(load * framesForALoad);
    if (load % 2 == 0) {
      rig.effect.UnserializeState(states[static_cast<std::size_t>(load / 2 % 4)].chunk(), 0);
    } else {
      rig.effect.settings().applyPreset(rig.effect.settings().currentPreset());
    }
  }
  rig.effect.UnserializeState(states[0].chunk(), 0);
  player.waitForFrame(loads * framesForALoad + 4096);
  EXPECT_TRUE(player.stop());
  const auto bytes = states[0].bytes();
  EXPECT_EQ(saved(rig), std::string(bytes.begin(), bytes.end()));
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
  const auto drawnPreset = [&draw](EngineRig& rig) {
    rig.effect.UnserializeState(randomState(draw).chunk(), 0);
    // Once through a load, so that values have the precision that one keeps.
    rig.effect.settings().applyPreset(rig.effect.settings().currentPreset());
    return rig.effect.settings().currentPreset();
  };
  const auto textOf = [](const EngineRig& rig) {
    return presetText(rig.effect.settings().currentPreset());
  };
  for (int round = 0; round < 5; ++round) {
    // Each loads what the other had before.
    const Preset first = drawnPreset(two);
    const Preset second = drawnPreset(one);
    Player playerOne(one), playerTwo(two);
    std::thread a([&] { one.effect.settings().applyPreset(first); });
    std::thread b([&] { two.effect.settings().applyPreset(second); });
    a.join();
    b.join();
    EXPECT_TRUE(textOf(one) == presetText(first)) << "round " << round;
    EXPECT_TRUE(textOf(two) == presetText(second)) << "round " << round;
    EXPECT_TRUE(playerOne.stop() && playerTwo.stop());
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
