#include "cli/ParamsCommand.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

namespace orvantesco::cli {
namespace {

/// Sends stdout elsewhere for its lifetime.
class Redirection {
 public:
  explicit Redirection(const char* path) : kept(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    const int target = open(path, O_WRONLY);
    dup2(target, STDOUT_FILENO);
    close(target);
  }
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;
  ~Redirection() {
    std::fflush(stdout);
    std::clearerr(stdout);
    dup2(kept, STDOUT_FILENO);
    close(kept);
  }

 private:
  int kept;
};

TEST(ParamsCommand, PrintsWhatWasAskedFor) {
  testing::internal::CaptureStdout();
  const int code = runParams({.json = false, .match = "Dry Level"});
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "#1066 Dry Level                   double 75.0 %        0..100 %\n");
  EXPECT_EQ(code, 0);
}

TEST(ParamsCommand, PrintsJsonWhereItIsWanted) {
  testing::internal::CaptureStdout();
  const int code = runParams({.json = true, .match = "no such thing"});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "{\n  \"parameters\": []\n}\n");
  EXPECT_EQ(code, 0);
}

TEST(ParamsCommand, AnOutputThatTakesNothingIsReported) {
  testing::internal::CaptureStderr();
  int code = 0;
  {
    const Redirection full("/dev/full");
    code = runParams({.json = true, .match = ""});
  }
  EXPECT_EQ(code, 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "orvantesco: params: cannot write to standard output\n");
}

}  // namespace
}  // namespace orvantesco::cli
