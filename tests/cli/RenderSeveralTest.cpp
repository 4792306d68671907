#include <filesystem>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {
namespace {

class RenderSeveral : public RenderTest {
 protected:
  RenderSeveral() {
    writeSound(folder.file("a.wav"), noise(9000, 61));
    writeSound(folder.file("b.flac"), noise(5000, 62, 1), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    writeSound(folder.file("c.wav"), noise(7000, 63, 2, 44100));
  }
  const Arguments common{"--set", "Feedback 1=60", "--tail", "0.5"};
};

TEST_F(RenderSeveral, GivesEachInputTheFileThatItHasAlone) {
  for (const char* name : {"a.wav", "b.flac", "c.wav"}) {
    ASSERT_EQ(render(Arguments{name, "-o", std::string("alone-") + name} + common).exitCode, 0);
  }
  for (const char* jobs : {"1", "2", "7"}) {
    const Arguments call{"a.wav", "b.flac", "c.wav", "--output-dir", "out", "--jobs", jobs};
    const ProgramResult result = render(call + common);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    for (const char* name : {"a.wav", "b.flac", "c.wav"}) {
      EXPECT_TRUE(bytesOf(folder.file(std::string("out/") + name)) ==
                  bytesOf(folder.file(std::string("alone-") + name)))
          << name << " with " << jobs;
    }
  }
}

TEST_F(RenderSeveral, PrintsTheStatsOfAllInTheirOrder) {
  const ProgramResult result =
      render(Arguments{"c.wav", "a.wav", "b.flac", "--output-dir", "out", "--stats"} + common);
  const auto stats = nlohmann::json::parse(result.out);
  ASSERT_EQ(stats.size(), 3u);
  EXPECT_EQ(stats[0]["input"], "c.wav");
  EXPECT_EQ(stats[0]["frames"], 7000 + 22050);
  EXPECT_EQ(stats[0]["latency"], 76);
  EXPECT_EQ(stats[1]["input"], "a.wav");
  EXPECT_EQ(stats[2]["output"], "out/b.flac");
}

TEST_F(RenderSeveral, FinishesTheOthersWhereOneFails) {
  const ProgramResult result =
      render(Arguments{"a.wav", "absent.wav", "c.wav", "--output-dir", "out", "--stats"} + common);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(linesOf(result.err), 1) << result.err;
  EXPECT_NE(result.err.find("absent.wav"), std::string::npos);
  EXPECT_EQ(nlohmann::json::parse(result.out).size(), 2u);
  EXPECT_TRUE(std::filesystem::exists(folder.file("out/a.wav")));
  EXPECT_FALSE(std::filesystem::exists(folder.file("out/absent.wav")));
  EXPECT_TRUE(std::filesystem::exists(folder.file("out/c.wav")));
}

TEST_F(RenderSeveral, SaysOnceWhatIsWrongWithTheCall) {
  std::filesystem::create_directory(folder.file("out"));
  expectRefusal(2, {"a.wav", "c.wav", "--output-dir", "out", "--set", "Nothing=1"}, "Nothing");
  writeBytes(folder.file("moves.csv"), "x\n");
  expectRefusal(2, {"a.wav", "c.wav", "--output-dir", "out", "--automation", "moves.csv"},
                "moves.csv: line 1");
  EXPECT_TRUE(std::filesystem::is_empty(folder.file("out")));
}

TEST_F(RenderSeveral, TakesAFolderForOneInputToo) {
  EXPECT_EQ(render(Arguments{"a.wav", "--output-dir", "out"} + common).exitCode, 0);
  EXPECT_TRUE(std::filesystem::exists(folder.file("out/a.wav")));
}

}  // namespace
}  // namespace orvantesco::cli
