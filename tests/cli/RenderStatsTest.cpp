#include <algorithm>
#include <cmath>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {
namespace {

class RenderStatsTest : public RenderTest {};

double peakOf(const std::vector<double>& channel) {
  double peak = 0.0;
  for (const double sample : channel) peak = std::max(peak, std::abs(sample));
  return peak;
}

TEST_F(RenderStatsTest, TellWhatTheFileHolds) {
  input(noise(9600, 81));
  const auto stats = statsOf({"--tail", "0.3", "--set", "Panning 1=40"});
  const Sound out = readSound(folder.file("out.wav"));
  EXPECT_EQ(stats["frames"], out.frames());
  EXPECT_EQ(stats["frames"], 9600 + 14400);
  EXPECT_EQ(stats["seconds"], 0.5);
  EXPECT_EQ(stats["peak"][0], peakOf(out.channels[0]));
  EXPECT_EQ(stats["peak"][1], peakOf(out.channels[1]));
  EXPECT_EQ(stats["non_finite"], 0);
  EXPECT_GT(stats["cpu_seconds"], 0.0);
  EXPECT_NEAR(stats["realtime_factor"].get<double>(), 0.5 / stats["cpu_seconds"].get<double>(),
              1e-6 * stats["realtime_factor"].get<double>());
}

TEST_F(RenderStatsTest, TellTheLatencyOfEveryRate) {
  for (const auto& [rate, latency] : std::vector<std::pair<int, int>>{
           {8000, 64}, {22050, 64}, {44100, 76}, {48000, 80}, {96000, 128}, {192000, 128}}) {
    input(noise(100, 82, 2, rate));
    EXPECT_EQ(statsOf({"--tail", "0"})["latency"], latency) << rate;
  }
}

TEST_F(RenderStatsTest, AreOneDocumentAlsoWhereAFileNameIsNoText) {
  const std::string name = "odd-\xff-name.wav";
  writeSound(folder.file(name), noise(100, 83));
  const ProgramResult result = render({name, "-o", "out.wav", "--stats"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_FALSE(nlohmann::json::parse(result.out, nullptr, false).is_discarded());
}

TEST_F(RenderStatsTest, AreNotPrintedUnasked) {
  input(noise(100, 84));
  const ProgramResult result = renderDouble({"--tail", "0"});
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "") << "no progress bar where there is no terminal";
}

TEST_F(RenderStatsTest, ComeWithAWarningWhereAnIntegerFormatClips) {
  Sound loud = silence(100);
  loud.channels[0][50] = 2.0;
  input(loud);
  const ProgramResult result =
      render(Arguments{"in.wav", "-o", "out.wav", "--format", "pcm16", "--tail", "0"} + dryOnly());
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.err.find("out.wav: 1 samples"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace orvantesco::cli
