#include "fx/MVPitchShifter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "fx/Kernels.h"
#include "fx/Lanes.h"
#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr int kMask = MVPitchShifter::kBufferLength - 1;

/// The phase of a tap runs from 0 to 2.
constexpr double kCycle = 2.0;

constexpr double kOctave = 12.0;  ///< semitones
constexpr double kPerOctave = 0.083333333333333;
constexpr double kFineReach = 0.5;  ///< semitones that a modulator moves FINE by
constexpr double kLeastSizeMs = 1.0;
constexpr double kLargestSizeMs = 100.0;
constexpr double kSizeBlockMs = 500.0;

constexpr int kAntiAliasSections = 4;
constexpr double kAntiAliasWidth = 1.8;
// Corners of the low-pass as fractions of half the rate: an octave up, and at no shift.
constexpr double kLowestCorner = 0.5;
constexpr double kHighestCorner = 0.99;

double wrapped(double phase) noexcept {
  if (phase >= kCycle) return phase - kCycle;
  return phase < 0.0 ? phase + kCycle : phase;
}

}  // namespace

MVPitchShifter::MVPitchShifter(bool isRight, bool dual)
    : DSPShell(isRight),
      isDual(dual),
      spreadShare(dual ? 0.5 : 1.0),
      buffer(kBufferLength + 1, 0.0) {
  sizeSmoother.setBlockTime(kSizeBlockMs);
  MVPitchShifter::reset();
}

void MVPitchShifter::setCoarse(double value) noexcept { coarse = std::round(kOctave * value); }

void MVPitchShifter::setParam(int index, double value) noexcept {
  if (!isSane(value)) return;
  const bool isRight = channelSign < 0.0;
  switch (index) {
    case 0:
      if (!isDual || !isRight) setCoarse(value);
      break;
    case 1:
      if (!isDual) {
        fine = value * spreadShare;
      } else if (isRight) {
        setCoarse(value);
      }
      break;
    case 2:
      sizeMs = std::clamp(value, kLeastSizeMs, kLargestSizeMs);
      break;
    case 3:
      spreadSemitones = value * channelSign;
      break;
    case 4:
      mix = value;
      break;
    default:
      break;
  }
}

void MVPitchShifter::reset() noexcept {
  DSPShell::reset();
  antiAlias.clear();
  writeIndex = 0;
  written = 0;
  staleEnd = kBufferLength;
  std::fill_n(taps, 2, 0.0);
  // The glide of the size starts from its figure in ms, taken for samples: the first 16 ms after
  // a reset sweep the taps outwards, and a shift begins with a short swoop.
  sizeSmoother.snap(sizeMs);
}

void MVPitchShifter::rateChanged() noexcept {
  DSPShell::rateChanged();
  sizeSmoother.rateChanged();
  cutoffSmoother.rateChanged();
  cutoffLast = -1.0;
  phase = 0.0;
}

void MVPitchShifter::clearMemories() noexcept {
  DSPShell::clearMemories();
  cutoffSmoother.snap(0.0);
  cutoffLast = -1.0;
  phase = 0.0;
}

/// The source of a coarse knob moves it by octaves, that of the knob next to it by half a semitone.
/// A dual right instance has its coarse knob one place further on, so that there the source of
/// SIZE detunes as well, and in the left one that of COARSE R: modulators of either are heard as a
/// slight vibrato in the channel that they are not meant for.
double MVPitchShifter::modulationSemitones() const noexcept {
  const int first = isDual && channelSign < 0.0 ? 1 : 0;
  return saneOrZero(kOctave * modulationOf(first) + kFineReach * modulationOf(first + 1) +
                    channelSign * modulationOf(3));
}

void MVPitchShifter::updateRatio() noexcept {
  const double wanted = spreadShare * spreadSemitones + fine + coarse + modulationSemitones();
  const double limited = std::clamp(wanted, -kOctave, kOctave);
  if (limited == semitones) return;
  semitones = limited;
  ratioTerm = 1.0 - std::exp2(semitones * kPerOctave);
}

/// The size that the taps glide to. A depth acts squared here, so that small ones are fine.
double MVPitchShifter::targetSamples() const noexcept {
  auto size = static_cast<double>(static_cast<float>(sizeMs));
  if (modSource[2] != nullptr) {
    const double depth = *modDepth[2];
    const double push = std::fabs(depth) * depth * *modSource[2] * (kLargestSizeMs - kLeastSizeMs);
    size = std::clamp(size + saneOrZero(push), kLeastSizeMs, kLargestSizeMs);
  }
  return size * 0.001 * sampleRate;
}

