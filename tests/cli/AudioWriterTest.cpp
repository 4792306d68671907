#include "cli/AudioWriter.h"

#include <gtest/gtest.h>

#include "cli/AudioFiles.h"
#include "cli/Failing.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

class AudioWriterTest : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& samples, const Sound& sound) {
    AudioWriter writer(folder.file(name),
                       {audioFormatFor(name, samples), double(sound.rate), 1000});
    const auto frames = static_cast<int>(sound.frames());
    const double* left = sound.channels[0].data();
    const double* right = sound.channels[1].data();
    for (int done = 0; done < frames; done += 100) {
      writer.write(left + done, right + done, std::min(100, frames - done));
    }
    writer.commit();
    clipped = writer.clippedSamples();
  }
  TemporaryFolder folder;
  std::int64_t clipped = 0;
};

struct Case {
  const char* name;
  const char* samples;
  int format;
  double tolerance;
};

class EveryFormat : public AudioWriterTest, public testing::WithParamInterface<Case> {};

TEST_P(EveryFormat, HoldsWhatWasWritten) {
  const Sound sound = noise(1000, 11);
  write(GetParam().name, GetParam().samples, sound);
  const Sound read = readSound(folder.file(GetParam().name));
  ASSERT_EQ(read.frames(), sound.frames());
  EXPECT_EQ(read.rate, 48000);
  EXPECT_EQ(formatOf(folder.file(GetParam().name)), GetParam().format);
  double worst = 0.0;
  for (std::size_t i = 0; i < 1000; ++i) {
    worst = std::max(worst, std::abs(read.channels[0][i] - sound.channels[0][i]));
    worst = std::max(worst, std::abs(read.channels[1][i] - sound.channels[1][i]));
  }
  EXPECT_LE(worst, GetParam().tolerance);
}

TEST_P(EveryFormat, GivesTheSameBytesForTheSameFrames) {
  write(GetParam().name, GetParam().samples, noise(1000, 12));
  const std::string first = bytesOf(folder.file(GetParam().name));
  write(GetParam().name, GetParam().samples, noise(1000, 12));
  EXPECT_EQ(bytesOf(folder.file(GetParam().name)), first);
}

TEST_P(EveryFormat, LeavesNothingBesideTheFile) {
  write(GetParam().name, GetParam().samples, noise(1000, 13));
  EXPECT_EQ(folder.entries(), std::vector<std::string>{GetParam().name});
}

constexpr double float32Step = 6e-8;
INSTANTIATE_TEST_SUITE_P(
    All, EveryFormat,
    testing::Values(Case{"a.wav", "", SF_FORMAT_WAV | SF_FORMAT_FLOAT, float32Step},
                    Case{"b.wav", "double", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 0.0},
                    Case{"c.wav", "pcm16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1.0 / 32768.0},
                    Case{"d.WAV", "pcm24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1.0 / 8388608.0},
                    Case{"e.aiff", "", SF_FORMAT_AIFF | SF_FORMAT_FLOAT, float32Step},
                    Case{"f.aif", "double", SF_FORMAT_AIFF | SF_FORMAT_DOUBLE, 0.0},
                    Case{"g.aiff", "pcm24", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 1.0 / 8388608.0},
                    Case{"h.flac", "", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 1.0 / 8388608.0},
                    Case{"i.flac", "pcm16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1.0 / 32768.0},
                    Case{"j.ogg", "", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 2.0}));

TEST_F(AudioWriterTest, GivesALongVorbisFileTheSameBytesTwice) {
  write("a.ogg", "", noise(200000, 14));
  write("b.ogg", "", noise(200000, 14));
  EXPECT_EQ(bytesOf(folder.file("a.ogg")), bytesOf(folder.file("b.ogg")));
  EXPECT_EQ(readSound(folder.file("a.ogg")).frames(), 200000u);
}

TEST_F(AudioWriterTest, ClipsWhatAnIntegerFormatCannotHoldAndCountsIt) {
  Sound sound = silence(10);
  sound.channels[0][3] = 1.5;
  sound.channels[1][4] = -7.0;
  write("a.wav", "pcm16", sound);
  EXPECT_EQ(clipped, 2);
  EXPECT_NEAR(readSound(folder.file("a.wav")).channels[0][3], 1.0, 1e-4);
  EXPECT_EQ(readSound(folder.file("a.wav")).channels[1][4], -1.0);
  write("b.wav", "float", sound);
  EXPECT_EQ(clipped, 0);
  EXPECT_EQ(readSound(folder.file("b.wav")).channels[1][4], -7.0);
}

TEST_F(AudioWriterTest, UsesLengthsOf64BitsOnlyWhereTheFileMayNeedThem) {
  const AudioFormat format = audioFormatFor("a.wav", "double");
  for (const std::int64_t most : {std::int64_t{-1}, std::int64_t{1} << 40}) {
    AudioWriter writer(folder.file("a.wav"), {format, 48000.0, most});
    const Sound sound = noise(100, 15);
    writer.write(sound.channels[0].data(), sound.channels[1].data(), 100);
    writer.commit();
    EXPECT_EQ(readSound(folder.file("a.wav")).channels, sound.channels);
  }
  const std::int64_t beyondAiff = std::int64_t{1} << 40;
  failureOf(ExitCode::workFailed, [&] {
    AudioWriter(folder.file("a.aiff"), {audioFormatFor("a.aiff", ""), 48000.0, beyondAiff});
  });
}

TEST_F(AudioWriterTest, LeavesTheOldFileWhereTheNewOneIsNotCommitted) {
  writeBytes(folder.file("a.wav"), "old");
  {
    AudioWriter writer(folder.file("a.wav"), {audioFormatFor("a.wav", ""), 48000.0, 1000});
    const Sound sound = noise(100, 16);
    writer.write(sound.channels[0].data(), sound.channels[1].data(), 100);
  }
  EXPECT_EQ(bytesOf(folder.file("a.wav")), "old");
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"a.wav"});
}

TEST(AudioFormat, RefusesPairsThatDoNotExist) {
  for (const auto& [name, samples] :
       std::vector<std::pair<std::string, std::string>>{{"a.flac", "float"},
                                                        {"a.flac", "double"},
                                                        {"a.ogg", "pcm16"},
                                                        {"a.ogg", "float"},
                                                        {"a.mp3", ""},
                                                        {"a", ""},
                                                        {"a.wav", "pcm32"},
                                                        {"a.wav", "vorbis"}}) {
    failureOf(ExitCode::badCall, [&, n = name, s = samples] { audioFormatFor(n, s); });
  }
}

}  // namespace
}  // namespace orvantesco::cli
