#include <sys/stat.h>

#include <filesystem>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {
namespace {

namespace fs = std::filesystem;

/// Calls and files that cannot be rendered: one line, the right exit code, nothing left behind.
class RenderRefusal : public RenderTest {
 protected:
  RenderRefusal() { input(noise(4800, 51)); }

  void expectBadOption(const Arguments& options, const std::string& mention) {
    expectRefusal(2, Arguments{"in.wav", "-o", "out.wav"} + options, mention);
  }
  void expectBadInput(const std::string& name, const std::string& mention) {
    expectRefusal(1, {name, "-o", "out.wav"}, mention);
  }
  void expectBadOutput(const std::string& name, const std::string& mention) {
    expectRefusal(1, {"in.wav", "-o", name}, mention);
  }
};

TEST_F(RenderRefusal, NamesTheOptionWhoseValueIsNone) {
  expectBadOption({"--tempo", "fast"}, "--tempo");
  expectBadOption({"--tempo", "0"}, "--tempo");
  expectBadOption({"--tempo", "-120"}, "--tempo");
  expectBadOption({"--tempo", "nan"}, "--tempo");
  expectBadOption({"--tempo", "inf"}, "--tempo");
  expectBadOption({"--tempo", "1,5"}, "--tempo");
  expectBadOption({"--time-signature", "4"}, "--time-signature");
  expectBadOption({"--time-signature", "4/5"}, "--time-signature");
  expectBadOption({"--time-signature", "0/4"}, "--time-signature");
  expectBadOption({"--time-signature", "3/4/4"}, "--time-signature");
  expectBadOption({"--start", "soon"}, "--start");
  expectBadOption({"--block", "0"}, "--block");
  expectBadOption({"--block", "1.5"}, "--block");
  expectBadOption({"--block", "random"}, "--block");
  expectBadOption({"--block", "random:"}, "--block");
  expectBadOption({"--block", "random:x"}, "--block");
  expectBadOption({"--tail", "-1"}, "--tail");
  expectBadOption({"--tail", "long"}, "--tail");
  expectBadOption({"--warm-up", "-0.1"}, "--warm-up");
  expectBadOption({"--seed", "-1"}, "--seed");
  expectBadOption({"--seed", "4294967296"}, "--seed");
  expectBadOption({"--jobs", "0"}, "--jobs");
  expectBadOption({"--format", "mp3"}, "--format");
}

TEST_F(RenderRefusal, KnowsNoOptionThatItHasNoEngineFor) {
  for (const char* option : {"--taps", "--step-fx", "--step-mod"}) {
    expectBadOption({option, "x"}, option);
  }
  expectBadOption({"--nothing"}, "--nothing");
}

TEST_F(RenderRefusal, NeedsThePresetAndTheStateThatItIsToStartFrom) {
  input(noise(100, 1));
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--preset", "no such preset"}, "no such preset");
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--state", "none.state"}, "none.state");
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--state", "in.wav"}, "in.wav: is no state block");
}

TEST_F(RenderRefusal, NamesTheParameterAndWhatItTakes) {
  expectBadOption({"--set", "Feedback 1"}, "NAME=VALUE");
  expectBadOption({"--set", "Fedback 1=5"}, "Feedback1");
  expectBadOption({"--set", "#1095=5"}, "#1095");
  expectBadOption({"--set", "Delay Mode 1=SIDEWAYS"}, "BACKWARD");
  expectBadOption({"--set", "Delay TimeL 1=0.5"}, "1..4000 ms");
  expectBadOption({"--set", "Feedback 1=n:1.5"}, "0..1");
  expectBadOption({"--set", "FX1 FB=PEAK"}, "VARAIBLE LPHP");
}

TEST_F(RenderRefusal, NamesTheLineOfAnAutomationFile) {
  writeBytes(folder.file("moves.csv"), "0,Feedback 1,50\n1;Feedback 1;50\n");
  expectBadOption({"--automation", "moves.csv"}, "moves.csv: line 2: ");
  writeBytes(folder.file("moves.csv"), "0,Feedback 1,50\n\n1,Nothing,50\n");
  expectBadOption({"--automation", "moves.csv"}, "moves.csv: line 3: ");
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--automation", "absent.csv"}, "absent.csv");
}

TEST_F(RenderRefusal, NeedsInputsAndOnePlaceForTheOutput) {
  expectRefusal(2, {"-o", "out.wav"}, "INPUT");
  expectRefusal(2, {"in.wav"}, "-o FILE or --output-dir");
  expectRefusal(2, {"in.wav", "-o", "out.wav", "--output-dir", "."}, "-o FILE or --output-dir");
  expectRefusal(2, {"in.wav", "in.wav", "-o", "out.wav"}, "--output-dir");
  expectRefusal(2, {"in.wav", "sub/in.wav", "--output-dir", "new"}, "new/in.wav");
}

TEST_F(RenderRefusal, RefusesFormatsThatTheContainerDoesNotHave) {
  expectRefusal(2, {"in.wav", "-o", "out.flac", "--format", "float"}, "out.flac");
  expectRefusal(2, {"in.wav", "-o", "out.flac", "--format", "double"}, "out.flac");
  expectRefusal(2, {"in.wav", "-o", "out.ogg", "--format", "pcm16"}, "out.ogg");
  expectRefusal(2, {"in.wav", "-o", "out.mp3"}, "out.mp3");
  expectRefusal(2, {"in.wav", "-o", "out"}, "out");
}

TEST_F(RenderRefusal, RefusesFilesThatAreNoAudio) {
  expectBadInput("absent.wav", "absent.wav: ");
  writeBytes(folder.file("notes.wav"), "no audio at all\n");
  expectBadInput("notes.wav", "notes.wav: ");
  writeBytes(folder.file("empty.wav"), "");
  expectBadInput("empty.wav", "empty.wav: ");
  writeBytes(folder.file("cut.wav"), bytesOf(folder.file("in.wav")).substr(0, 30));
  expectBadInput("cut.wav", "cut.wav: ");
  fs::create_directory(folder.file("dir.wav"));
  expectBadInput("dir.wav", "dir.wav: ");
  expectBadInput("in.wav/below.wav", "in.wav/below.wav: ");
}

TEST_F(RenderRefusal, RefusesAudioThatCannotPlay) {
  writeSound(folder.file("none.wav"), silence(0));
  expectBadInput("none.wav", "no frames");
  writeSound(folder.file("three.wav"), noise(100, 1, 3));
  expectBadInput("three.wav", "3 channels");
  writeSound(folder.file("slow.wav"), noise(100, 1, 2, 8));
  expectBadInput("slow.wav", "8 Hz");
  writeSound(folder.file("fast.wav"), noise(100, 1, 2, 1000000));
  expectBadInput("fast.wav", "1000000 Hz");
}

TEST_F(RenderRefusal, RefusesACompressedFileThatEndsEarlyInTheMiddleOfTheRender) {
  writeSound(folder.file("cut.flac"), noise(200000, 1), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
  fs::resize_file(folder.file("cut.flac"), fs::file_size(folder.file("cut.flac")) / 2);
  expectBadInput("cut.flac", "cut.flac: ");
}

TEST_F(RenderRefusal, RefusesASideChainThatDoesNotFit) {
  writeSound(folder.file("side.wav"), noise(100, 1, 1, 44100));
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--sidechain", "side.wav"}, "44100 Hz");
  expectRefusal(1, {"in.wav", "-o", "out.wav", "--sidechain", "absent.wav"}, "absent.wav");
}

TEST_F(RenderRefusal, NeverOverwritesWhatItReads) {
  writeSound(folder.file("side.wav"), noise(100, 1));
  fs::create_symlink("in.wav", folder.file("link.wav"));
  fs::create_directory(folder.file("sub"));
  const std::string before = bytesOf(folder.file("in.wav"));
  expectRefusal(2, {"in.wav", "-o", "in.wav"}, "in.wav");
  expectRefusal(2, {"in.wav", "-o", "sub/../in.wav"}, "in.wav");
  expectRefusal(2, {"in.wav", "-o", "link.wav"}, "link.wav");
  expectRefusal(2, {"in.wav", "--output-dir", "."}, "in.wav");
  expectRefusal(2, {"in.wav", "-o", "side.wav", "--sidechain", "side.wav"}, "side.wav");
  EXPECT_EQ(bytesOf(folder.file("in.wav")), before);
}

TEST_F(RenderRefusal, RefusesOutputsThatAreNoRegularFiles) {
  ASSERT_EQ(::mkfifo(folder.file("pipe.wav").c_str(), 0600), 0);
  fs::create_directory(folder.file("dir.wav"));
  fs::create_symlink("/dev/full", folder.file("full.wav"));
  fs::create_symlink("nowhere", folder.file("broken.wav"));
  for (const char* name : {"pipe.wav", "dir.wav", "full.wav", "broken.wav"}) {
    expectBadOutput(name, name);
  }
}

TEST_F(RenderRefusal, RefusesFoldersThatCannotBeWritten) {
  expectBadOutput("absent/out.wav", "absent/out.wav: ");
  expectBadOutput("in.wav/out.wav", "in.wav/out.wav: ");
  expectBadOutput("/proc/out.wav", "/proc/out.wav: ");
  expectRefusal(1, {"in.wav", "--output-dir", "in.wav/below"}, "in.wav/below");
}

class FullDisk : public RenderTest, public testing::WithParamInterface<const char*> {};

TEST_P(FullDisk, EndsTheRenderAndLeavesTheOldFile) {
  const std::string name = GetParam();
  input(noise(200000, 52));
  writeBytes(folder.file(name), "what was there before");
  const auto before = folder.entries();
  ProgramRun run(folder.name(), {"render", "in.wav", "-o", name, "--tail", "0"}, {50000});
  const ProgramResult result = run.finish();
  EXPECT_EQ(result.exitCode, 1) << result.err;
  EXPECT_EQ(linesOf(result.err), 1) << result.err;
  EXPECT_NE(result.err.find(name + ": cannot be written: File too large"), std::string::npos)
      << result.err;
  EXPECT_EQ(folder.entries(), before);
  EXPECT_EQ(bytesOf(folder.file(name)), "what was there before");
}

INSTANTIATE_TEST_SUITE_P(Containers, FullDisk,
                         testing::Values("out.wav", "out.flac", "out.aiff", "out.ogg"));

TEST_F(RenderRefusal, SaysThatStatsCannotBeWritten) {
  const std::string command = "cd " + folder.name() +
                              " && '" ORVANTESCO_PROGRAM
                              "' render in.wav -o out.wav --stats >/dev/full 2>err.txt";
  const int status = std::system(command.c_str());
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_NE(bytesOf(folder.file("err.txt")).find("stdout"), std::string::npos);
}

}  // namespace
}  // namespace orvantesco::cli
