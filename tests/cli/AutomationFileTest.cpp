#include "cli/AutomationFile.h"

#include <gtest/gtest.h>

#include "cli/AudioFiles.h"
#include "cli/Failing.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

class AutomationFileTest : public testing::Test {
 protected:
  AutomationFileTest() { bank.buildParameterBank(); }

  std::vector<AutomationEvent> read(const std::string& text, double rate = 48000.0) {
    writeBytes(path, text);
    return readAutomationFile(path, bank, rate);
  }
  std::string refusal(const std::string& text) {
    return failureOf(ExitCode::badCall, [&] { read(text); });
  }
  ParamBank bank;
  TemporaryFolder folder;
  const std::string path = folder.file("moves.csv");
};

TEST_F(AutomationFileTest, ReadsTimesNamesAndValues) {
  const auto events = read("0,Feedback 1,50\n0.5,feedback2,n:0\n1.25 , #4 , OFF\r\n");
  ASSERT_EQ(events.size(), 3u);
  EXPECT_EQ(events[0].frame, 0);
  EXPECT_EQ(events[0].setting.index, kFeedback);
  EXPECT_EQ(events[0].setting.value, 50.0);
  EXPECT_EQ(events[1].frame, 24000);
  EXPECT_EQ(events[1].setting.index, kFeedback + 1);
  EXPECT_EQ(events[1].setting.value, bank.getParam(kFeedback + 1)->min());
  EXPECT_EQ(events[2].frame, 60000);
  EXPECT_EQ(events[2].setting.index, 4);
  EXPECT_EQ(events[2].setting.value, 0.0);
}

TEST_F(AutomationFileTest, TakesTheNearestFrame) {
  EXPECT_EQ(read("0.0000226757,Feedback 1,0\n", 44100.0).front().frame, 1);
  EXPECT_EQ(read("3600.00001,Feedback 1,0\n", 96000.0).front().frame, 345600001);
}

TEST_F(AutomationFileTest, SortsByTimeAndKeepsTheOrderOfEqualTimes) {
  const auto events = read("2,Feedback 1,1\n1,Feedback 1,2\n1,Feedback 1,3\n0,Feedback 1,4\n");
  std::vector<double> values;
  for (const AutomationEvent& event : events) values.push_back(event.setting.value);
  EXPECT_EQ(values, (std::vector<double>{4.0, 2.0, 3.0, 1.0}));
}

TEST_F(AutomationFileTest, SkipsEmptyLinesAndAByteOrderMarkAndNeedsNoLastLineBreak) {
  EXPECT_EQ(read("\xEF\xBB\xBF"
                 "0,Feedback 1,50\n\n  \n1,Feedback 1,60")
                .size(),
            2u);
  EXPECT_TRUE(read("").empty());
}

TEST_F(AutomationFileTest, NamesTheFileAndTheLineThatItCannotRead) {
  for (const char* line : {"x,Feedback 1,5", "-1,Feedback 1,5", "nan,Feedback 1,5", "1,Feedback 1",
                           "1,Feedback 1,5,6", "nothing", "1,Nothing 1,5", "1,Feedback 1,soft",
                           "1,Feedback 1,1e9", "1,Feedback 1,", "1,#1095,5", ",Feedback 1,5"}) {
    const std::string why = refusal(std::string("0,Feedback 1,1\n\n") + line + "\n");
    EXPECT_EQ(why.rfind(path + ": line 3: ", 0), 0u) << why;
    EXPECT_EQ(why.find('\n'), std::string::npos) << why;
  }
}

TEST_F(AutomationFileTest, SaysThatTheFileCannotBeRead) {
  for (const std::string& name : {folder.file("absent.csv"), folder.name()}) {
    const std::string why =
        failureOf(ExitCode::workFailed, [&] { readAutomationFile(name, bank, 48000.0); });
    EXPECT_EQ(why.rfind(name + ": ", 0), 0u) << why;
  }
}

}  // namespace
}  // namespace orvantesco::cli
