#include "cli/AudioFiles.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace orvantesco::cli {

void writeSound(const std::string& path, const Sound& sound, int format) {
  SF_INFO info{};
  info.samplerate = sound.rate;
  info.channels = static_cast<int>(sound.channels.size());
  info.format = format;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error("cannot write " + path);
  std::vector<double> interleaved;
  for (std::size_t i = 0; i < sound.frames(); ++i) {
    for (const auto& channel : sound.channels) interleaved.push_back(channel[i]);
  }
  sf_writef_double(file, interleaved.data(), static_cast<sf_count_t>(sound.frames()));
  sf_close(file);
}

Sound readSound(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) throw std::runtime_error("cannot read " + path);
  const auto channels = static_cast<std::size_t>(info.channels);
  const auto frames = static_cast<std::size_t>(info.frames);
  std::vector<double> interleaved(channels * frames);
  sf_readf_double(file, interleaved.data(), info.frames);
  sf_close(file);
  Sound sound{info.samplerate, std::vector<std::vector<double>>(channels)};
  for (std::size_t i = 0; i < interleaved.size(); ++i) {
    sound.channels[i % channels].push_back(interleaved[i]);
  }
  return sound;
}

int formatOf(const std::string& path) {
  SF_INFO info{};
  SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
  if (file != nullptr) sf_close(file);
  return info.format;
}

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

Sound silence(std::size_t frames, std::size_t channels, int rate) {
  return {rate, std::vector<std::vector<double>>(channels, std::vector<double>(frames, 0.0))};
}

Sound noise(std::size_t frames, unsigned seed, std::size_t channels, int rate) {
  Sound sound = silence(frames, channels, rate);
  std::mt19937 draw(seed);
  for (auto& channel : sound.channels) {
    for (double& sample : channel) sample = static_cast<double>(draw()) / 4294967296.0 - 0.5;
  }
  return sound;
}

Sound impulse(std::size_t frames, std::size_t at, std::size_t channels, int rate) {
  Sound sound = silence(frames, channels, rate);
  for (auto& channel : sound.channels) channel[at] = 1.0;
  return sound;
}

}  // namespace orvantesco::cli
