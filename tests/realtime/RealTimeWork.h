#pragma once

#include <gtest/gtest.h>

#include "realtime/AudioThreadGuard.h"

namespace orvantesco {

/// Runs `work` under the guard and fails if it asked for anything.
template <class Work>
void expectRealTime(const char* what, Work work) {
  if (!AudioThreadGuard::works()) return;  // a sanitizer owns the allocator in this build
  int allocations = 0, frees = 0, locks = 0;
  {
    const AudioThreadGuard guard;
    work();
    allocations = guard.allocations();
    frees = guard.frees();
    locks = guard.locks();
  }
  EXPECT_EQ(allocations, 0) << what;
  EXPECT_EQ(frees, 0) << what;
  EXPECT_EQ(locks, 0) << what;
}

}  // namespace orvantesco
