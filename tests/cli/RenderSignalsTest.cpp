#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {
namespace {

/// Tells when something is made in a folder.
class FolderWatch {
 public:
  explicit FolderWatch(const std::string& folder) : queue(::inotify_init1(IN_CLOEXEC)) {
    ::inotify_add_watch(queue, folder.c_str(), IN_CREATE);
  }
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;
  ~FolderWatch() { ::close(queue); }

  bool waitForEntry() const {
    pollfd ready{queue, POLLIN, 0};
    constexpr int patienceMs = 60000;
    return ::poll(&ready, 1, patienceMs) == 1;
  }

 private:
  int queue;
};

/// A tail of a day takes longer than any test.
const Arguments endless{"--tail", "86400", "--set", "Feedback 1=100"};

class RenderSignals : public RenderTest, public testing::WithParamInterface<int> {
 protected:
  RenderSignals() {
    std::filesystem::create_directory(folder.file("out"));
    input(noise(4800, 71));
    writeSound(folder.file("second.wav"), noise(4800, 72));
  }
  /// Ends a render as soon as its output is begun.
  ProgramResult interrupted(const Arguments& arguments) {
    const FolderWatch watch(folder.file("out"));
    ProgramRun run(folder.name(), Arguments{"render"} + arguments + endless);
    EXPECT_TRUE(watch.waitForEntry());
    ::kill(run.process(), GetParam());
    return run.finish();
  }
};

TEST_P(RenderSignals, RemoveTheUnfinishedOutputAndLeaveTheOldOne) {
  writeBytes(folder.file("out/out.wav"), "old");
  const ProgramResult result = interrupted({"in.wav", "-o", "out/out.wav"});
  EXPECT_EQ(result.exitCode, 128 + GetParam());
  EXPECT_EQ(bytesOf(folder.file("out/out.wav")), "old");
  const auto left = std::filesystem::directory_iterator(folder.file("out"));
  EXPECT_EQ(std::distance(begin(left), end(left)), 1);
}

TEST_P(RenderSignals, EndAllWorkersAndRemoveWhatTheyBegan) {
  const ProgramResult result =
      interrupted({"in.wav", "second.wav", "--output-dir", "out", "--jobs", "2"});
  EXPECT_EQ(result.exitCode, 128 + GetParam());
  EXPECT_TRUE(std::filesystem::is_empty(folder.file("out")));
}

INSTANTIATE_TEST_SUITE_P(ThatEndAProgram, RenderSignals, testing::Values(SIGINT, SIGTERM, SIGHUP));

}  // namespace
}  // namespace orvantesco::cli
