// A host's threads at once: audio, main thread and more of each.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <thread>
#include <vector>

#include "host/clap/ClapParameters.h"
#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

using Clock = std::chrono::steady_clock;

/// Two seconds, or twenty where somebody has the time.
std::chrono::milliseconds testTime() {
  return std::chrono::milliseconds(std::getenv("ORVANTESCO_LONG_TESTS") != nullptr ? 20000 : 2000);
}

/// Plays noise through an instance on a thread of its own for as long as it lives.
class Player {
 public:
  explicit Player(ClapInstance& of) : instance(of), thread([this] { play(); }) {}
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  ~Player() {
    goesOn = false;
    thread.join();
  }

  bool staysFinite() const { return finite; }
  long blocks() const { return played; }

 private:
  void play() {
    const StereoBuffer sound = noise(256);
    ClapPlan plan;
    plan.blocks = {64, 1, 33, 158};
    while (goesOn) {
      const StereoBuffer heard = throughClap(instance, sound, plan);
      finite = finite && std::all_of(heard.left.begin(), heard.left.end(),
                                     [](double x) { return std::isfinite(x); });
      ++played;
    }
  }

  ClapInstance& instance;
  std::atomic<bool> goesOn{true};
  std::atomic<bool> finite{true};
  std::atomic<long> played{0};
  std::thread thread;
};

TEST(ClapThreads, StatesLoadAHundredTimesASecondWhileItPlays) {
  ClapInstance instance;
  instance.start();
  const auto first = instance.state();
  for (clap_id id = 0; id < 1095; ++id) instance.in.value(0, id, (id * 37 % 100) / 99.0);
  instance.flush();
  const auto second = instance.state();
  const Player player(instance);
  int loads = 0;
  for (const auto end = Clock::now() + testTime(); Clock::now() < end; ++loads) {
    const auto next = Clock::now() + std::chrono::milliseconds(10);
    ASSERT_TRUE(instance.load(loads % 2 == 0 ? first : second));
    ASSERT_EQ(instance.state(), loads % 2 == 0 ? first : second);
    std::this_thread::sleep_until(next);
  }
  EXPECT_TRUE(player.staysFinite());
  EXPECT_GT(player.blocks(), 10);
  EXPECT_GT(loads, 10);
}

/// The id of the first parameter whose gestures do not come out even, beginnings first; -1 for
/// none.
int unevenGesture(const ClapOutput& told) {
  std::vector<int> open(1095, 0);
  for (const auto& event : told.told) {
    if (event.type == CLAP_EVENT_PARAM_GESTURE_BEGIN) ++open.at(event.id);
    if (event.type == CLAP_EVENT_PARAM_GESTURE_END && --open.at(event.id) < 0) {
      return static_cast<int>(event.id);
    }
  }
  const auto held = std::find_if(open.begin(), open.end(), [](int hands) { return hands != 0; });
  return held == open.end() ? -1 : static_cast<int>(held - open.begin());
}

long gesturesIn(const ClapOutput& told) {
  return std::count_if(told.told.begin(), told.told.end(), [](const auto& event) {
    return event.type == CLAP_EVENT_PARAM_GESTURE_BEGIN;
  });
}

TEST(ClapThreads, TwoThreadsMoveParametersWhileItPlays) {
  ClapInstance instance;
  instance.out.room = 10000000;
  instance.start();
  auto& effect = ClapPlugin::behind(instance.plugin)->parts()->effect;
  {
    const Player player(instance);
    const auto turn = [&effect, &player](int first) {
      for (int i = 0; i < 20000 || player.blocks() < 50; ++i) {
        if (i % 100 == 0) std::this_thread::yield();
        const int index = (first + i * 7) % 1095;
        effect.BeginInformHostOfParamChange(index);
        effect.SetParameterFromGUI(index, (i % 101) / 100.0);
        effect.EndInformHostOfParamChange(index);
      }
    };
    std::thread other(turn, 500);
    turn(0);
    for (int i = 0; i < 200; ++i) {
      instance.value(kFeedback);
      instance.text(kLfoRate, 0.5);
      instance.plugin->on_main_thread(instance.plugin);
    }
    other.join();
    EXPECT_TRUE(player.staysFinite());
  }
  instance.flush();
  EXPECT_GT(gesturesIn(instance.out), 1000);
  EXPECT_EQ(unevenGesture(instance.out), -1);
}

constexpr std::array rates{8000.0, 22050.0, 44100.0, 48000.0, 96000.0, 192000.0, 768000.0};

class ClapThreadsAtRate : public testing::TestWithParam<double> {};

TEST_P(ClapThreadsAtRate, InstancesOfAnyRateComeAndGoWhileOthersPlay) {
  ClapInstance one;
  ClapInstance other;
  one.start(GetParam());
  other.start(GetParam());
  const Player first(one);
  const Player second(other);
  for (const double rateHz : rates) {
    ClapInstance passing;
    passing.start(rateHz);
    ClapPlan plan;
    plan.rateHz = rateHz;
    throughClap(passing, noise(512), plan);
  }
  const long before = first.blocks();
  while (first.blocks() < before + 2) std::this_thread::yield();
  EXPECT_TRUE(first.staysFinite());
  EXPECT_TRUE(second.staysFinite());
}

INSTANTIATE_TEST_SUITE_P(Rates, ClapThreadsAtRate, testing::ValuesIn(rates));

TEST(ClapThreads, AnInstanceThatComesIsNotHeardInAnother) {
  const StereoBuffer sound = noise(48000);
  ClapInstance alone;
  alone.start();
  const StereoBuffer calm = throughClap(alone, sound, {});
  ClapInstance disturbed;
  disturbed.start();
  StereoBuffer heard(0);
  std::thread audio([&] { heard = throughClap(disturbed, sound, {}); });
  for (int i = 0; i < 5; ++i) {
    ClapInstance passing;
    passing.activate();
  }
  audio.join();
  EXPECT_TRUE(heard.left == calm.left);
}

TEST(ClapThreads, ChangesFromManyThreadsArriveOnceEach) {
  ChangeQueue queue;
  constexpr int each = 20000;
  const auto push = [&queue](int from) {
    for (int i = 0; i < each; ++i) {
      while (!queue.push({HostChange::Kind::value, from, static_cast<double>(i)})) {
        std::this_thread::yield();
      }
    }
  };
  std::thread a(push, 0);
  std::thread b(push, 1);
  int next[2] = {0, 0};
  bool inOrder = true;
  while (next[0] < each || next[1] < each) {
    const HostChange* const change = queue.front();
    if (change == nullptr) {
      std::this_thread::yield();
      continue;
    }
    inOrder = inOrder && change->normalized == next[change->paramIdx]++;
    queue.pop();
  }
  a.join();
  b.join();
  EXPECT_TRUE(inOrder);
}

}  // namespace
}  // namespace orvantesco
