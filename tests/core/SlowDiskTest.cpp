// While a preset is read from a slow disk or written to it, a host saves and restores all the same.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>

#include "core/LibraryRig.h"
#include "support/HeldThread.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr long kReading = SYS_openat;
constexpr long kWriting = SYS_fsync;  ///< the last step before the file takes its name

class SlowDisk : public LibraryRig {
 protected:
  void SetUp() override {
    if (!HeldThread::works()) GTEST_SKIP() << "this system lets no program hold its own calls";
  }

  /// Begins something that then waits for the disk.
  void begin(long call, std::function<void()> work) {
    slow = std::make_unique<HeldThread>(call, std::move(work));
    ASSERT_TRUE(slow->isHeld());
  }

  /// Whether something of the host ends before the disk answers.
  static bool endsMeanwhile(std::future<void>& work) {
    return work.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
  }

  Bytes saved() { return StateBytes::bytesOf(one.state()); }

  /// What a host saves before the disk answers; nothing where it has to wait.
  Bytes savedMeanwhile() {
    Bytes bytes;
    auto host = std::async(std::launch::async, [&] { bytes = saved(); });
    const bool isDone = endsMeanwhile(host);
    if (!isDone) slow->finish();
    host.wait();
    return isDone ? bytes : Bytes{};
  }

  bool restoresMeanwhile(const StateChunk& state) {
    auto host = std::async(std::launch::async, [&] { one.rig.effect.UnserializeState(state, 0); });
    const bool isDone = endsMeanwhile(host);
    if (!isDone) slow->finish();
    host.wait();
    return isDone;
  }

  std::string valuesIn(const std::string& path) const {
    const std::string text = tree.content(path);
    return text.substr(text.find("EParams:\n") + 9);
  }

  StateChunk ofB = stateOfB();
  LibraryInstance one{library};
  std::unique_ptr<HeldThread> slow;
};

TEST_F(SlowDisk, AHostSavesTheSettingsBeforeWhileAPresetIsRead) {
  one.step();
  const Bytes before = saved();
  begin(kReading, [this] { one.step(); });
  EXPECT_EQ(differences(savedMeanwhile(), before), "") << "selection, name and values go together";
  slow->finish();
  EXPECT_EQ(differences(saved(), StateBytes::bytesOf(ofB)), "");
}

TEST_F(SlowDisk, APresetThatIsReadSlowlyComesWholeBehindAStateThatWasQuicker) {
  one.setFeedback(44.0);
  begin(kReading, [this] { one.step(); });
  EXPECT_TRUE(restoresMeanwhile(ofB));
  EXPECT_EQ(one.feedback(), 22.0);
  slow->finish();
  EXPECT_EQ(one.feedback(), 11.0);
  EXPECT_EQ(one.label() + " " + one.selected(), "A U:User Presets /User Presets/A");
}

TEST_F(SlowDisk, AHostSavesWhileAPresetIsWritten) {
  one.setFeedback(55.0);
  const Bytes before = saved();
  begin(kWriting, [this] { one.saveAs(tree.full("/User Presets/New.txt")); });
  EXPECT_EQ(differences(savedMeanwhile(), before), "");
  one.setFeedback(66.0);
  slow->finish();
  EXPECT_EQ(valuesIn("/User Presets/New.txt"), "Feedback1 55\n") << "as when it was saved";
  EXPECT_EQ(one.label() + " " + one.selected(), "New U:User Presets /User Presets/New");
}

TEST_F(SlowDisk, AStateThatIsRestoredWhileAPresetIsWrittenKeepsItsOwnName) {
  one.setFeedback(55.0);
  begin(kWriting, [this] { one.saveAs(tree.full("/User Presets/New.txt")); });
  EXPECT_TRUE(restoresMeanwhile(ofB));
  slow->finish();
  EXPECT_EQ(valuesIn("/User Presets/New.txt"), "Feedback1 55\n");
  EXPECT_EQ(one.feedback(), 22.0);
  EXPECT_EQ(one.label() + " " + one.selected(), "B U:Deep /User Presets/Deep/B");
}

TEST_F(SlowDisk, AHostSavesWhatWasLoadedWhileItsOldFileIsRewritten) {
  tree.addFile("/User Presets/A.txt", presetWith(13, "Feedback1 77\n"));
  begin(kWriting, [this] { one.step(); });
  EXPECT_EQ(one.feedback(), 77.0);
  const Bytes meanwhile = savedMeanwhile();
  slow->finish();
  EXPECT_EQ(differences(meanwhile, saved()), "");
  EXPECT_NE(tree.content("/User Presets/A.txt").find("PresetVersion: 14"), std::string::npos);
}

TEST_F(SlowDisk, AFileThatIsNoneChangesNothingButTheNameHoweverLongItTakes) {
  tree.addFile("/User Presets/A.txt", "RIFF");
  begin(kReading, [this] { one.step(); });
  EXPECT_TRUE(restoresMeanwhile(ofB));
  slow->finish();
  EXPECT_EQ(one.feedback(), 22.0);
  EXPECT_EQ(one.rig.effect.settings().presetName(), "WRONG FILE");
}

}  // namespace
}  // namespace orvantesco
