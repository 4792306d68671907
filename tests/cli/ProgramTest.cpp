#include <gtest/gtest.h>

#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

int linesOf(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

class Program : public testing::Test {
 protected:
  ProgramResult run(const std::vector<std::string>& arguments) {
    return runProgramIn(folder.name(), arguments);
  }
  TemporaryFolder folder;
};

TEST_F(Program, TellsItsVersion) {
  const ProgramResult result = run({"--version"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "orvantesco 1.2.0\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Program, ShowsAnExampleInTheHelpOfEveryCommand) {
  for (const std::vector<std::string>& call :
       {std::vector<std::string>{"--help"}, {"params", "--help"}, {"scope", "--help"}}) {
    const ProgramResult result = run(call);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("Example"), std::string::npos) << call.front();
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(Program, RefusesACallThatIsNoneInOneLine) {
  const std::vector<std::vector<std::string>> calls = {
      {}, {"nothing"}, {"--nothing"}, {"params", "--nothing"}, {"params", "--match"}};
  for (const auto& call : calls) {
    const ProgramResult result = run(call);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(linesOf(result.err), 1) << result.err;
    EXPECT_EQ(result.err.rfind("orvantesco: ", 0), 0u) << result.err;
  }
}

TEST_F(Program, ListsAllParametersAsJson) {
  const ProgramResult result = run({"params", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.out.find("\"index\": 1094"), std::string::npos);
  EXPECT_EQ(result.err, "");
}

}  // namespace
}  // namespace orvantesco::cli
