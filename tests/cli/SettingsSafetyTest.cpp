// Presets and states whose writing fails or is cut off: what bore the name before is still whole.

#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "cli/SettingsFixture.h"
#include "support/CutOff.h"

namespace orvantesco::cli {
namespace {

/// A step of a save and the call to the kernel that it is.
struct Step {
  const char* name;
  long call;
};

constexpr std::array steps{Step{"write", SYS_write}, Step{"sync", SYS_fsync},
                           Step{"rename", SYS_rename}};

class SettingsSafety : public SettingsTest {
 protected:
  SettingsSafety() {
    write("old.txt", old);
    write("old.state", "as it was");
  }

  ProgramResult runWith(const Arguments& arguments, const ProgramRun::Limits& limits) {
    return ProgramRun(folder.name(), arguments, limits).finish();
  }
  ProgramResult cutOff(const Arguments& arguments, const CutOff& cut) {
    ProgramRun::Limits limits;
    limits.cut = cut;
    return runWith(arguments, limits);
  }

  void expectFailure(const ProgramResult& result, const std::string& mention) {
    EXPECT_EQ(result.exitCode, 1) << result.err;
    EXPECT_EQ(linesOf(result.err), 1) << result.err;
    EXPECT_NE(result.err.find(mention), std::string::npos) << result.err;
  }

  const std::string old = presetOf(13, "LastPage 4 EParams:\nFX1FB 13\n");
  const Arguments savePreset{"preset", "save", "-o", "old.txt", "--set", "Feedback 1=25"};
  const Arguments saveState{"state", "save", "-o", "old.state", "--set", "Feedback 1=25"};
  const Arguments upgrade{"preset", "upgrade", "old.txt"};
};

TEST_F(SettingsSafety, ASaveThatIsEndedAtAnyStepLeavesTheOldFile) {
  for (const Step& step : steps) {
    EXPECT_EQ(cutOff(savePreset, endedAt(step.call)).exitCode, 128 + SIGSYS) << step.name;
    EXPECT_EQ(read("old.txt"), old) << step.name;
    EXPECT_EQ(cutOff(saveState, endedAt(step.call)).exitCode, 128 + SIGSYS) << step.name;
    EXPECT_EQ(read("old.state"), "as it was") << step.name;
  }
  outputOf(savePreset);
  EXPECT_NE(read("old.txt").find("Feedback1 25\n"), std::string::npos)
      << "what was left stops none";
}

TEST_F(SettingsSafety, AnUpgradeThatIsEndedAtAnyStepLeavesTheOldFile) {
  for (const Step& step : steps) {
    EXPECT_EQ(cutOff(upgrade, endedAt(step.call)).exitCode, 128 + SIGSYS) << step.name;
    EXPECT_EQ(read("old.txt"), old) << step.name;
    const bool isKept = std::filesystem::exists(folder.file("old.txt.bak"));
    EXPECT_TRUE(!isKept || read("old.txt.bak") == old) << "the copy is whole or not there";
  }
  EXPECT_EQ(outputOf(upgrade), "old.txt: version 13 is now 14\n");
  EXPECT_EQ(read("old.txt.bak"), old);
}

TEST_F(SettingsSafety, AStepThatFailsIsToldAndLeavesTheOldFileAlone) {
  const auto before = folder.entries();
  for (const Step& step : {steps[1], steps[2]}) {
    const CutOff cut = failingAt(step.call, ENOSPC);
    expectFailure(cutOff(savePreset, cut), "old.txt: cannot be written: No space left on device");
    expectFailure(cutOff(saveState, cut), "old.state: cannot be written: No space left on device");
    expectFailure(cutOff(upgrade, cut), "old.txt: cannot be rewritten: No space left on device");
    EXPECT_EQ(read("old.txt"), old) << step.name;
    EXPECT_EQ(read("old.state"), "as it was") << step.name;
    EXPECT_EQ(folder.entries(), before) << step.name;
  }
}

TEST_F(SettingsSafety, AFileThatMayNotGrowIsToldAndTheOldOneStays) {
  const auto before = folder.entries();
  ProgramRun::Limits limits;
  limits.fileBytes = 100;
  expectFailure(runWith(savePreset, limits), "old.txt: cannot be written: File too large");
  expectFailure(runWith(saveState, limits), "old.state: cannot be written: File too large");
  // Enough for the copy of the old file, and not for the new one.
  limits.fileBytes = static_cast<long>(old.size()) + 20;
  expectFailure(runWith(upgrade, limits), "old.txt: cannot be rewritten: File too large");
  EXPECT_EQ(read("old.txt"), old);
  EXPECT_EQ(read("old.state"), "as it was");
  std::filesystem::remove(folder.file("old.txt.bak"));
  EXPECT_EQ(folder.entries(), before);
}

TEST_F(SettingsSafety, AFullDiskIsToldWhereverTheOutputGoes) {
  expectRefusal(1, {"preset", "save", "-o", "/dev/full"}, "/dev/full: cannot be written");
  expectRefusal(1, {"state", "save", "-o", "/dev/full"}, "/dev/full: cannot be written");
  std::filesystem::create_symlink("/dev/full", folder.file("full"));
  expectRefusal(1, {"preset", "save", "-o", "full"}, "full: cannot be written");
}

TEST_F(SettingsSafety, AFolderThatMayNotBeWrittenIsToldAndStaysAsItIs) {
  std::filesystem::create_directory(folder.file("shut"));
  write("shut/old.txt", old);
  for (const char* name : {".", "shut", "shut/old.txt"}) {
    ::chmod(folder.file(name).c_str(), 0755);
  }
  ProgramRun::Limits limits;
  limits.ordinaryUser = true;
  // A user's own file in a folder that is another's.
  ::chmod(folder.file("shut/old.txt").c_str(), 0666);
  ::chmod(folder.file("shut").c_str(), 0555);
  expectFailure(runWith({"preset", "upgrade", "shut/old.txt"}, limits), "Permission denied");
  expectFailure(runWith({"preset", "save", "-o", "shut/old.txt"}, limits), "Permission denied");
  expectFailure(runWith({"state", "save", "-o", "shut/new.state"}, limits), "Permission denied");
  EXPECT_EQ(read("shut/old.txt"), old);
  ::chmod(folder.file("shut").c_str(), 0755);
  const auto left = std::filesystem::directory_iterator(folder.file("shut"));
  EXPECT_EQ(std::distance(begin(left), end(left)), 1);
}

}  // namespace
}  // namespace orvantesco::cli
