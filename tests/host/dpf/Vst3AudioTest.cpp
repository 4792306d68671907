// The bundle against an effect that is driven directly with the same settings, audio and transport.

#include <gtest/gtest.h>

#include "host/dpf/DirectEffect.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Vst3Host.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

/// What a host tells at a position.
v3_process_context contextAt(double quarterNotes, double tempo, int numerator, int denominator) {
  v3_process_context context{};
  context.state = V3_PROCESS_CTX_PLAYING | V3_PROCESS_CTX_PROJECT_TIME_VALID |
                  V3_PROCESS_CTX_TEMPO_VALID | V3_PROCESS_CTX_TIME_SIG_VALID;
  context.sample_rate = rateHz;
  context.project_time_quarters = quarterNotes;
  context.project_time_in_samples = static_cast<std::int64_t>(quarterNotes * 60.0 / tempo * rateHz);
  context.bpm = tempo;
  context.time_sig_numerator = numerator;
  context.time_sig_denom = denominator;
  return context;
}

struct Meter {
  int numerator = 4;
  int denominator = 4;
};

/// Plays both from a position and returns the largest difference; the loudest sample in `peak`.
double playBoth(DirectEffect& direct, Vst3Host& host, Meter meter, double& peak) {
  constexpr double tempo = 133.0;
  constexpr double start = 10.3;
  direct.host.setTempo(tempo);
  direct.host.setTimeSignature(meter.numerator, meter.denominator);
  direct.host.locate(start);
  double most = 0.0;
  std::int64_t frame = 0;
  for (unsigned b = 0; b < 300; ++b) {
    const std::size_t frames = b % 3 == 0 ? 256 : 97 + b % 50;
    Vst3Block block(frames);
    block.in = {noise(frames, 2 * b), noise(frames, 2 * b + 1)};
    auto context = contextAt(start + static_cast<double>(frame) * tempo / (60.0 * rateHz), tempo,
                             meter.numerator, meter.denominator);
    block.context = &context;
    direct.process(block);
    host.process(block);
    frame += static_cast<std::int64_t>(frames);
    for (std::size_t c = 0; c < 2; ++c) {
      most = std::max(most, differenceOf(block.out[c], direct.out[c]));
      peak = std::max(peak, peakOf(block.out[c]));
    }
  }
  return most;
}

/// A host that counts in before the first bar must not send the rhythm backwards.
TEST(Vst3Audio, StandsAtTheFirstBarWhileAHostCountsIn) {
  constexpr double tempo = 133.0;
  DirectEffect direct;
  direct.load("Modulated/Rhythm Gate");
  direct.effect.startAnew();
  Vst3Host host;
  ASSERT_TRUE(host.setState(vst3StreamOf(stateText(direct.effect))));
  host.activate(rateHz, longestBlock);
  direct.host.setTempo(tempo);
  double most = 0.0;
  for (unsigned b = 0; b < 300; ++b) {
    Vst3Block block(longestBlock);
    block.in = {noise(longestBlock, b), noise(longestBlock, b + 1000)};
    auto context = contextAt(
        -10.3 + static_cast<double>(b * longestBlock) * tempo / (60.0 * rateHz), tempo, 4, 4);
    ASSERT_LT(context.project_time_quarters, 0.0);
    block.context = &context;
    direct.host.locate(0.0);
    direct.process(block);
    host.process(block);
    most = std::max(most, differenceOf(block.out[0], direct.out[0]));
  }
  EXPECT_LT(most, 1e-6);
}

class Vst3PlaysAPreset : public testing::TestWithParam<const char*> {};

