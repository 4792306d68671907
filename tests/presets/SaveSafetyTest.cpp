// A save that fails at any step, or is ended there, leaves the old file whole.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "presets/FileContent.h"
#include "presets/PresetScan.h"
#include "support/CutOff.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

constexpr const char* kFile = "/User Presets/Slap.txt";

const std::string oldText = "Orvantesco, as it was";
const std::string newText(20000, 'n');

struct Step {
  const char* name;
  std::vector<long> calls;  ///< the machine has one of them
};

const std::vector<Step>& steps() {
  static const std::vector<Step> all{
      {"open", {SYS_openat}},   {"write", {SYS_write}},
      {"sync", {SYS_fsync}},    {"close", {SYS_close}},
#ifdef SYS_rename
      {"rename", {SYS_rename}},
#else
      {"rename", {SYS_renameat, SYS_renameat2}},
#endif
  };
  return all;
}

class SaveSafety : public ::testing::Test {
 protected:
  SaveSafety() { tree.addFile(kFile, oldText); }

  int save() const { return writeFile(tree.full(kFile), newText).empty() ? 0 : 1; }

  std::vector<std::string> listed() const {
    std::vector<std::string> names;
    for (const PresetEntry& file : scanPresets(tree.root()).presetFiles) names.push_back(file.name);
    return names;
  }

  std::size_t filesInFolder() const {
    const std::filesystem::directory_iterator folder(tree.folders().userPresetPath());
    return static_cast<std::size_t>(std::distance(begin(folder), end(folder)));
  }

  PresetTree tree;
};

TEST_F(SaveSafety, AStepThatFailsLeavesTheOldFileAndNoOther) {
  for (const Step& step : steps()) {
    for (const int error : {ENOSPC, EIO, EACCES, EDQUOT}) {
      const int status =
          statusOfChild(failingAt(step.calls.front(), error), [&] { return save(); });
      ASSERT_TRUE(WIFEXITED(status)) << step.name;
      EXPECT_EQ(WEXITSTATUS(status), 1) << step.name << ": the failure is told";
      EXPECT_EQ(tree.content(kFile), oldText) << step.name;
      EXPECT_EQ(filesInFolder(), 1u) << step.name;
    }
  }
}

TEST_F(SaveSafety, AnEndBetweenTwoStepsLeavesTheOldFileAndNothingInTheMenu) {
  for (const Step& step : steps()) {
    const int status = statusOfChild(endedAt(step.calls.front()), [&] { return save(); });
    ASSERT_TRUE(WIFSIGNALED(status)) << step.name << ": the step was reached";
    EXPECT_EQ(WTERMSIG(status), SIGSYS) << step.name;
    EXPECT_EQ(tree.content(kFile), oldText) << step.name;
    EXPECT_EQ(listed(), std::vector<std::string>{"Slap"}) << step.name;
  }
}

TEST_F(SaveSafety, ADiskThatFillsUpInTheMiddleLeavesTheOldFile) {
  const pid_t child = ::fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{newText.size() / 2, newText.size() / 2};
    ::_exit(::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? save() : kNoFilter);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_EQ(tree.content(kFile), oldText);
  EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(SaveSafety, WhatAnEndedProcessLeftBehindStopsNoSaveOfItsNumber) {
  // The names that the next saves of this process would take.
  for (int count = 0; count < 200; ++count) {
    tree.addFile("/User Presets/.Slap.txt." + std::to_string(::getpid()) + "-" +
                     std::to_string(count) + ".unfinished",
                 "half");
  }
  EXPECT_EQ(save(), 0);
  EXPECT_EQ(tree.content(kFile), newText);
}

TEST_F(SaveSafety, SavesAtTheSameTimeLeaveOneOfThemWhole) {
  const auto saveOften = [&](char letter) {
    for (int i = 0; i < 8; ++i) writeFile(tree.full(kFile), std::string(20000, letter));
  };
  std::thread other(saveOften, 'b');
  saveOften('a');
  other.join();
  const std::string content = tree.content(kFile);
  EXPECT_TRUE(content == std::string(20000, 'a') || content == std::string(20000, 'b'));
  EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(SaveSafety, ANewFileTakesNoNameThatIsTaken) {
  EXPECT_FALSE(writeNewFile(tree.full(kFile), newText).isWritten);
  EXPECT_EQ(tree.content(kFile), oldText);
  tree.addLink("/User Presets/Link.txt", "nowhere");
  EXPECT_FALSE(writeNewFile(tree.full("/User Presets/Link.txt"), newText).isWritten);
  const NewFileResult made = writeNewFile(tree.full("/User Presets/New.txt"), newText);
  EXPECT_TRUE(made.isWritten);
  EXPECT_EQ(made.fault, "");
  EXPECT_EQ(tree.content("/User Presets/New.txt"), newText);
  EXPECT_EQ(filesInFolder(), 3u);
}

TEST_F(SaveSafety, ANameThatIsTakenAtTheLastMomentStays) {
  // As if another process had been quicker: the rename finds the name taken.
  const std::string path = tree.full("/User Presets/New.txt");
  const int status = statusOfChild(failingAt(SYS_renameat2, EEXIST), [&] {
    const NewFileResult result = writeNewFile(path, newText);
    return !result.isWritten && result.fault.empty() ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(SaveSafety, WhereTheDiskKnowsNoSuchRenameANewFileIsMadeAllTheSame) {
  const std::string path = tree.full("/User Presets/New.txt");
  const int status = statusOfChild(failingAt(SYS_renameat2, EINVAL), [&] {
    return writeNewFile(path, newText).isWritten && !writeNewFile(path, oldText).isWritten ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(tree.content("/User Presets/New.txt"), newText);
  EXPECT_EQ(filesInFolder(), 2u);
}

}  // namespace
}  // namespace orvantesco
