#include "mod/WaveLFO.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/Lanes.h"
#include "fx/RateValues.h"
#include "mod/WaveEntries.h"

namespace orvantesco {

namespace {

constexpr double kEntries = WaveRecord::kLength;
constexpr double kLastEntry = kEntries - 1.0;
// Whole entries, taken once at 44100 Hz: so the slowest LFO may stand still, and the fastest
// reaches 495 Hz there and more at higher rates.
constexpr double kMinIncrement = 0.0;
constexpr double kMaxIncrement = 46.0;
constexpr double kRateModulationHz = 500.0;
constexpr double kGlideFactor = 1.5;

double limitIncrement(double entriesPerSample) noexcept {
  if (!std::isfinite(entriesPerSample)) return kMinIncrement;
  return std::clamp(entriesPerSample, kMinIncrement, kMaxIncrement);
}

}  // namespace

void WaveLFO::setRate(double hz) noexcept {
  if (!std::isfinite(hz)) return;
  rateHz = hz;
  increment = limitIncrement(kEntries * hz / sampleRate);
}

void WaveLFO::rateChanged() noexcept {
  setRate(rateHz);
  glide.rateChanged();
}

void WaveLFO::restart() noexcept {
  phase = heldValue = firstValue = lastWave = 0.0;
  glide.snap(0.0);
}

void WaveLFO::setGlide(double ms) noexcept {
  if (ms == glideMs) return;
  glideMs = ms;
  glide.setTime(kGlideFactor * ms);
}

void WaveLFO::setWave(const WaveRecord* record) noexcept {
  if (table == record->samples) return;
  table = record->samples;
  // To be asked once for each wave, and not for each vector.
  tableIsWithin = vecStaysWithin(table, WaveRecord::kLength, 1.0);
  sampleAndHold = record->id == kSampleAndHoldWave;
}

void WaveLFO::setMode(Mode mode) noexcept {
  loop = mode == Mode::Loop;
  latch = mode == Mode::Latch;
}

void WaveLFO::setPolarity(Polarity polarity) noexcept {
  switch (polarity) {
    case Polarity::Positive:
      offset = scale = 0.5;
      break;
    case Polarity::Negative:
      offset = scale = -0.5;
      break;
    case Polarity::Bipolar:
      offset = 0.0;
      scale = 1.0;
      break;
  }
}

void WaveLFO::setPhase(double share) noexcept {
  phaseOffset = static_cast<int>(kLastEntry * std::clamp(share, 0.0, 1.0));
}

void WaveLFO::drawRandom() noexcept {
  heldValue = static_cast<double>(random.next()) / RandomDraw::kMax;
}

double WaveLFO::incrementNow() const noexcept {
  if (rateModSource == nullptr) return increment;
  const double hz = rateModDepth * rateModSource[0] * kRateModulationHz + rateHz;
  return limitIncrement(hz * kEntries / sampleRate);
}

/// Moves the phase on; true where the cycle starts anew.
bool WaveLFO::advance(double inc, bool triggered, bool restart) noexcept {
  bool wrapped = false;
  phase += inc;
  if (phase >= kEntries) {
    wrapped = loop || triggered;
    if (loop) {
      phase -= kEntries;
    } else {
      phase = triggered ? 0.0 : kEntries;
    }
  }
  if (!restart) return wrapped;
  phase = 0.0;
  return true;
}

int WaveLFO::entryAt(double position) const noexcept {
  const int entry = (static_cast<int>(position) + phaseOffset) & kEntryMask;
  return reverse ? kEntryMask - entry : entry;
}

/// The wave or the held levels through what may be a restart or the end of a cycle.
void WaveLFO::turn(double inc, bool triggered, double* wave) noexcept {
  bool wrapped = false;
  for (int i = 0; i < kVectorLength; ++i) {
    // One restart for each vector, at its first sample, though the flag stays up throughout.
    wrapped |= advance(inc, triggered, triggered && !latch && i == 0);
    // Sample and hold draws for every sample behind a wrap; the last draw stands.
    if (sampleAndHold && wrapped) drawRandom();
    wave[i] = sampleAndHold ? 2.0 * heldValue - 1.0 : table[entryAt(std::min(phase, kLastEntry))];
  }
}

/// The same where the phase meets no end.
void WaveLFO::sweep(double inc, double* wave) noexcept {
  WaveEntries entries;
  passEntries(inc, {phaseOffset, reverse ? kEntryMask : 0}, phase, entries);
  if (sampleAndHold) {
    vecSet(2.0 * heldValue - 1.0, wave, kVectorLength);
    return;
  }
  const double* const values = table;
  const auto valueAt = [&](int i) { return values[entries[static_cast<std::size_t>(i)]]; };
  for (int i = 0; i < kVectorLength; i += 4) {
    storeLanes(Lanes{valueAt(i), valueAt(i + 1)}, wave + i);
    storeLanes(Lanes{valueAt(i + 2), valueAt(i + 3)}, wave + i + 2);
  }
}

/// The same where the phase has come to its end and stays.
void WaveLFO::rest(double* wave) const noexcept {
  const double value = sampleAndHold ? 2.0 * heldValue - 1.0 : table[entryAt(kLastEntry)];
  vecSet(value, wave, kVectorLength);
}

void WaveLFO::process(double* out) noexcept {
  if (table == nullptr) return;
  const double inc = incrementNow();
  const bool triggered = trigger != nullptr && *trigger != 0;
  if (!triggered && !loop && phase >= kEntries) {
    rest(out);
  } else if (triggered || phase + (kVectorLength + 1) * inc >= kEntries) {
    turn(inc, triggered, out);
  } else {
    sweep(inc, out);
  }
  shapeWave(out);
  glide.tickVector(out);
  vecMulConstInPlace(depth, out, kVectorLength);
  firstValue = out[0];
}

void WaveLFO::shapeWave(double* wave) noexcept {
  const double sign = sampleAndHold ? 1.0 : swapSign;
  if (!sampleAndHold) lastWave = wave[kVectorLength - 1] * sign;
  if (!tableIsWithin) {
    vecClampBelowInPlace(wave, kVectorLength, -1.0);
    vecClampAboveInPlace(wave, kVectorLength, 1.0);
  }
  vecMulConstInPlace(sign * scale, wave, kVectorLength);
  vecAddConstInPlace(offset, wave, kVectorLength);
}

}  // namespace orvantesco
