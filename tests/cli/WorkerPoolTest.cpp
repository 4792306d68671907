#include "cli/WorkerPool.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "cli/AudioFiles.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

void ignoreProgress(std::size_t) {}

TEST(WorkerPool, ReturnsWhatEachTaskReturnedInTheOrderOfTheTasks) {
  for (const int workers : {1, 2, 100}) {
    std::vector<std::size_t> progress;
    const auto results = WorkerPool(workers).run(
        20, [](std::size_t number) { return "task " + std::to_string(number); },
        [&](std::size_t finished) { progress.push_back(finished); });
    ASSERT_EQ(results.size(), 20u);
    for (std::size_t i = 0; i < 20; ++i) {
      EXPECT_EQ(results[i].output, "task " + std::to_string(i));
      EXPECT_EQ(results[i].exitCode, ExitCode::done);
    }
    ASSERT_EQ(progress.size(), 20u);
    EXPECT_EQ(progress.back(), 20u);
  }
}

TEST(WorkerPool, RunsEveryTaskInAProcessOfItsOwn) {
  const auto results = WorkerPool(3).run(
      6, [](std::size_t) { return std::to_string(::getpid()); }, ignoreProgress);
  std::set<std::string> processes{std::to_string(::getpid())};
  for (const WorkerResult& result : results) processes.insert(result.output);
  EXPECT_EQ(processes.size(), 7u);
}

TEST(WorkerPool, KeepsTheOthersGoingWhenATaskFailsOrDies) {
  const auto results = WorkerPool(2).run(
      5,
      [](std::size_t number) -> std::string {
        if (number == 1) throw workFailed("expected by the test");
        if (number == 2) throw badCall("expected by the test");
        if (number == 3) ::raise(SIGKILL);
        return "done";
      },
      ignoreProgress);
  EXPECT_EQ(results[0].output, "done");
  EXPECT_EQ(results[1].exitCode, ExitCode::workFailed);
  EXPECT_EQ(results[2].exitCode, ExitCode::badCall);
  EXPECT_EQ(results[3].exitCode, ExitCode::workFailed);
  EXPECT_EQ(results[3].signal, SIGKILL);
  EXPECT_EQ(results[4].output, "done");
}

}  // namespace
}  // namespace orvantesco::cli
