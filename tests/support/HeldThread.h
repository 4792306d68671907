#pragma once

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>
#include <utility>

namespace orvantesco {

/// Runs something on a thread of its own, in which a call to the kernel takes as long as the test
/// likes, as one to a slow disk may.
class HeldThread {
 public:
  HeldThread(long call, std::function<void()> work)
      : thread([this, call, todo = std::move(work)] {
          listener = holdBack(call);
          todo();
          isOver = true;
        }) {}
  HeldThread(const HeldThread&) = delete;
  HeldThread& operator=(const HeldThread&) = delete;
  ~HeldThread() { finish(); }

  /// Whether the kernel lets a program hold its own calls; a sandbox may forbid it.
  static bool works() {
    int opened = kNone;
    std::thread([&opened] { opened = holdBack(SYS_getppid); }).join();
    if (opened >= 0) ::close(opened);
    return opened >= 0;
  }

  /// Waits until the thread is in the call. False where it never comes there, or the kernel cannot
  /// hold it.
  bool isHeld() {
    while (listener == kNotYet) std::this_thread::yield();
    while (!isOver && listener >= 0) {
      if (isWaiting()) return true;
    }
    return false;
  }

  /// Lets the call and all that follow go on, and returns when the work is done.
  void finish() {
    while (!isOver) {
      if (listener >= 0 && isWaiting()) letGo();
    }
    if (thread.joinable()) thread.join();
    const int opened = listener.exchange(kNone);
    if (opened >= 0) ::close(opened);
  }

 private:
  static constexpr int kNotYet = -2;
  static constexpr int kNone = -1;

  /// Returns what tells of the calls of this thread.
  static int holdBack(long call) {
    std::array<sock_filter, 4> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{filter.size(), filter.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return kNone;
    return static_cast<int>(::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER,
                                      SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
  }

  bool isWaiting() const {
    constexpr int patienceMs = 5;
    pollfd told{listener, POLLIN, 0};
    return ::poll(&told, 1, patienceMs) == 1 && (told.revents & POLLIN) != 0;
  }

  void letGo() const {
    seccomp_notif asked{};
    if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) return;
    seccomp_notif_resp answer{};
    answer.id = asked.id;
    answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    ::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
  }

  std::atomic<int> listener{kNotYet};
  std::atomic<bool> isOver{false};
  std::thread thread;
};

}  // namespace orvantesco