/// Takes off what a shift upwards would push beyond half the rate: an octave up leaves the lower
/// half of the band.
void MVPitchShifter::followWithLowpass() noexcept {
  const double term = cutoffSmoother.tick(ratioTerm);
  if (term == cutoffLast) return;
  cutoffLast = term;
  const double corner = std::clamp(0.5 * term + 1.0, kLowestCorner, kHighestCorner);
  const auto omega = static_cast<float>(std::numbers::pi * corner);
  const BiquadSection section =
      lowpassSection({static_cast<double>(std::cos(omega)),
                      static_cast<double>(std::sin(omega)) / kAntiAliasWidth});
  antiAlias.design(section, kAntiAliasSections);
}

/// Zeroes what reads of this vector may come to and was written before the last reset: the slots
/// ahead of the pen, and those as far back as the taps lie by now.
void MVPitchShifter::clearStale(const float* size) noexcept {
  if (written == kBufferLength) return;
  const auto longest = static_cast<double>(*std::max_element(size, size + kVectorLength));
  const int reach = std::min(static_cast<int>(kCycle * longest) + 2, kReach);
  const int needed = std::max(kBufferLength + std::min(written - reach, 0), 0);
  for (; staleEnd > needed; --staleEnd) buffer[static_cast<std::size_t>(staleEnd - 1)] = 0.0;
  const int ahead = std::min(kVectorLength + 1, kBufferLength - writeIndex);
  std::fill_n(buffer.begin() + writeIndex, ahead, 0.0);
  written += kVectorLength;
}

/// Writes the vector and reads both taps. Below one sample of delay the newer neighbour is one that
/// is not yet written; its slot still holds the sample of 65536 before. The tap is all but faded
/// out there: at 1 ms 1/44 of that sample sounds, at longer sizes less.
///
/// At a whole delay the newer neighbour is the sample itself. The recursion would give just that
/// from rest, but with a pole at half the rate that never lets go of what it held before.
void MVPitchShifter::sweep(const float* size) noexcept {
  double* const ring = buffer.data();
  const double* const in = scratchA;
  double* const out = output;
  const int start = writeIndex;
  double p = phase;
  Lanes memory = loadLanes(taps);
  for (int i = 0; i < kVectorLength; ++i) {
    ring[start + i] = in[i];
    if (start + i == 0) ring[kBufferLength] = in[i];
    p += static_cast<double>(rates[i]);
    if (p >= kCycle || p < 0.0) [[unlikely]]
      p = wrapped(p);
    const Lanes delay = bothLanes(static_cast<double>(size[i])) * Lanes{p, wrapped(p + 1.0)};
    const int wholeA = static_cast<int>(delay[0]);
    const int wholeB = static_cast<int>(delay[1]);
    // The older neighbour and the newer one.
    const Lanes a = loadLanes(ring + ((start + i - wholeA) & kMask));
    const Lanes b = loadLanes(ring + ((start + i - wholeB) & kMask));
    const Lanes rest = delay - Lanes{static_cast<double>(wholeA), static_cast<double>(wholeB)};
    const Lanes fraction = bothLanes(1.0) - rest;
    const Lanes weight = fraction * fraction;
    const Lanes newer = {a[1], b[1]};
    const Lanes between = (newer * weight + Lanes{a[0], b[0]}) - memory * weight;
    memory = weight == bothLanes(1.0) ? newer : between;
    const double fade = 1.0 - std::fabs(p - 1.0);
    out[i] = (1.0 - fade) * memory[1] + fade * memory[0];
  }
  storeLanes(memory, taps);
  phase = p;
  writeIndex = (start + kVectorLength) & kMask;
}

void MVPitchShifter::processBlock() noexcept {
  updateRatio();
  const float* size = sizeSmoother.rampFloat(static_cast<float>(targetSamples()));
  vecConstDivF(size, static_cast<float>(ratioTerm), rates, kVectorLength);
  followWithLowpass();
  antiAlias.process(input, scratchA);
  if (!isSaneVector(scratchA)) {
    // It would sound only when the taps come to it: dropped before it is kept.
    clearMemories();
    std::fill_n(output, kVectorLength, 0.0);
    return;
  }
  clearStale(size);
  sweep(size);
}

}  // namespace orvantesco
