// What the audio thread asks of the heap and of locks: nothing.

#include <gtest/gtest.h>

#include <array>

#include "host/clap/ClapParameters.h"
#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapRender.h"
#include "realtime/RealTimeWork.h"

namespace orvantesco {
namespace {

/// One host block of 256 frames, ready to be played again and again.
template <class Sample>
class ReadyBlock {
 public:
  ReadyBlock() {
    for (auto& channel : samples) channel.fill(Sample(0.25));
    for (std::size_t c = 0; c < 5; ++c) channels[c] = samples[c].data();
    input[0] = port(0, 2);
    input[1] = port(2, 1);
    output = port(3, 2);
    block.frames_count = 256;
    block.audio_inputs = input.data();
    block.audio_inputs_count = 2;
    block.audio_outputs = &output;
    block.audio_outputs_count = 1;
  }
  ReadyBlock(const ReadyBlock&) = delete;
  ReadyBlock& operator=(const ReadyBlock&) = delete;

  void silence() {
    for (auto& channel : samples) channel.fill(Sample(0));
  }

  clap_process_t block{};

 private:
  clap_audio_buffer_t port(std::size_t first, std::uint32_t count) {
    clap_audio_buffer_t buffer{};
    if constexpr (sizeof(Sample) == sizeof(double)) {
      buffer.data64 = channels.data() + first;
    } else {
      buffer.data32 = channels.data() + first;
    }
    buffer.channel_count = count;
    return buffer;
  }

  std::array<std::array<Sample, 256>, 5> samples{};
  std::array<Sample*, 5> channels{};
  std::array<clap_audio_buffer_t, 2> input{};
  clap_audio_buffer_t output{};
};

template <class Sample>
void playUnderGuard(const char* what) {
  ClapInstance instance;
  instance.start(96000.0, 256);
  ReadyBlock<Sample> ready;
  for (std::uint32_t i = 0; i < 3000; ++i) {
    instance.in.value(i / 12, i % 1095, (i * 2654435761u % 1000) / 999.0);
  }
  instance.in.value(100, ClapParameters::bypassId, 1.0);
  auto& effect = ClapPlugin::behind(instance.plugin)->parts()->effect;
  effect.BeginInformHostOfParamChange(kFeedback);
  effect.SetParameterFromGUI(kFeedback, 0.4);
  // The first block at the rate of the host, with everything at once.
  expectRealTime(what, [&] { instance.process(ready.block); });
  expectRealTime(what, [&] { instance.reset(); });
  ready.silence();
  expectRealTime(what, [&] {
    for (int i = 0; i < 200; ++i) instance.process(ready.block);
    instance.flush();
  });
}

TEST(ClapRealTime, BlocksOf64BitsAskForNothing) { playUnderGuard<double>("64 bits"); }
TEST(ClapRealTime, BlocksOf32BitsAskForNothing) { playUnderGuard<float>("32 bits"); }

/// What the main thread then builds is taken by the next block.
TEST(ClapRealTime, EffectsChosenByHandAndTransportsAskForNothing) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  ClapInstance instance;
  instance.start(48000.0, 256);
  ReadyBlock<double> ready;
  clap_event_transport_t transport{};
  transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                    CLAP_TRANSPORT_HAS_TIME_SIGNATURE | CLAP_TRANSPORT_IS_PLAYING |
                    CLAP_TRANSPORT_IS_LOOP_ACTIVE;
  transport.tempo = 97.0;
  transport.tsig_num = 7;
  transport.tsig_denom = 8;
  instance.in.value(0, kFxOnPre, 1.0);
  instance.in.transport(3, transport);
  for (const clap_id selector : {kFxTypePre, kFxTypePre + 4, kFxTypePre + 8, kMasterFx}) {
    instance.in.value(10, selector, 3.0);
    instance.in.last().flags = CLAP_EVENT_IS_LIVE;
  }
  transport.tempo = 180.0;
  instance.in.transport(200, transport);
  expectRealTime("a choice", [&] { instance.process(ready.block); });
  EXPECT_GT(instance.host.callbacks, 0);
  instance.out.told.clear();
  instance.runMainThread();
  expectRealTime("what was built", [&] { instance.process(ready.block); });
  EXPECT_GT(instance.out.told.size(), 10u);
}

TEST(ClapRealTime, TheGuardWouldSeeIt) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  const AudioThreadGuard guard;
  const ClapInstance instance;
  EXPECT_GT(guard.allocations(), 0);
}

}  // namespace
}  // namespace orvantesco
