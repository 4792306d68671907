#pragma once

#include "core/TriggerFlags.h"
#include "fx/Shared.h"
#include "host/HostTimeInfo.h"

namespace orvantesco {

/// Follows the host's tempo and transport: beats, bars and the clock that goes on while the
/// transport stands. Audio thread only, but for the tempo, which any thread may ask for.
class TempoTracker {
 public:
  /// Takes the tempo of a host call, in beats per minute. A value that is not finite or not above
  /// 0 is ignored. `hostRate` in Hz is the host's own, for the stopped clock counts its time.
  void takeTempo(double beatsPerMinute, double hostRate) noexcept;

  /// Advances by one sub-block and raises the pulses that fall into it.
  void advance(const HostTimeInfo& time, TriggerFlags& triggers) noexcept;

  /// Nothing has been played yet. The tempo stays.
  void restart() noexcept;

  /// Beats per minute. Any thread.
  double tempo() const noexcept { return tempoNow; }
  /// Length of a beat in seconds; tempos below 30 count as 30 here. Any thread.
  double secondsPerBeat() const noexcept { return beatSeconds; }
  /// Song position in quarter notes, never below 0.
  double position() const noexcept { return beatPosition; }
  /// Up from a change of tempo until a sub-block has seen it.
  bool tempoChanged() const noexcept { return changed; }
  void tempoSeen() noexcept { changed = false; }

 private:
  void raisePulses(int numerator, TriggerFlags& triggers) noexcept;

  Shared<double> tempoNow{120.0};
  Shared<double> beatSeconds{0.5};
  double beatsPerSample = 1.0 / (0.5 * 44100.0);
  double rate = 44100.0;
  double freeRunSamples = 0.0;
  double beatPosition = 0.0;
  double lastBeat = 0.0;
  double lastBar = 0.0;
  bool changed = false;
  bool firstCall = true;
};

}  // namespace orvantesco
