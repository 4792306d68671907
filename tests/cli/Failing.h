#pragma once

#include <gtest/gtest.h>

#include <string>

#include "cli/Failure.h"

namespace orvantesco::cli {

/// The message of the `Failure` that an action ends with; a test failure where it does not, or
/// where its exit code is another.
template <class Action>
std::string failureOf(ExitCode code, const Action& action) {
  try {
    action();
  } catch (const Failure& failure) {
    EXPECT_EQ(static_cast<int>(failure.exitCode()), static_cast<int>(code)) << failure.what();
    return failure.what();
  }
  ADD_FAILURE() << "did not fail";
  return "";
}

}  // namespace orvantesco::cli
