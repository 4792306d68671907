#include <array>
#include <cmath>

#include "cli/RenderFixture.h"
#include "core/Orvantesco.h"
#include "host/OfflineHost.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"

namespace orvantesco::cli {
namespace {

class RenderTime : public RenderTest {};

/// What the engine adds to the longest delay for modulated times and the offset of the sides.
constexpr double reserveSeconds = 0.06;

/// A setting in which much moves: several slots, feedback, a reverse delay on the beat, filters.
Arguments busy() {
  return {"--tempo",      "133.3",
          "--start",      "0.3",
          "--tail",       "1.5",
          "--set",        "SlotOn 2=ON",
          "--set",        "Input 2=SLOT 1",
          "--set",        "Delay Mode 2=BACKWARD",
          "--set",        "Reverse Delay Trigger 2=BAR",
          "--set",        "Delay TimeL 1=130.7",
          "--set",        "Delay TimeR 1=77.3",
          "--set",        "Feedback 1=80",
          "--set",        "Feedback 2=60",
          "--set",        "Main ModDepth=80",
          "--set",        "Main ModRate=70",
          "--automation", "moves.csv",
          "--sidechain",  "side.wav"};
}

TEST_F(RenderTime, GivesTheSameFileForBlocksOfAnyLength) {
  input(noise(30000, 31));
  writeSound(folder.file("side.wav"), noise(20000, 32, 1));
  writeBytes(folder.file("moves.csv"),
             "0.01,Feedback 1,40\n0.1111,Delay TimeL 1,200\n0.3,Level 2,-6\n0.7,Dry Level,20\n");
  ASSERT_EQ(renderDouble(busy() + Arguments{"--block", "512"}).exitCode, 0);
  const std::string expected = bytesOf(folder.file("out.wav"));
  for (const std::string block : {"1", "31", "32", "4096", "random:7", "random:8", "100000"}) {
    ASSERT_EQ(renderDouble(busy() + Arguments{"--block", block}).exitCode, 0);
    EXPECT_TRUE(bytesOf(folder.file("out.wav")) == expected) << block;
  }
}

TEST_F(RenderTime, GivesTheSameFileForTheSameCall) {
  input(noise(20000, 33));
  writeSound(folder.file("side.wav"), noise(20000, 34));
  writeBytes(folder.file("moves.csv"), "0.2,Feedback 1,70\n");
  for (const std::string name : {"a.wav", "a.flac", "a.aiff", "a.ogg"}) {
    const Arguments call = Arguments{"in.wav", "-o", name} + busy();
    ASSERT_EQ(render(call).exitCode, 0);
    const std::string first = bytesOf(folder.file(name));
    ASSERT_EQ(render(call).exitCode, 0);
    EXPECT_TRUE(bytesOf(folder.file(name)) == first) << name;
  }
}

TEST_F(RenderTime, MovesWithTheTransport) {
  input(noise(30000, 35));
  const Arguments reverse{"--tempo", "150",
                          "--set",   "Delay Mode 1=BACKWARD",
                          "--set",   "Reverse Delay Trigger 1=BAR",
                          "--set",   "Delay TimeL 1=400"};
  const Sound running = rendered(reverse);
  EXPECT_NE(rendered(reverse + Arguments{"--start", "3.5"}).channels, running.channels);
  EXPECT_NE(rendered(reverse + Arguments{"--time-signature", "1/4"}).channels, running.channels);
  EXPECT_NE(rendered(reverse + Arguments{"--stopped", "--start", "3.5"}).channels,
            rendered(reverse + Arguments{"--start", "3.5"}).channels);
}

/// The engine by itself, as a host would drive it, without any code of the command line.
class PlainHost {
 public:
  explicit PlainHost(double rate) : host(rate), effect(host, optionsWithSeed()) {}

  void automate(int index, double value) {
    effect.GetParam(index)->setValue(value);
    effect.OnParamChange(index);
  }
  void play(const Sound& sound, std::size_t first, std::size_t frames) {
    std::vector<double> in0(frames), in1(frames), out0(frames), out1(frames);
    for (std::size_t i = 0; i < frames && first + i < sound.frames(); ++i) {
      in0[i] = sound.channels[0][first + i];
      in1[i] = sound.channels[1][first + i];
    }
    std::array<double*, 2> inputs{in0.data(), in1.data()};
    std::array<double*, 2> outputs{out0.data(), out1.data()};
    AudioBlock block;
    block.inputs = inputs.data();
    block.inputCount = 2;
    block.outputs = outputs.data();
    block.outputCount = 2;
    block.frames = static_cast<int>(frames);
    effect.RenderAudio(block);
    host.advance(block.frames);
    left.insert(left.end(), out0.begin(), out0.end());
    right.insert(right.end(), out1.begin(), out1.end());
  }

