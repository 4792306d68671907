#pragma once

#include "host/clap/ClapHost.h"

namespace orvantesco {

/// Checks that the host calls each operation on the thread that the standard gives it. A build
/// for users checks nothing; the others report a mistake to the host's log and go on.
class ClapThreads {
 public:
  explicit ClapThreads(const ClapHost& clapHost) noexcept : host(clapHost) {}

  void expectMain(const char* operation) const noexcept { expect(Role::main, operation); }
  void expectAudio(const char* operation) const noexcept { expect(Role::audio, operation); }

 private:
  enum class Role { main, audio };
#ifdef NDEBUG
  void expect(Role, const char*) const noexcept {}
#else
  void expect(Role role, const char* operation) const noexcept;
#endif

  [[maybe_unused]] const ClapHost& host;
};

}  // namespace orvantesco
