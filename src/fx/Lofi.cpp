#include "fx/Lofi.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/kernels/PackMath.h"
#include "fx/kernels/ShapeLoops.h"

namespace orvantesco {

namespace {

constexpr double kDriveRange = 7.0;
/// 24 bits: from here on a quantiser is finer than any converter.
constexpr double kTransparentLevels = 16777216.0;
constexpr double kBitRange = 22.0;
constexpr double kFewestBits = 2.0;

/// To the nearest whole number, half to even; magnitudes below 2^51.
void roundVector(double* srcDst) noexcept {
  for (int i = 0; i < kVectorLength; ++i) {
    srcDst[i] = (srcDst[i] + kernels::kRoundingShift) - kernels::kRoundingShift;
  }
}

}  // namespace

Lofi::Lofi(bool isRight) : DSPShell(isRight) {
  seed(isRight ? 2U : 1U);
  deriveLevels();
}

void Lofi::seed(std::uint32_t start) noexcept {
  firstSeed = start;
  random.seed(start);
}

void Lofi::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  double* const knobs[] = {&drive, &noise, &downsample, &bitcrush};
  if (index >= 0 && index < 4) *knobs[index] = std::clamp(value, 0.0, 1.0);
  if (index == 4) setMix(value);
}

void Lofi::rateChanged() noexcept {
  DSPShell::rateChanged();
  noiseLevelSmoother.rateChanged();
  holder.clear();
  random.seed(firstSeed);
}

void Lofi::onStateCleared() noexcept {
  noiseLevelSmoother.snap(0.0);
  holder.clear();
}

double Lofi::modulated(int index, double base) const noexcept {
  if (modSource[index] == nullptr) return base;
  return std::clamp(base + modulationOf(index), 0.0, 1.0);
}

void Lofi::processBlock() noexcept {
  overdrive();
  addNoise();
  reduceRate();
  reduceBits();
}

// A drive of 0 still bends the signal: the effect is never linear.
void Lofi::overdrive() noexcept {
  const double amount = modulated(0, fastSmoother.tick(drive));
  vecMulConst(input, kDriveRange * amount + 1.0, output, blockSize);
  kernels::shapeLoops().tanh(output, output);
}

// The noise has the level of the signal and vanishes with it.
void Lofi::addNoise() noexcept {
  noiseNow = modulated(1, noise);
  if (noiseNow == 0.0) return;
  double mean = 0.0;
  vecAbs(output, scratchB, blockSize);
  vecMean(scratchB, blockSize, &mean);
  const double share = noiseLevelSmoother.tick(mean) * noiseNow;
  for (double& draw : scratchA) {
    draw = 2.0 * random.next() / static_cast<double>(RandomDraw::kMax) - 1.0;
  }
  vecMulConstInPlace(1.0 - noiseNow, output, blockSize);
  vecAddProductConst(scratchA, share, output, blockSize);
}

// A hold that is switched off keeps its sample and its phase, and goes on from them.
void Lofi::reduceRate() noexcept {
  downsampleNow = holdRateOf(modulated(2, downsample));
  if (downsampleNow != 1.0) holder.run(output, downsampleNow, output);
}

void Lofi::deriveLevels() noexcept {
  levels = std::exp2((1.0 - std::pow(bitcrushNow, 0.2)) * kBitRange + kFewestBits);
}

void Lofi::reduceBits() noexcept {
  const double amount = modulated(3, bitcrush);
  if (amount != bitcrushNow) {
    bitcrushNow = amount;
    deriveLevels();
  }
  if (levels >= kTransparentLevels) return;
  vecMulConstInPlace(levels, output, blockSize);
  roundVector(output);
  vecDivConstInPlace(levels, output, blockSize);
}

}  // namespace orvantesco
