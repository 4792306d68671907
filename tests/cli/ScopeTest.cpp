#include <gtest/gtest.h>

#include <sstream>

#include "cli/AudioFiles.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

using Row = std::vector<double>;

class Scope : public testing::Test {
 protected:
  ProgramResult run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "scope");
    return runProgramIn(folder.name(), arguments);
  }
  /// The rows of a table that the call with these options writes.
  std::vector<Row> table(std::vector<std::string> options) {
    options.insert(options.end(), {"-o", "out.csv"});
    const ProgramResult result = run(options);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::istringstream text(bytesOf(folder.file("out.csv")));
    std::getline(text, heading);
    std::vector<Row> rows;
    for (std::string line; std::getline(text, line);) {
      std::istringstream cells(line);
      Row row;
      for (std::string cell; std::getline(cells, cell, ',');) row.push_back(std::stod(cell));
      rows.push_back(row);
    }
    return rows;
  }
  TemporaryFolder folder;
  std::string heading;
};

std::vector<std::string> ramp(const std::string& hz) {
  return {"--set", "LFO On 1=ON",      "--set", "LFO Wave 1=RAMP", "--set", "LFO Pol 1=BI (+/-)",
          "--set", "LFO Depth 1=100",  "--set", "LFO Glide 1=1",   "--set", "LFO Rate 1=" + hz,
          "--set", "LFO Trigger 1=BAR"};
}

TEST_F(Scope, writesAColumnForEachOfTheFourteenModulators) {
  const auto rows = table({"--seconds", "0.5", "--every", "480"});
  EXPECT_EQ(heading,
            "seconds,LFO1,LFO2,LFO3,LFO4,GATE1,GATE2,GATE3,GATE4,ENV1,ENV2,LOGIC1,LOGIC2,LOGIC3,"
            "LOGIC4");
  ASSERT_EQ(rows.size(), 50u);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    ASSERT_EQ(rows[i].size(), 15u);
    EXPECT_NEAR(rows[i][0], 0.01 * static_cast<double>(i), 1e-6);
  }
}

TEST_F(Scope, showsAnLfoAtItsRate) {
  auto options = ramp("0.5");
  options.insert(options.end(), {"--seconds", "1.9", "--start", "3.9"});
  const auto rows = table(options);
  // Bar 2 begins after 0.05 s at 120 beats a minute and restarts the ramp.
  const auto at = [&rows](double seconds) {
    return rows[static_cast<std::size_t>(seconds * 48000.0 / 32.0)][1];
  };
  EXPECT_NEAR(at(1.05), 0.0, 0.01);
  EXPECT_NEAR(at(1.55), 0.5, 0.01);
}

TEST_F(Scope, givesTheSameForTheSameSeed) {
  const std::vector<std::string> hold{"--set", "LFO On 1=ON",   "--set",     "LFO Wave 1=S&H",
                                      "--set", "LFO Rate 1=50", "--seconds", "0.3"};
  EXPECT_EQ(table(hold), table(hold));
  auto seeded = hold;
  seeded.insert(seeded.end(), {"--seed", "2"});
  EXPECT_NE(table(hold), table(seeded));
}

TEST_F(Scope, hearsItsInputAndItsSideChain) {
  writeSound(folder.file("in.wav"), noise(24000, 1));
  writeSound(folder.file("side.wav"), noise(24000, 2, 1));
  const auto rows = table({"in.wav", "--sidechain", "side.wav", "--set", "ENV1 On=ON", "--set",
                           "ENV2 On=ON", "--set", "ENV2 Source=SIDECHAIN"});
  EXPECT_EQ(rows.size(), 750u) << "as long as the input";
  EXPECT_GT(rows.back()[9], 0.3);
  EXPECT_GT(rows.back()[10], 0.3);
}

TEST_F(Scope, appliesAutomationAtItsTime) {
  writeBytes(folder.file("moves.csv"), "0.25,LFO On 1,ON\n");
  const auto rows = table({"--seconds", "0.5", "--automation", "moves.csv"});
  EXPECT_EQ(rows[300][1], 0.0);
  EXPECT_NE(rows[740][1], 0.0);
}

TEST_F(Scope, drawsAPicture) {
  auto options = ramp("3");
  options.insert(options.end(), {"--seconds", "2", "-o", "out.png"});
  EXPECT_EQ(run(options).exitCode, 0);
  const std::string drawn = bytesOf(folder.file("out.png"));
  EXPECT_EQ(drawn.substr(1, 3), "PNG");
  EXPECT_EQ(run({"--seconds", "2", "-o", "flat.png"}).exitCode, 0);
  EXPECT_NE(drawn, bytesOf(folder.file("flat.png"))) << "the modulation is in it";
}

TEST_F(Scope, refusesBlocksWhichCouldChangeNothing) {
  const ProgramResult result = run({"-o", "out.csv", "--block", "64"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_NE(result.err.find("--block"), std::string::npos) << result.err;
  EXPECT_TRUE(folder.entries().empty());
}

TEST_F(Scope, refusesWhatItCannotDo) {
  const std::vector<std::vector<std::string>> calls = {{},
                                                       {"-o", "out.wav"},
                                                       {"-o", "out.csv", "--seconds", "no"},
                                                       {"-o", "out.csv", "--every", "0"}};
  for (const auto& call : calls) EXPECT_EQ(run(call).exitCode, 2);
  EXPECT_EQ(run({"-o", "no-folder/out.csv"}).exitCode, 1);
  EXPECT_EQ(run({"missing.wav", "-o", "out.csv"}).exitCode, 1);
  EXPECT_TRUE(folder.entries().empty());
}

}  // namespace
}  // namespace orvantesco::cli
