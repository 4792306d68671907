#include "cli/AudioReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <limits>

#include "cli/AudioFiles.h"
#include "cli/Failing.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

using testing::Test;

class AudioReaderTest : public Test {
 protected:
  std::string write(const Sound& sound, int format = SF_FORMAT_WAV | SF_FORMAT_DOUBLE) {
    writeSound(folder.file("in.wav"), sound, format);
    return folder.file("in.wav");
  }
  std::string failure(const std::string& path) {
    return failureOf(ExitCode::workFailed, [&] {
      AudioReader reader(path);
      readAll(reader, 4096);
    });
  }
  static Sound readAll(AudioReader& reader, int block) {
    Sound sound = silence(0, static_cast<std::size_t>(reader.channels()));
    sound.rate = static_cast<int>(reader.sampleRate());
    std::vector<double> left(static_cast<std::size_t>(block));
    std::vector<double> right(static_cast<std::size_t>(block));
    double* buffers[] = {left.data(), right.data()};
    for (int got = block; got == block;) {
      got = reader.read(buffers, block);
      for (std::size_t i = 0; i < sound.channels.size(); ++i) {
        sound.channels[i].insert(sound.channels[i].end(), buffers[i], buffers[i] + got);
      }
    }
    return sound;
  }
  TemporaryFolder folder;
};

TEST_F(AudioReaderTest, GivesTheSamplesExactlyInPiecesOfAnyLength) {
  const Sound sound = noise(1000, 3);
  for (const int block : {1, 7, 500, 1000, 4096}) {
    AudioReader reader(write(sound));
    EXPECT_EQ(reader.channels(), 2);
    EXPECT_EQ(reader.frames(), 1000);
    EXPECT_EQ(reader.sampleRate(), 48000.0);
    EXPECT_EQ(readAll(reader, block).channels, sound.channels) << block;
  }
}

TEST_F(AudioReaderTest, ClearsTheRestOfABufferBehindTheEnd) {
  AudioReader reader(write(noise(10, 1, 1)));
  std::vector<double> buffer(20, 9.0);
  double* buffers[] = {buffer.data()};
  EXPECT_EQ(reader.read(buffers, 20), 10);
  EXPECT_EQ(std::vector<double>(buffer.begin() + 10, buffer.end()), std::vector<double>(10, 0.0));
  EXPECT_EQ(reader.read(buffers, 20), 0);
}

TEST_F(AudioReaderTest, GivesSamplesThatAreNotFiniteAsZeroAndCountsThem) {
  Sound sound = noise(100, 5);
  sound.channels[0][3] = std::numeric_limits<double>::quiet_NaN();
  sound.channels[1][50] = std::numeric_limits<double>::infinity();
  sound.channels[1][51] = -std::numeric_limits<double>::infinity();
  AudioReader reader(write(sound));
  const Sound read = readAll(reader, 64);
  EXPECT_EQ(reader.nonFiniteSamples(), 3);
  EXPECT_EQ(read.channels[0][3], 0.0);
  EXPECT_EQ(read.channels[1][50], 0.0);
  EXPECT_EQ(read.channels[1][51], 0.0);
  EXPECT_EQ(read.channels[0][4], sound.channels[0][4]);
}

TEST_F(AudioReaderTest, ReadsEveryRateFromEightToSevenHundredSixtyEightKilohertz) {
  for (const int rate : {8000, 11025, 44100, 96000, 768000}) {
    AudioReader reader(write(noise(10, 1, 1, rate)));
    EXPECT_EQ(reader.sampleRate(), rate);
  }
}

TEST_F(AudioReaderTest, RefusesRatesChannelsAndLengthsThatCannotPlay) {
  EXPECT_NE(failure(write(noise(10, 1, 1, 8))).find("8 Hz"), std::string::npos);
  EXPECT_NE(failure(write(noise(10, 1, 1, 1000000))).find("1000000 Hz"), std::string::npos);
  EXPECT_NE(failure(write(noise(10, 1, 3))).find("3 channels"), std::string::npos);
  EXPECT_NE(failure(write(silence(0))).find("no frames"), std::string::npos);
}

TEST_F(AudioReaderTest, NamesTheFileThatIsNoAudio) {
  const std::string path = folder.file("notes.txt");
  for (const std::string& bytes : {std::string("just some text, no audio at all\n"), std::string(),
                                   std::string("RIFF"), std::string(100, '\0')}) {
    writeBytes(path, bytes);
    EXPECT_EQ(failure(path).rfind(path + ": ", 0), 0u) << bytes;
  }
}

TEST_F(AudioReaderTest, RefusesAHeaderThatIsCutShort) {
  const std::string whole = bytesOf(write(noise(100, 1)));
  for (const std::size_t length : {8U, 20U, 30U, 43U}) {
    writeBytes(folder.file("cut.wav"), whole.substr(0, length));
    EXPECT_NE(failure(folder.file("cut.wav")), "") << length;
  }
}

TEST_F(AudioReaderTest, RefusesACompressedFileThatEndsEarly) {
  const std::string path = write(noise(100000, 1), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
  std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
  EXPECT_NE(failure(path), "");
}

TEST_F(AudioReaderTest, RefusesWhatCannotBeOpened) {
  EXPECT_NE(failure(folder.file("absent.wav")).find("No such file"), std::string::npos);
  EXPECT_NE(failure(folder.name()).find("folder"), std::string::npos);
  EXPECT_NE(failure("-").find("No such file"), std::string::npos) << "a name, not stdin";
}

}  // namespace
}  // namespace orvantesco::cli
