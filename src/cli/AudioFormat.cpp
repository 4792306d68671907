#include "cli/AudioFormat.h"

#include <fmt/format.h>
#include <sndfile.h>

#include <filesystem>

#include "cli/Failure.h"
#include "params/PlainText.h"

namespace orvantesco::cli {
namespace {

struct Extension {
  const char* text;
  Container container;
};
constexpr Extension extensions[] = {{".wav", Container::wav},
                                    {".flac", Container::flac},
                                    {".aiff", Container::aiff},
                                    {".aif", Container::aiff},
                                    {".ogg", Container::ogg}};

struct SampleName {
  const char* text;
  SampleFormat samples;
};
constexpr SampleName sampleNames[] = {{"pcm16", SampleFormat::pcm16},
                                      {"pcm24", SampleFormat::pcm24},
                                      {"float", SampleFormat::float32},
                                      {"double", SampleFormat::float64}};

std::optional<SampleFormat> samplesNamed(const std::string& name) {
  for (const SampleName& entry : sampleNames) {
    if (name == entry.text) return entry.samples;
  }
  return std::nullopt;
}

SampleFormat defaultSamples(Container container) {
  switch (container) {
    case Container::flac:
      return SampleFormat::pcm24;
    case Container::ogg:
      return SampleFormat::vorbis;
    case Container::wav:
    case Container::aiff:
      break;
  }
  return SampleFormat::float32;
}

bool exists(const AudioFormat& format) {
  switch (format.container) {
    case Container::flac:
      return format.isInteger();
    case Container::ogg:
      return format.samples == SampleFormat::vorbis;
    case Container::wav:
    case Container::aiff:
      break;
  }
  return format.samples != SampleFormat::vorbis;
}

int containerCode(Container container, bool large) {
  switch (container) {
    case Container::flac:
      return SF_FORMAT_FLAC;
    case Container::ogg:
      return SF_FORMAT_OGG;
    case Container::aiff:
      return SF_FORMAT_AIFF;
    case Container::wav:
      break;
  }
  return large ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
}

int samplesCode(SampleFormat samples) {
  switch (samples) {
    case SampleFormat::pcm16:
      return SF_FORMAT_PCM_16;
    case SampleFormat::pcm24:
      return SF_FORMAT_PCM_24;
    case SampleFormat::float32:
      return SF_FORMAT_FLOAT;
    case SampleFormat::float64:
      return SF_FORMAT_DOUBLE;
    case SampleFormat::vorbis:
      break;
  }
  return SF_FORMAT_VORBIS;
}

}  // namespace

int AudioFormat::libraryFormat(bool large) const {
  return containerCode(container, large) | samplesCode(samples);
}

int AudioFormat::bytesPerFrame() const {
  if (container == Container::flac || container == Container::ogg) return 0;
  switch (samples) {
    case SampleFormat::pcm16:
      return 4;
    case SampleFormat::pcm24:
      return 6;
    case SampleFormat::float32:
      return 8;
    case SampleFormat::float64:
      return 16;
    case SampleFormat::vorbis:
      break;
  }
  return 0;
}

std::optional<Container> containerOf(const std::string& path) {
  const std::string extension = lowered(std::filesystem::path(path).extension().string());
  for (const Extension& entry : extensions) {
    if (extension == entry.text) return entry.container;
  }
  return std::nullopt;
}

void checkSampleFormatName(const std::string& samplesName) {
  if (samplesNamed(samplesName)) return;
  throw badCall(fmt::format("--format: '{}' is none of pcm16, pcm24, float, double", samplesName));
}

AudioFormat audioFormatFor(const std::string& path, const std::string& samplesName) {
  const auto container = containerOf(path);
  if (!container) {
    throw badCall(fmt::format("{}: expected a name that ends in .wav, .flac, .aiff or .ogg", path));
  }
  AudioFormat format{*container, defaultSamples(*container)};
  if (samplesName.empty()) return format;
  checkSampleFormatName(samplesName);
  format.samples = *samplesNamed(samplesName);
  if (!exists(format)) {
    throw badCall(fmt::format("{}: --format {} does not exist in this container; expected {}", path,
                              samplesName,
                              *container == Container::ogg ? "no --format" : "pcm16 or pcm24"));
  }
  return format;
}

}  // namespace orvantesco::cli