  OfflineHost host;
  Orvantesco effect;
  std::vector<double> left, right;

 private:
  static OrvantescoOptions optionsWithSeed() {
    OrvantescoOptions options;
    options.seed = 1;
    return options;
  }
};

TEST_F(RenderTime, HoldsTheEnginesOutputExactlyWithAutomationAtItsFrame) {
  const Sound sound = noise(9000, 36);
  input(sound);
  writeBytes(folder.file("moves.csv"), "0.1,Feedback 1,90\n0.100020833,Dry Level,30\n");
  const Sound out = rendered({"--automation", "moves.csv", "--tail", "0.5"});

  PlainHost plain(48000.0);
  plain.host.setRunning(false);
  plain.effect.startAnew();
  plain.play(silence(0), 0, 12000);
  plain.host.setRunning(true);
  plain.play(sound, 0, 4800);
  plain.automate(kFeedback, 90.0);
  plain.play(sound, 4800, 1);
  plain.automate(kDryLevel, 30.0);
  plain.play(sound, 4801, 9000 - 4801 + 24000 + 80);
  ASSERT_EQ(out.frames(), 33000u);
  EXPECT_TRUE(
      std::equal(out.channels[0].begin(), out.channels[0].end(), plain.left.begin() + 12080));
  EXPECT_TRUE(
      std::equal(out.channels[1].begin(), out.channels[1].end(), plain.right.begin() + 12080));
}

TEST_F(RenderTime, WarnsOfAutomationBehindTheEnd) {
  input(noise(4800, 37));
  writeBytes(folder.file("moves.csv"), "0.05,Feedback 1,10\n7,Feedback 1,20\n8,Feedback 1,30\n");
  const ProgramResult result = renderDouble({"--automation", "moves.csv", "--tail", "0.1"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.err.find("moves.csv: 2 lines"), std::string::npos) << result.err;
}

TEST_F(RenderTime, FeedsAsMuchSilenceAsTheTailSays) {
  input(noise(4800, 38));
  EXPECT_EQ(rendered({"--tail", "0"}).frames(), 4800u);
  EXPECT_EQ(rendered({"--tail", "0.5"}).frames(), 28800u);
  EXPECT_EQ(rendered({"--tail", "2.00001"}).frames(), 4800u + 96000u);
}

TEST_F(RenderTime, EndsOneSecondAndTheLongestDelayAfterTheLastSoundByItself) {
  const double quiet = std::pow(10.0, -90.0 / 20.0);
  input(noise(4800, 39));
  const Sound out = rendered(oneEcho("500", "250") + Arguments{"--tail", "auto"});
  std::size_t last = 0;
  for (std::size_t i = 0; i < out.frames(); ++i) {
    if (std::abs(out.channels[0][i]) >= quiet || std::abs(out.channels[1][i]) >= quiet) last = i;
  }
  EXPECT_GT(last, 24000u);
  const double seconds = static_cast<double>(out.frames() - 1 - last) / 48000.0;
  EXPECT_GE(seconds, 1.5);
  EXPECT_LE(seconds, 1.5 + reserveSeconds);
}

TEST_F(RenderTime, CountsTheTailOfSilenceFromTheEndOfTheInput) {
  input(silence(4800));
  const Sound out = rendered(oneEcho("500", "250") + Arguments{"--tail", "auto"});
  const double seconds = static_cast<double>(out.frames() - 4800) / 48000.0;
  EXPECT_GE(seconds, 1.5);
  EXPECT_LE(seconds, 1.5 + reserveSeconds);
}

TEST_F(RenderTime, GivesAnEndlessTailSixtySeconds) {
  input(noise(4800, 40));
  const Sound out = rendered({"--set", "Feedback 1=160", "--set", "Delay TimeL 1=100"});
  EXPECT_EQ(out.frames(), 4800u + 60u * 48000u);
}

}  // namespace
}  // namespace orvantesco::cli
