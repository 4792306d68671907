#pragma once

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>

namespace orvantesco {

/// What the kernel does to a process that makes a certain call.
struct CutOff {
  long call = -1;       ///< number of the call
  unsigned action = 0;  ///< what a filter of calls returns for it
};

inline CutOff endedAt(long call) { return {call, SECCOMP_RET_KILL_PROCESS}; }

inline CutOff failingAt(long call, int error) {
  return {call, SECCOMP_RET_ERRNO | (static_cast<unsigned>(error) & SECCOMP_RET_DATA)};
}

/// From here on the process meets the cut at its call. False where the kernel allows no filter.
inline bool meet(const CutOff& cut) {
  const auto number = static_cast<unsigned>(cut.call);
  std::array<sock_filter, 4> filter{{
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, cut.action),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  }};
  const sock_fprog program{filter.size(), filter.data()};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

inline constexpr int kNoFilter = 120;  ///< exit code of a child that could not be cut off

/// Runs something in a child that meets the cut, and returns how the child ended, as `waitpid` has
/// it. `work` returns the exit code.
template <typename Work>
int statusOfChild(const CutOff& cut, Work work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(meet(cut) ? work() : kNoFilter);
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

}  // namespace orvantesco