TEST_P(Vst3PlaysAPreset, AsTheEffectItselfInEveryMeter) {
  for (const Meter meter : {Meter{4, 4}, Meter{7, 8}, Meter{5, 4}}) {
    DirectEffect direct;
    direct.load(GetParam());
    direct.effect.startAnew();
    Vst3Host host;
    ASSERT_TRUE(host.setState(vst3StreamOf(stateText(direct.effect))));
    host.activate(rateHz, longestBlock);
    double peak = 0.0;
    EXPECT_LT(playBoth(direct, host, meter, peak), 1e-6) << meter.numerator;
    EXPECT_GT(peak, 0.05);
  }
}

INSTANTIATE_TEST_SUITE_P(Factory, Vst3PlaysAPreset,
                         testing::Values("Basics/Default", "Echo/Dub Quarter",
                                         "Filter Delays/Singing Filter", "Modulated/Rhythm Gate"));

/// Plays noise through an effect that ducks by its side chain.
std::vector<float> playDucked(const std::string& state, bool connected, bool active) {
  Vst3Host host;
  EXPECT_TRUE(host.setState(vst3StreamOf(state)));
  host.activateSideChain(active);
  host.activate(rateHz, longestBlock);
  std::vector<float> heard;
  for (unsigned b = 0; b < 200; ++b) {
    Vst3Block block(longestBlock);
    block.in = {noise(longestBlock, b), noise(longestBlock, b + 1000)};
    if (connected) block.side = noise(longestBlock, b + 2000);
    host.process(block);
    heard.insert(heard.end(), block.out[0].begin(), block.out[0].end());
  }
  return heard;
}

TEST(Vst3Audio, HearsTheSideChainWhereAHostConnectsAndActivatesIt) {
  DirectEffect direct;
  direct.load("Ducking/Sidechain Pump");
  direct.effect.startAnew();
  const std::string state = stateText(direct.effect);
  const auto ducked = playDucked(state, true, true);
  const auto plain = playDucked(state, false, true);
  EXPECT_EQ(playDucked(state, true, false), plain);
  EXPECT_NE(ducked, plain);
  for (unsigned b = 0; b < 200; ++b) {
    Vst3Block block(longestBlock);
    block.in = {noise(longestBlock, b), noise(longestBlock, b + 1000)};
    block.side = noise(longestBlock, b + 2000);
    direct.host.setRunning(false);
    direct.process(block);
    const auto first = ducked.begin() + b * longestBlock;
    ASSERT_LT(differenceOf({first, first + longestBlock}, direct.out[0]), 1e-6) << b;
  }
}

TEST(Vst3Audio, PassesTheDrySignalWithTheSameLatencyWhileBypassed) {
  Vst3Host host;
  host.activate(rateHz, longestBlock);
  const std::uint32_t latency = host.latency();
  EXPECT_EQ(latency, 32U + 48U);
  std::vector<float> sent, heard;
  for (unsigned b = 0; b < 40; ++b) {
    Vst3Block block(longestBlock);
    block.in = {noise(longestBlock, b), noise(longestBlock, b + 100)};
    if (b == 0) block.changes = {{vst3IdOf(kNumParams), 0, 1.0}};
    host.process(block);
    sent.insert(sent.end(), block.in[0].begin(), block.in[0].end());
    heard.insert(heard.end(), block.out[0].begin(), block.out[0].end());
  }
  for (std::size_t i = 2000; i < heard.size(); ++i) ASSERT_EQ(heard[i], sent[i - latency]) << i;
}

TEST(Vst3Audio, AnswersWithTheLatencyOfTheRateAndDoesNotTellItAgain) {
  Vst3Host host;
  for (const double rate : {48000.0, 96000.0}) {
    host.activate(rate, longestBlock);
    EXPECT_EQ(host.latency(), 32U + static_cast<std::uint32_t>(rate / 1000.0));
    EXPECT_NEAR(host.plain(0, host.normalized(0)), host.latency(), 0.5);
    Vst3Block block(longestBlock);
    host.process(block);
    EXPECT_TRUE(host.toldLatencies.empty());
    host.deactivate();
  }
}

}  // namespace
}  // namespace orvantesco
