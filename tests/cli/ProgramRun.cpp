#include "cli/ProgramRun.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace orvantesco::cli {
namespace {

/// A file without a name, as large as it has to be.
int unnamedFile() { return ::memfd_create("stream", MFD_CLOEXEC); }

std::string contentOf(int descriptor) {
  struct stat status {};
  ::fstat(descriptor, &status);
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  const ssize_t got = ::pread(descriptor, text.data(), text.size(), 0);
  text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  return text;
}

[[noreturn]] void execute(const std::vector<std::string>& arguments) {
  std::vector<char*> pointers{const_cast<char*>(ORVANTESCO_PROGRAM)};
  for (const std::string& text : arguments) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  ::execv(ORVANTESCO_PROGRAM, pointers.data());
  ::_exit(127);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "orvantesco-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::vector<std::string> TemporaryFolder::entries() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

ProgramRun::ProgramRun(const std::string& folder, const std::vector<std::string>& arguments,
                       const Limits& limits)
    : out(unnamedFile()), err(unnamedFile()) {
  child = ::fork();
  if (child != 0) return;
  const rlimit fileSize{static_cast<rlim_t>(limits.fileBytes),
                        static_cast<rlim_t>(limits.fileBytes)};
  if (limits.fileBytes >= 0) ::setrlimit(RLIMIT_FSIZE, &fileSize);
  if (::chdir(folder.c_str()) != 0) ::_exit(126);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(err, STDERR_FILENO);
  constexpr uid_t nobody = 65534;
  if (limits.ordinaryUser && ::geteuid() == 0 && ::setuid(nobody) != 0) ::_exit(125);
  if (limits.cut && !meet(*limits.cut)) ::_exit(kNoFilter);
  execute(arguments);
}

ProgramRun::~ProgramRun() {
  if (child > 0) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
  }
  ::close(out);
  ::close(err);
}

ProgramResult ProgramRun::finish() {
  int status = 0;
  ::waitpid(child, &status, 0);
  child = -1;
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return {code, contentOf(out), contentOf(err)};
}

ProgramResult runProgramIn(const std::string& folder, const std::vector<std::string>& arguments) {
  return ProgramRun(folder, arguments).finish();
}

}  // namespace orvantesco::cli
