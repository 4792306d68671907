#include "cli/RenderJobs.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "cli/AudioFiles.h"
#include "cli/Failing.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

std::vector<std::string> outputsOf(const std::vector<RenderJob>& jobs) {
  std::vector<std::string> outputs;
  for (const RenderJob& job : jobs) outputs.push_back(job.output);
  return outputs;
}

TEST(RenderJobs, NameTheOutputsAsTheInputs) {
  const auto jobs = pairInputsWithOutputs({"a.wav", "in/b.flac", "c.mp3", "d"}, {"", "out"});
  EXPECT_EQ(outputsOf(jobs),
            (std::vector<std::string>{"out/a.wav", "out/b.flac", "out/c.wav", "out/d.wav"}));
}

TEST(RenderJobs, GiveOneInputTheOutputThatIsNamed) {
  EXPECT_EQ(outputsOf(pairInputsWithOutputs({"a.wav"}, {"b.ogg", ""})),
            std::vector<std::string>{"b.ogg"});
}

TEST(RenderJobs, NeedExactlyOnePlaceForTheOutput) {
  failureOf(ExitCode::badCall, [] { pairInputsWithOutputs({"a.wav"}, {"", ""}); });
  failureOf(ExitCode::badCall, [] { pairInputsWithOutputs({"a.wav"}, {"b.wav", "out"}); });
  failureOf(ExitCode::badCall, [] { pairInputsWithOutputs({"a.wav", "b.wav"}, {"c.wav", ""}); });
}

TEST(RenderJobs, RefuseTwoInputsThatWouldWriteOneOutput) {
  for (const char* second : {"other/a.wav", "a.mp3"}) {
    const std::string why = failureOf(ExitCode::badCall, [&] {
      pairInputsWithOutputs({"in/a.wav", second}, {"", "out"});
    });
    EXPECT_NE(why.find(second), std::string::npos) << why;
  }
}

TEST(RenderJobs, ProtectEveryFileThatTheCallReads) {
  const TemporaryFolder folder;
  for (const char* name : {"a.wav", "b.wav", "side.wav", "moves.csv"}) {
    writeBytes(folder.file(name), name);
  }
  std::filesystem::create_symlink("a.wav", folder.file("link.wav"));
  std::filesystem::create_hard_link(folder.file("a.wav"), folder.file("twin.wav"));
  RenderCall call;
  call.settings.sideChainFile = folder.file("side.wav");
  call.settings.automationFile = folder.file("moves.csv");
  call.jobs = {{folder.file("a.wav"), folder.file("x.wav")},
               {folder.file("b.wav"), folder.file("y.wav")}};
  EXPECT_NO_THROW(protectInputs(call));
  for (const char* name :
       {"a.wav", "./a.wav", "b.wav", "side.wav", "moves.csv", "link.wav", "twin.wav"}) {
    call.jobs[0].output = folder.file(name);
    failureOf(ExitCode::badCall, [&] { protectInputs(call); });
  }
}

TEST(RenderJobs, MakeTheFolderOfTheOutputs) {
  const TemporaryFolder folder;
  makeOutputFolder(folder.file("one/two"));
  EXPECT_TRUE(std::filesystem::is_directory(folder.file("one/two")));
  EXPECT_NO_THROW(makeOutputFolder(folder.file("one/two")));
  writeBytes(folder.file("file"), "");
  failureOf(ExitCode::workFailed, [&] { makeOutputFolder(folder.file("file")); });
  failureOf(ExitCode::workFailed, [&] { makeOutputFolder(folder.file("file/below")); });
}

}  // namespace
}  // namespace orvantesco::cli
