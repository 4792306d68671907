#include "core/TempoTracker.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"

namespace orvantesco {

namespace {

// Slower than this, note lengths would outgrow the delay lines.
constexpr double kSlowestTempo = 30.0;

double usablePosition(double quarterNotes) {
  return std::isfinite(quarterNotes) ? std::max(quarterNotes, 0.0) : 0.0;
}

}  // namespace

void TempoTracker::takeTempo(double beatsPerMinute, double hostRate) noexcept {
  const bool usable = std::isfinite(beatsPerMinute) && beatsPerMinute > 0.0;
  const double tempo = usable ? beatsPerMinute : tempoNow.get();
  if (!firstCall && tempo == tempoNow && hostRate == rate) return;
  changed = changed || firstCall || tempo != tempoNow;
  firstCall = false;
  tempoNow = tempo;
  rate = hostRate;
  beatSeconds = 60.0 / std::max(tempo, kSlowestTempo);
  beatsPerSample = 1.0 / (beatSeconds * hostRate);
}

void TempoTracker::restart() noexcept {
  freeRunSamples = beatPosition = lastBeat = lastBar = 0.0;
  changed = firstCall = true;
}

void TempoTracker::advance(const HostTimeInfo& time, TriggerFlags& triggers) noexcept {
  if (time.transportIsRunning) {
    freeRunSamples = 0.0;
    beatPosition = usablePosition(time.ppqPos);
  } else {
    freeRunSamples += kVectorLength;
    beatPosition = freeRunSamples * beatsPerSample;
  }
  raisePulses(time.numerator, triggers);
}

void TempoTracker::raisePulses(int numerator, TriggerFlags& triggers) noexcept {
  const double beat = std::floor(beatPosition);
  const bool newBeat = beat != lastBeat;
  lastBeat = beat;
  const double bar = numerator < 1 ? 1.0 : std::trunc(beat / numerator);
  const bool newBar = bar != lastBar;
  lastBar = bar;
  triggers.quarterPulse = newBeat;
  triggers.barPulse = newBar;
  triggers.twoBarPulse = newBar && std::fmod(bar, 2.0) == 1.0;
}

}  // namespace orvantesco
