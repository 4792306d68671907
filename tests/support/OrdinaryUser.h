#pragma once

#include <unistd.h>

#include <stdexcept>

namespace orvantesco {

/// While it lives, the process has no more rights to files than any user, whoever runs the tests.
/// What such a user is to write into must be open to everybody.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (isRoot && ::seteuid(nobody) != 0) throw std::runtime_error("cannot become another user");
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (isRoot) (void)!::seteuid(0);
  }

 private:
  const bool isRoot = ::geteuid() == 0;
};

}  // namespace orvantesco
