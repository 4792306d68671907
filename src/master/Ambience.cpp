#include "master/Ambience.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/RateValues.h"

namespace orvantesco {

namespace {

constexpr double kReferenceRate = 44100.0;
constexpr double kLength[RingDelayQuad::kLines] = {4297.0, 1669.0, 2753.0, 3581.0};
constexpr double kLargestSize = 6.0;
/// The largest size at 96000 Hz.
constexpr double kLargestFactor = 13.061224937438965;
constexpr double kLargestFeedback = 0.998;

constexpr double kStep = 8.7e-05;  ///< of the oscillator, a sample at 44100 Hz
constexpr double kDriftDepth = 0.05;
// Bring the oscillator's two outputs to about ±1.
constexpr double kScaleX = 0.05107000097632408;
constexpr double kScaleY = 0.06790000200271606;

/// Goes round for ever at -400 dB, and keeps a decay from ending in denormal numbers.
constexpr double kDenormalOffset = 1e-20;

}  // namespace

void Ambience::Rossler::advance(double q) noexcept {
  const double dx = -(y + z);
  const double dy = 0.15 * y + x;
  const double dz = (x - 10.0) * z + 0.2;
  x += dx * q;
  y += dy * q;
  z += dz * q;
}

Ambience::Ambience() {
  for (int i = 0; i < kLines; ++i) line.allocate(i, static_cast<int>(kLength[i] * kLargestFactor));
  applySize();
}

void Ambience::applySize() noexcept {
  ratio = sampleRate / kReferenceRate;
  for (std::size_t i = 2; i < kLines; ++i) delaySamples[i] = size * kLength[i] * ratio;
}

void Ambience::reset() noexcept {
  DSPShell::reset();
  lowpassLeft.reset();
  lowpassRight.reset();
  line.clear();
  for (auto& vector : feed) std::fill_n(vector, kVectorLength, 0.0);
  applySize();
}

void Ambience::rateChanged() noexcept {
  DSPShell::rateChanged();
  lowpassLeft.rateChanged();
  lowpassRight.rateChanged();
  line.rateChanged();
  oscillator = {};
  applySize();
}

void Ambience::prepare() noexcept {
  rateChanged();
  DSPShell::prepare();
}

void Ambience::clearMemories() noexcept {
  DSPShell::clearMemories();
  lowpassLeft.clearMemories();
  lowpassRight.clearMemories();
}

void Ambience::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      size = std::clamp(value, 0.0, kLargestSize);
      applySize();
      break;
    case 1:
      feedback = -std::clamp(value, -kLargestFeedback, kLargestFeedback);
      break;
    case 2:
      modDepth = kDriftDepth * std::clamp(value, -1.0, 1.0);
      break;
    case 3:
      lowpassLeft.setCutoff(value);
      lowpassRight.setCutoff(value);
      break;
    default:
      break;
  }
}

/// Moves the first two lines, once a vector.
void Ambience::drift() noexcept {
  oscillator.advance(kVectorLength * kStep / ratio);
  const double modA = oscillator.x * kScaleX * modDepth;
  const double modB = oscillator.y * kScaleY * modDepth;
  delaySamples[0] = (modA + size) * kLength[0] * ratio;
  delaySamples[1] = (size + modB) * kLength[1] * ratio;
}

/// What goes round: the lines through I - J / 2, times the feedback.
void Ambience::mixLines() noexcept {
  const double* const r[kLines] = {line.samples(0), line.samples(1), line.samples(2),
                                   line.samples(3)};
  for (int n = 0; n < kVectorLength; ++n) {
    const double sum = -0.5 * (((r[0][n] + r[1][n]) + r[2][n]) + r[3][n]);
    for (int i = 0; i < kLines; ++i) feed[i][n] = (r[i][n] + sum) * feedback;
  }
}

void Ambience::processBlock() noexcept {
  drift();
  vecAddInPlace(input, feed[0], blockSize);
  vecAddInPlace(input2, feed[1], blockSize);
  for (double* vector : {feed[0], feed[1]}) {
    vecAddConstInPlace(kDenormalOffset, vector, blockSize);
  }
  lowpassLeft.process(feed[0], nullptr);
  lowpassRight.process(feed[1], nullptr);
  for (int i = 0; i < kLines; ++i) line.write(i, feed[i]);
  line.read(delaySamples);
  mixLines();
  vecMulConst(line.samples(0), 2.0, output, blockSize);
  vecMulConst(line.samples(1), 2.0, output2, blockSize);
}

}  // namespace orvantesco
