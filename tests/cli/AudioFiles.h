#pragma once

#include <sndfile.h>

#include <string>
#include <vector>

namespace orvantesco::cli {

/// The content of an audio file, each channel a vector.
struct Sound {
  int rate = 48000;
  std::vector<std::vector<double>> channels;

  std::size_t frames() const { return channels.empty() ? 0 : channels.front().size(); }
};

/// Writes and reads audio files with the library alone, without the program's own code.
void writeSound(const std::string& path, const Sound& sound,
                int format = SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
Sound readSound(const std::string& path);
int formatOf(const std::string& path);

std::string bytesOf(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);

/// Noise of the same seed is the same noise. Full scale is 0.5.
Sound noise(std::size_t frames, unsigned seed, std::size_t channels = 2, int rate = 48000);

/// Silence with one sample of 1 in every channel.
Sound impulse(std::size_t frames, std::size_t at, std::size_t channels = 2, int rate = 48000);

Sound silence(std::size_t frames, std::size_t channels = 2, int rate = 48000);

}  // namespace orvantesco::cli
