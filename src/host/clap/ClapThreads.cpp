#include "host/clap/ClapThreads.h"

#ifndef NDEBUG

#include <array>
#include <cstdio>

namespace orvantesco {

void ClapThreads::expect(Role role, const char* operation) const noexcept {
  if (!host.knowsThreads()) return;
  const bool isMain = role == Role::main;
  if (isMain ? host.isMainThread() : host.isAudioThread()) return;
  std::array<char, 128> message{};
  (void)std::snprintf(message.data(), message.size(), "%s belongs on the %s thread", operation,
                      isMain ? "main" : "audio");
  host.log(kClapLogHostMisbehaving, message.data());
}

}  // namespace orvantesco

#endif
