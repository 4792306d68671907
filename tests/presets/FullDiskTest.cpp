// Saves on a file system that is really full: a small one of memory, in a namespace of a child's
// own.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "presets/FileContent.h"
#include "presets/PresetBackup.h"
#include "support/FolderRig.h"

namespace orvantesco {
namespace {

constexpr int kForbidden = 77;

void put(const char* path, const std::string& text) {
  const int file = ::open(path, O_WRONLY | O_CLOEXEC);
  if (file < 0) return;
  const ssize_t ignored = ::write(file, text.data(), text.size());
  static_cast<void>(ignored);
  ::close(file);
}

/// Mounts 64 kB of memory on a folder that only this process sees. False where that is forbidden.
bool mountSmallDisk(const std::string& folder) {
  const std::string user = std::to_string(::getuid());
  const std::string group = std::to_string(::getgid());
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  put("/proc/self/setgroups", "deny");
  put("/proc/self/uid_map", "0 " + user + " 1");
  put("/proc/self/gid_map", "0 " + group + " 1");
  return ::mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

/// Runs `check` in a child whose `folder` is a small disk; its number, 0 for success.
template <class Check>
int onSmallDisk(const std::string& folder, Check check) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(mountSmallDisk(folder) ? check() : kForbidden);
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string contentOf(const std::string& path) {
  const auto content = readFile(path, 1u << 20);
  const auto* const text = std::get_if<std::string>(&content);
  return text != nullptr ? *text : "";
}

std::ptrdiff_t filesIn(const std::string& folder) {
  const std::filesystem::directory_iterator files(folder);
  return std::distance(begin(files), end(files));
}

void fill(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  const std::string piece(4096, 'x');
  while (::write(file, piece.data(), piece.size()) > 0) {
  }
  ::close(file);
}

TEST(FullDisk, LeavesTheOldFileWholeAndNothingBesideIt) {
  const FolderRig rig;
  const std::string folder = rig.path();
  const int result = onSmallDisk(folder, [&] {
    const std::string preset = folder + "/a.txt";
    const std::string oldText(20000, 'o');
    if (!writeFile(preset, oldText).empty()) return 1;
    fill(folder + "/rest");
    if (writeFile(preset, std::string(30000, 'n')) != "No space left on device") return 2;
    if (keepPresetBackup(preset, "") != "No space left on device") return 3;
    if (contentOf(preset) != oldText) return 4;
    return filesIn(folder) == 2 ? 0 : 5;
  });
  if (result == kForbidden) GTEST_SKIP() << "this system lets nobody mount a disk of his own";
  EXPECT_EQ(result, 0) << "the number of the step that failed";
}

}  // namespace
}  // namespace orvantesco
