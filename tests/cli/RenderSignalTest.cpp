#include <algorithm>
#include <cmath>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {
namespace {

std::size_t loudestFrame(const std::vector<double>& channel) {
  const auto louder = [](double a, double b) { return std::abs(a) < std::abs(b); };
  return static_cast<std::size_t>(std::max_element(channel.begin(), channel.end(), louder) -
                                  channel.begin());
}

std::vector<double> part(const std::vector<double>& samples, std::size_t first, std::size_t count) {
  const auto begin = samples.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

class RenderSignal : public RenderTest {};

TEST_F(RenderSignal, LinesTheDrySignalUpWithTheInputAtEveryRate) {
  for (const int rate : {22050, 44100, 48000, 96000, 192000}) {
    input(impulse(5000, 1234, 2, rate));
    const Sound out = rendered(dryOnly() + Arguments{"--tail", "0"});
    EXPECT_EQ(out.rate, rate);
    EXPECT_EQ(out.channels, impulse(5000, 1234).channels) << rate;
  }
}

TEST_F(RenderSignal, PassesTheDrySignalBitForBit) {
  const Sound sound = noise(20000, 21);
  input(sound);
  EXPECT_EQ(rendered(dryOnly() + Arguments{"--tail", "0"}).channels, sound.channels);
}

TEST_F(RenderSignal, LeavesTheLatencyWhereThatIsAskedFor) {
  input(noise(3000, 22));
  for (const std::string tail : {"0", "0.1", "auto"}) {
    const Sound cut = rendered({"--tail", tail});
    const Sound kept = rendered({"--tail", tail, "--keep-latency"});
    ASSERT_EQ(kept.frames(), cut.frames() + 80);
    EXPECT_EQ(part(kept.channels[0], 80, cut.frames()), cut.channels[0]) << tail;
    EXPECT_EQ(part(kept.channels[1], 80, cut.frames()), cut.channels[1]) << tail;
  }
}

TEST_F(RenderSignal, PutsAnEchoWhereItsTimeSays) {
  input(impulse(4800, 100));
  const Sound late = rendered(oneEcho("250", "125") + Arguments{"--tail", "0.5"});
  const Sound early = rendered(oneEcho("50", "100") + Arguments{"--tail", "0.5"});
  // The way through the filters is the same for both, so it cancels.
  const auto difference = [&](std::size_t side) {
    return double(loudestFrame(late.channels[side])) - double(loudestFrame(early.channels[side]));
  };
  EXPECT_EQ(difference(0), 9600.0);
  EXPECT_EQ(difference(1), 1200.0);
}

TEST_F(RenderSignal, FadesInAtTheStartWhereNoWarmUpIsWanted) {
  input(Sound{48000, {std::vector<double>(9600, 0.5), std::vector<double>(9600, 0.5)}});
  const Sound warm = rendered(dryOnly() + Arguments{"--tail", "0"});
  const Sound cold = rendered(dryOnly() + Arguments{"--tail", "0", "--warm-up", "0"});
  ASSERT_EQ(cold.frames(), 9600u);
  EXPECT_EQ(warm.channels[0], std::vector<double>(9600, 0.5));
  EXPECT_EQ(cold.channels[0].front(), 0.0);
  EXPECT_LT(cold.channels[0][2400], 0.4);
  EXPECT_EQ(cold.channels[0].back(), 0.5);
}

TEST_F(RenderSignal, PlaysAMonoFileOnBothSides) {
  const Sound mono = noise(5000, 23, 1);
  input(mono);
  const Sound out = rendered(dryOnly() + Arguments{"--tail", "0"});
  ASSERT_EQ(out.channels.size(), 2u);
  EXPECT_EQ(out.channels[0], mono.channels[0]);
  EXPECT_EQ(out.channels[1], mono.channels[0]);
}

TEST_F(RenderSignal, RendersSamplesThatAreNotFiniteAsZeroAndWarns) {
  Sound sound = noise(5000, 24);
  Sound clean = sound;
  for (const std::size_t at : {10U, 11U, 4000U}) {
    sound.channels[0][at] = at == 10 ? std::nan("") : INFINITY;
    clean.channels[0][at] = 0.0;
  }
  input(sound);
  const ProgramResult result = renderDouble({"--stats"});
  const Sound out = readSound(folder.file("out.wav"));
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.err.find("in.wav: 3 samples are not finite"), std::string::npos) << result.err;
  EXPECT_EQ(linesOf(result.err), 1) << result.err;
  EXPECT_EQ(nlohmann::json::parse(result.out)["non_finite"], 0);
  input(clean);
  EXPECT_EQ(rendered({}).channels, out.channels);
}

TEST_F(RenderSignal, TakesASideChainWithoutLettingItIntoTheSignal) {
  writeSound(folder.file("side.wav"), noise(3000, 25));
  for (const std::size_t channels : {1U, 2U}) {
    input(noise(5000, 26, channels));
    const Sound without = rendered({});
    EXPECT_EQ(rendered({"--sidechain", "side.wav"}).channels, without.channels) << channels;
  }
}

TEST_F(RenderSignal, ReadsTheSideChainAndWarnsOfItsSamplesToo) {
  Sound side = noise(3000, 29);
  side.channels[1][2999] = std::nan("");
  writeSound(folder.file("side.wav"), side);
  input(noise(5000, 30));
  const ProgramResult result = renderDouble({"--sidechain", "side.wav"});
  EXPECT_NE(result.err.find("side.wav: 1 samples are not finite"), std::string::npos) << result.err;
}

TEST_F(RenderSignal, TellsTheEngineThatAFileIsMono) {
  const Sound mono = noise(5000, 41, 1);
  input(Sound{48000, {mono.channels[0], mono.channels[0]}});
  const Sound left = rendered({"--set", "Input 1=LEFT"});
  input(mono);
  EXPECT_EQ(rendered({"--set", "Input 1=MONO"}).channels, left.channels) << "not its sum";
}

TEST_F(RenderSignal, SetsExactlyTheNumberThatWasTyped) {
  input(noise(2000, 42));
  const Arguments common{"--set", "Wet Level=0", "--warm-up", "0", "--tail", "0.2"};
  for (const std::string percent : {"29", "57", "58", "33.3"}) {
    writeBytes(folder.file("moves.csv"), "0,Dry Level," + percent + "\n");
    const Sound typed = rendered(common + Arguments{"--set", "Dry Level=" + percent});
    EXPECT_EQ(rendered(common + Arguments{"--automation", "moves.csv"}).channels, typed.channels)
        << percent;
  }
}

TEST_F(RenderSignal, FollowsTheTempoWithItsNoteValues) {
  input(impulse(4800, 0));
  const Arguments eighths = {"--set",  "Dry Level=0",
                             "--set",  "Timebase 1=1/8",
                             "--set",  "DelayFactorL 1=1",
                             "--set",  "DelayFactorR 1=2",
                             "--set",  "Main ModDepth=0",
                             "--set",  "Feedback 1=0",
                             "--tail", "1.5"};
  const Sound slow = rendered(eighths + Arguments{"--tempo", "60"});
  const Sound fast = rendered(eighths + Arguments{"--tempo", "120"});
  const auto difference = [&](std::size_t side) {
    return double(loudestFrame(slow.channels[side])) - double(loudestFrame(fast.channels[side]));
  };
  EXPECT_NEAR(difference(0), 12000.0, 1.0);
  EXPECT_NEAR(difference(1), 24000.0, 1.0);
}

TEST_F(RenderSignal, AppliesSettingsInTheirOrder) {
  input(noise(2000, 27));
  const Arguments tail{"--tail", "0"};
  const Sound loud = rendered(dryOnly() + tail);
  EXPECT_EQ(rendered(Arguments{"--set", "Dry Level=0"} + dryOnly() + tail).channels, loud.channels);
  EXPECT_EQ(rendered(dryOnly() + Arguments{"--set", "Dry Level=0"} + tail).channels,
            silence(2000).channels);
}

TEST_F(RenderSignal, ChangesAnEffectTypeAsTheUsersGestureDoes) {
  input(noise(4000, 28));
  const Arguments wet{"--set", "Dry Level=0", "--set", "FXOn PR 1=ON", "--tail", "0.5"};
  const Sound plain = rendered(wet);
  const Sound filtered = rendered(wet + Arguments{"--set", "FX1 PR=HP/LP 24dB"});
  EXPECT_NE(filtered.channels, plain.channels);
  writeBytes(folder.file("moves.csv"), "0,FX1 PR,HP/LP 24dB\n");
  EXPECT_EQ(rendered(wet + Arguments{"--automation", "moves.csv"}).channels, plain.channels)
      << "a host cannot change the type";
}

}  // namespace
}  // namespace orvantesco::cli
