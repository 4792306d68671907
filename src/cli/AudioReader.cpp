#include "cli/AudioReader.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "cli/Failure.h"
#include "cli/Text.h"

namespace orvantesco::cli {
namespace {

constexpr const char* expectation = "expected an audio file of 1 or 2 channels, 8 to 768 kHz";

/// The file is opened here and not by the library, which gives some names a meaning of its own.
int openForReading(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) {
    throw workFailed(fmt::format("{}: cannot be read: {}", path, std::strerror(errno)));
  }
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(descriptor);
    throw workFailed(fmt::format("{}: is a folder, {}", path, expectation));
  }
  return descriptor;
}

std::string reasonOf(SNDFILE* file) { return oneLine(sf_strerror(file)); }

}  // namespace

AudioReader::AudioReader(const std::string& path) : name(path) {
  const int descriptor = openForReading(path);
  file.reset(sf_open_fd(descriptor, SFM_READ, &info, SF_TRUE));
  if (file == nullptr) {
    throw workFailed(fmt::format("{}: no audio: {}; {}", path, reasonOf(nullptr), expectation));
  }
  refuseWhatCannotPlay();
}

void AudioReader::refuseWhatCannotPlay() const {
  if (info.channels > maxChannels || info.channels < 1) {
    throw workFailed(fmt::format("{}: has {} channels, expected 1 or 2", name, info.channels));
  }
  if (sampleRate() < lowestRateHz || sampleRate() > highestRateHz) {
    throw workFailed(fmt::format("{}: has a sample rate of {} Hz, expected 8000 to 768000 Hz", name,
                                 info.samplerate));
  }
  if (info.frames == 0) {
    throw workFailed(fmt::format("{}: holds no frames, expected at least one", name));
  }
}

std::int64_t AudioReader::frames() const noexcept {
  return info.frames == SF_COUNT_MAX ? -1 : info.frames;
}

int AudioReader::read(double* const* buffers, int count) {
  interleaved.resize(static_cast<std::size_t>(count) * static_cast<std::size_t>(channels()));
  const int got = static_cast<int>(sf_readf_double(file.get(), interleaved.data(), count));
  framesRead += got;
  if (got < count) checkForEarlyEnd();
  spread(buffers, got, count);
  return got;
}

void AudioReader::checkForEarlyEnd() const {
  if (sf_error(file.get()) != SF_ERR_NO_ERROR) {
    throw workFailed(fmt::format("{}: cannot be read on behind frame {}: {}", name, framesRead,
                                 reasonOf(file.get())));
  }
  if (frames() >= 0 && framesRead < frames()) {
    throw workFailed(
        fmt::format("{}: ends after {} frames, expected {}", name, framesRead, frames()));
  }
  if (framesRead == 0) {
    throw workFailed(fmt::format("{}: holds no frames, expected at least one", name));
  }
}

void AudioReader::spread(double* const* buffers, int got, int count) {
  const auto step = static_cast<std::size_t>(channels());
  for (std::size_t channel = 0; channel < step; ++channel) {
    double* buffer = buffers[channel];
    for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i) {
      const double sample = interleaved[i * step + channel];
      const bool finite = std::isfinite(sample);
      buffer[i] = finite ? sample : 0.0;
      nonFinite += finite ? 0 : 1;
    }
    std::fill(buffer + got, buffer + count, 0.0);
  }
}

}  // namespace orvantesco::cli
