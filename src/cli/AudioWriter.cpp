#include "cli/AudioWriter.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>

#include "cli/Failure.h"
#include "cli/OggSerial.h"
#include "cli/Text.h"

namespace orvantesco::cli {
namespace {

constexpr int channels = 2;

/// Lengths in WAV and AIFF files are 32-bit numbers; the rest is room for headers.
constexpr std::int64_t largestPlainBytes = 0xFFFFFFFF - 65536;

OutputFile& outputOf(void* user) { return *static_cast<OutputFile*>(user); }

/// The library writes through these, so that the error number of a failed write is ours to tell.
SF_VIRTUAL_IO ioOfOutputFile() {
  SF_VIRTUAL_IO io{};
  io.get_filelen = [](void* user) -> sf_count_t { return outputOf(user).size(); };
  io.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
    return outputOf(user).seek(offset, whence);
  };
  io.read = [](void* target, sf_count_t bytes, void* user) -> sf_count_t {
    return outputOf(user).read(target, bytes);
  };
  io.write = [](const void* source, sf_count_t bytes, void* user) -> sf_count_t {
    return outputOf(user).write(source, bytes);
  };
  io.tell = [](void* user) -> sf_count_t { return outputOf(user).seek(0, SEEK_CUR); };
  return io;
}

bool mayPass4GiB(const AudioWriter::Plan& plan) {
  if (plan.format.bytesPerFrame() == 0) return false;
  return plan.mostFrames < 0 || plan.mostFrames > largestPlainBytes / plan.format.bytesPerFrame();
}

}  // namespace

AudioWriter::AudioWriter(const std::string& path, const Plan& plan)
    : output(path), format(plan.format) {
  if (plan.mostFrames > 0) refuseLengthBeyondContainer(plan.mostFrames);
  open(plan, mayPass4GiB(plan));
}

/// WAV has a form for any length, and what is compressed counts its length in frames.
void AudioWriter::refuseLengthBeyondContainer(std::int64_t frames) const {
  if (format.container != Container::aiff) return;
  if (frames <= largestPlainBytes / format.bytesPerFrame()) return;
  throw workFailed(fmt::format(
      "{}: would pass the 4 GiB that AIFF can hold, expected .wav or .flac", output.path()));
}

void AudioWriter::open(const Plan& plan, bool large) {
  SF_INFO info{};
  info.channels = channels;
  info.samplerate = static_cast<int>(plan.sampleRateHz);
  info.format = format.libraryFormat(large);
  SF_VIRTUAL_IO io = ioOfOutputFile();
  file.reset(sf_open_virtual(&io, SFM_WRITE, &info, &output));
  if (output.failed()) output.throwFault();
  if (file == nullptr) {
    throw workFailed(
        fmt::format("{}: cannot be written: {}", output.path(), oneLine(sf_strerror(nullptr))));
  }
  // The chunk of peaks holds the time of day, and equal calls have to give equal files.
  sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
  sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
  if (large) sf_command(file.get(), SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
}

void AudioWriter::write(const double* left, const double* right, int frames) {
  framesWritten += frames;
  refuseLengthBeyondContainer(framesWritten);
  interleaved.resize(static_cast<std::size_t>(frames) * channels);
  for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
    interleaved[2 * i] = left[i];
    interleaved[2 * i + 1] = right[i];
  }
  if (format.isInteger()) {
    for (const double sample : interleaved) clipped += std::abs(sample) > 1.0 ? 1 : 0;
  }
  const sf_count_t written = sf_writef_double(file.get(), interleaved.data(), frames);
  if (written != frames || output.failed()) output.throwFault();
}

void AudioWriter::commit() {
  file.reset();
  if (format.container == Container::ogg && !output.failed()) fixOggSerial(output);
  output.commit();
}

}  // namespace orvantesco::cli
