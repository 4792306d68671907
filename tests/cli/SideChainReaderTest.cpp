#include "cli/SideChainReader.h"

#include <gtest/gtest.h>

#include "cli/AudioFiles.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

class SideChainReaderTest : public testing::Test {
 protected:
  std::vector<double> read(const Sound& sound, int frames) {
    writeSound(folder.file("side.wav"), sound);
    SideChainReader reader(folder.file("side.wav"));
    std::vector<double> samples(static_cast<std::size_t>(frames), 9.0);
    for (int done = 0; done < frames; done += 50) reader.read(samples.data() + done, 50);
    return samples;
  }
  TemporaryFolder folder;
};

TEST_F(SideChainReaderTest, GivesAMonoFileAsItIsAndSilenceBehindIt) {
  const Sound mono = noise(120, 1, 1);
  std::vector<double> expected = mono.channels[0];
  expected.resize(200, 0.0);
  EXPECT_EQ(read(mono, 200), expected);
}

TEST_F(SideChainReaderTest, SumsAStereoFileAndHalvesIt) {
  const Sound stereo = noise(120, 2, 2);
  std::vector<double> expected(200, 0.0);
  for (std::size_t i = 0; i < 120; ++i) {
    expected[i] = (stereo.channels[0][i] + stereo.channels[1][i]) * 0.5;
  }
  EXPECT_EQ(read(stereo, 200), expected);
}

TEST_F(SideChainReaderTest, StaysFiniteForTheLargestSamples) {
  Sound huge = silence(50);
  huge.channels[0][0] = huge.channels[1][0] = 1.7e308;
  EXPECT_EQ(read(huge, 50)[0], 1.7e308);
}

}  // namespace
}  // namespace orvantesco::cli
