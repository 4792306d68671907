#include "host/dpf/DpfEngine.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <thread>

#include "host/dpf/DpfState.h"
#include "host/dpf/PortValue.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"
#include "realtime/RealTimeWork.h"

namespace orvantesco {
namespace {

constexpr int frames = 200;

/// An engine with its ports, as the wrapper holds it.
class DpfEngineTest : public testing::Test {
 protected:
  DpfEngineTest() {
    ::setenv("XDG_DATA_HOME", ORVANTESCO_TEST_DATA, 1);
    engine.activate(48000.0, 128);  // a host's blocks may be longer than it said
  }

  void run() noexcept {
    const float* inputs[] = {in.data(), in.data(), in.data()};
    float* outputs[] = {left.data(), right.data()};
    engine.run(inputs, outputs, frames);
  }

  bool isFinite() const {
    const auto finite = [](float x) { return std::isfinite(x); };
    return std::all_of(left.begin(), left.end(), finite) &&
           std::all_of(right.begin(), right.end(), finite);
  }

  DpfEngine engine;
  std::vector<float> in = std::vector<float>(frames, 0.25F);
  std::vector<float> left = std::vector<float>(frames), right = std::vector<float>(frames);
};

TEST_F(DpfEngineTest, NeitherAllocatesNorLocksWhileParametersMove) {
  for (int b = 0; b < 50; ++b) run();
  expectRealTime("blocks with new values", [this] {
    for (int b = 0; b < 200; ++b) {
      for (const int index : {kFeedback, kLevel + 1, kDelayOn, kLfoRate, kPanning + 3}) {
        takePortValue(engine.effect, index, static_cast<float>(b % 7) * 0.1F);
      }
      engine.bypassed = b / 20 % 2 == 1;
      DISTRHO::TimePosition position;
      position.playing = b % 30 != 0;
      position.frame = static_cast<std::uint64_t>(b) * frames;
      engine.host.takePosition(position);
      run();
    }
  });
}

TEST_F(DpfEngineTest, DispatchesNothingWhereEveryPortStandsWhereItStood) {
  engine.effect.GetParam(kFeedback)->setValue(100.0 / 3.0);
  for (int index = 0; index < kNumParams; ++index) {
    takePortValue(engine.effect, index, portValueOf(*engine.effect.GetParam(index)));
  }
  EXPECT_EQ(engine.effect.GetParam(kFeedback)->value(), 100.0 / 3.0);
}

TEST_F(DpfEngineTest, TakesStatesFromAnotherThreadWhileItPlays) {
  const std::string state = stateText(engine.effect);
  std::atomic<bool> done{false};
  int restored = 0;
  std::thread control([&] {
    for (; restored < 200; ++restored) {
      if (!restoreStateText(engine.effect, state.c_str())) break;
    }
    done = true;
  });
  bool finite = true;
  while (!done) {
    run();
    finite = finite && isFinite();
  }
  control.join();
  EXPECT_EQ(restored, 200);
  EXPECT_TRUE(finite);
  EXPECT_EQ(stateText(engine.effect), state);
}

#if !defined(ORVANTESCO_UNDER_SANITIZER)  // which needs more memory than this test leaves
/// The host is C code, which no exception may reach.
TEST_F(DpfEngineTest, IsSilentWhereThereIsNoMemoryForItsBlocks) {
  const auto runWithLittleMemory = [this] {
    rlimit little{};
    little.rlim_cur = little.rlim_max = 64 << 20;
    ::setrlimit(RLIMIT_AS, &little);
    const bool failed = !engine.activate(48000.0, 1 << 28);
    std::fill(left.begin(), left.end(), 1.0F);
    run();
    std::_Exit(failed && std::ranges::count(left, 0.0F) == frames ? 0 : 1);
  };
  EXPECT_EXIT(runWithLittleMemory(), testing::ExitedWithCode(0), "cannot play");
}
#endif

TEST_F(DpfEngineTest, IsSilentAgainAfterItWasActivatedAnew) {
  for (int b = 0; b < 300; ++b) run();
  std::fill(in.begin(), in.end(), 0.0F);
  engine.activate(48000.0, 128);
  float peak = 0.0F;
  for (int b = 0; b < 300; ++b) {
    run();
    for (const float x : left) peak = std::max(peak, std::abs(x));
  }
  EXPECT_LT(peak, 1e-6F);
}

}  // namespace
}  // namespace orvantesco
