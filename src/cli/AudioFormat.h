#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orvantesco::cli {

enum class Container { wav, flac, aiff, ogg };
enum class SampleFormat { pcm16, pcm24, float32, float64, vorbis };

/// How the output is stored.
struct AudioFormat {
  Container container = Container::wav;
  SampleFormat samples = SampleFormat::float32;

  /// The format as libsndfile knows it. WAV files that may pass 4 GiB carry 64-bit lengths.
  int libraryFormat(bool large) const;

  /// Bytes of a frame of two channels; 0 where they are compressed.
  int bytesPerFrame() const;

  bool isInteger() const {
    return samples == SampleFormat::pcm16 || samples == SampleFormat::pcm24;
  }
};

/// The container that the extension of a file name stands for, none for any other extension.
std::optional<Container> containerOf(const std::string& path);

/// The format of an output file: the container by the extension of its name, the samples by name
/// (empty: the container's own default). Throws a `Failure` for a pair that does not exist.
AudioFormat audioFormatFor(const std::string& path, const std::string& samplesName);

/// Throws a `Failure` where the name is none of the sample formats.
void checkSampleFormatName(const std::string& samplesName);

}  // namespace orvantesco::cli
