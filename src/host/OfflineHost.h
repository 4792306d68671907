#pragma once

#include <cstdint>

#include "fx/Shared.h"
#include "host/HostPort.h"

namespace orvantesco {

/// A host without a workstation: the transport of the command line, of tests and of benchmarks.
///
/// The position is computed from the absolute frame, start + frame * tempo / (60 * rate), and never
/// summed up, so it is the same bit for bit however the audio is cut into blocks.
///
/// One thread renders: between two blocks it sets the transport and advances it by the frames that
/// it has rendered; the engine asks while the block runs. `latencySamples` may be read anywhere.
class OfflineHost : public HostPort {
 public:
  explicit OfflineHost(double rateHz = 44100.0) noexcept : rate(rateHz) {}
  OfflineHost(const OfflineHost&) = delete;
  OfflineHost& operator=(const OfflineHost&) = delete;

  /// Rate in Hz, tempo in beats per minute. Both keep the position that the transport has reached.
  void setSampleRate(double rateHz) noexcept;
  void setTempo(double beatsPerMinute) noexcept;

  void setTimeSignature(int numerator, int denominator) noexcept;

  /// Puts the transport to a position in quarter notes.
  void locate(double quarterNotes) noexcept;

  /// A transport that is stopped stands where it is: `advance` does not move it.
  void setRunning(bool runs) noexcept { running = runs; }

  /// Moves on by the frames of a block that has been rendered.
  void advance(int frames) noexcept;

  /// What the plug-in reported last, 0 before it did.
  int latencySamples() const noexcept { return latency; }

  double sampleRate() const noexcept override { return rate; }
  double tempo() const noexcept override { return beatsPerMinuteNow; }
  void transportAt(int frameInBlock, HostTimeInfo& info) const noexcept override;
  void latencyChanged(int samples) noexcept override { latency = samples; }

 private:
  double quarterNotesAt(std::int64_t frame) const noexcept;
  void rebase() noexcept;

  double rate = 44100.0;
  double beatsPerMinuteNow = 120.0;
  int numeratorNow = 4;
  int denominatorNow = 4;
  bool running = true;

  double start = 0.0;             ///< position of frame 0 in quarter notes
  std::int64_t framesPlayed = 0;  ///< frames since `start`, of the block's first frame

  Shared<int> latency{0};
};

}  // namespace orvantesco
