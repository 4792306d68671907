// A preset that is brought up to date in the library, or saved there, while the process is ended or
// the disk is full.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "params/ParamIndex.h"
#include "support/CutOff.h"
#include "support/EngineRig.h"
#include "support/FolderRig.h"

namespace orvantesco {
namespace {

const std::string kFile = "Presets/User Presets/Old.txt";
const std::string kBackup = "Preset Backups/User Presets/Old.txt";
const std::string old =
    "Orvantesco V. 1.1.0r9 PresetFile!\nPresetVersion: 9\n\nLastPage\n4\nStepFX\n1 2 3 4\n\n"
    "EParams:\nFeedback1 66\nFeedback2 67\nFeedback3 68\nFeedback4 69\n";

/// Where a cut is met: while the old file is copied, or, with the copy there, behind that.
enum class Phase { backup, rewrite };

class PresetRewriteSafety : public ::testing::Test {
 protected:
  PresetRewriteSafety() { rig.effect.settings().setPresetRoot(folder.file("Presets")); }

  void prepare(Phase phase) const {
    std::filesystem::remove_all(folder.file("Presets"));
    std::filesystem::remove_all(folder.file("Preset Backups"));
    folder.write(kFile, old);
    if (phase == Phase::rewrite) folder.write(kBackup, old);
  }

  /// 0 where the preset came into the engine.
  int load() {
    if (rig.effect.readPresetFile("/User Presets/Old.txt")) rig.effect.applyLoadedPreset();
    return rig.effect.GetParam(kFeedback)->value() == 66.0 ? 0 : 1;
  }
  int save() { return rig.effect.writePresetFile(folder.file(kFile), true) ? 1 : 0; }

  /// What bears a name is the old file or a copy of it, and the old file is there.
  void expectOldFileWhole(const std::string& when) const {
    EXPECT_EQ(folder.read(kFile), old) << when;
    for (const std::string& name : folder.files()) {
      if (name.ends_with(".unfinished")) continue;
      EXPECT_EQ(folder.read(name), old) << when << ": " << name;
    }
  }

  template <typename Work>
  int statusOnFullDisk(rlim_t bytes, Work work) const {
    const pid_t child = ::fork();
    if (child == 0) {
      std::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{bytes, bytes};
      ::_exit(::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? work() : kNoFilter);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
  }

  FolderRig folder;
  EngineRig rig;
};

struct Step {
  const char* name;
  long call;
};

const std::vector<Step> steps{{"write", SYS_write},
                              {"sync", SYS_fsync},
#ifdef SYS_rename
                              {"rename", SYS_rename}
#else
                              {"rename", SYS_renameat}
#endif
};

TEST_F(PresetRewriteSafety, AnEndBetweenTwoStepsOfARewriteLeavesTheOldFile) {
  for (const Phase phase : {Phase::backup, Phase::rewrite}) {
    for (const Step& step : steps) {
      prepare(phase);
      const int status = statusOfChild(endedAt(step.call), [this] { return load(); });
      ASSERT_TRUE(WIFSIGNALED(status)) << step.name << ": the step was reached";
      expectOldFileWhole(step.name);
    }
  }
}

TEST_F(PresetRewriteSafety, AStepThatFailsLeavesTheOldFileAndLoadsAllTheSame) {
  for (const Phase phase : {Phase::backup, Phase::rewrite}) {
    for (const Step& step : steps) {
      prepare(phase);
      const int status = statusOfChild(failingAt(step.call, ENOSPC), [this] { return load(); });
      EXPECT_EQ(status, 0) << step.name;
      expectOldFileWhole(step.name);
    }
  }
}

TEST_F(PresetRewriteSafety, AFullDiskLeavesTheOldFileAndLoadsAllTheSame) {
  for (const Phase phase : {Phase::backup, Phase::rewrite}) {
    prepare(phase);
    EXPECT_EQ(statusOnFullDisk(old.size() / 2, [this] { return load(); }), 0);
    expectOldFileWhole("a full disk");
  }
}

TEST_F(PresetRewriteSafety, ASaveOverAPresetIsWholeOrNotThere) {
  for (const Step& step : steps) {
    prepare(Phase::rewrite);
    ASSERT_TRUE(WIFSIGNALED(statusOfChild(endedAt(step.call), [this] { return save(); })));
    expectOldFileWhole(step.name);
  }
  prepare(Phase::rewrite);
  const int status = statusOnFullDisk(old.size() / 2, [this] { return save(); });
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 1) << "and the failure is told";
  expectOldFileWhole("a full disk");
}

TEST_F(PresetRewriteSafety, WithoutACutTheFileIsRewrittenAndKept) {
  prepare(Phase::backup);
  EXPECT_EQ(load(), 0);
  EXPECT_NE(folder.read(kFile).find("PresetVersion: 14"), std::string::npos);
  EXPECT_EQ(folder.read(kBackup), old);
}

TEST_F(PresetRewriteSafety, ADeviceThatTakesNothingIsNoPlaceForAPreset) {
  EXPECT_TRUE(rig.effect.writePresetFile("/dev/full", false));
}

}  // namespace
}  // namespace orvantesco
