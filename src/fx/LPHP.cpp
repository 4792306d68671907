#include "fx/LPHP.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"

namespace orvantesco {

namespace {

/// Sections of a filter in the slopes of 24, 48 and 72 dB an octave.
constexpr int kSectionsOfSlope[] = {2, 4, 6};
constexpr int kSlopeCount = 3;

}  // namespace

LPHP::LPHP(bool isRight) : LPHP(isRight, true) {}

LPHP::LPHP(bool isRight, bool hasDrive)
    : DSPShell(isRight),
      lowpass(isRight, kLowpassFilter, 1),
      highpass(isRight, kHighpassFilter, 1),
      drive(hasDrive),
      driveShaper(isRight, kShaperSaturate) {
  driveShaper.setFilterMode(kFilterOff);
}

void LPHP::setSecondary(int pairMode) noexcept {
  const int held = std::clamp<int>(pairMode, k24DbSeries, k72DbParallel);
  if (held == slopeMode) return;
  slopeMode = held;
  parallel = held >= k24DbParallel;
  const int sections = kSectionsOfSlope[held % kSlopeCount];
  lowpass.setStageCount(sections);
  highpass.setStageCount(sections);
}

void LPHP::reset() noexcept {
  DSPShell::reset();
  lowpass.reset();
  highpass.reset();
}

void LPHP::rateChanged() noexcept {
  DSPShell::rateChanged();
  lowpass.rateChanged();
  highpass.rateChanged();
  driveShaper.rateChanged();
}

void LPHP::onStateCleared() noexcept { driveShaper.clearState(); }

void LPHP::prepare() noexcept {
  DSPShell::prepare();
  lowpass.prepare();
  highpass.prepare();
  driveShaper.prepare();
}

void LPHP::clearMemories() noexcept {
  DSPShell::clearMemories();
  lowpass.clearMemories();
  highpass.clearMemories();
  driveShaper.clearMemories();
}

void LPHP::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      highpass.setCutoff(value);
      break;
    case 1:
      lowpass.setCutoff(value);
      break;
    case 2:
      driveShaper.setParam(0, value);
      break;
    case 3:
      setSecondary(static_cast<int>(std::clamp(value, -1.0, 1e6)));
      break;
    case 4:
      setMix(value);
      break;
    default:
      break;
  }
}

DSPShell* LPHP::modulatedBy(int index) noexcept {
  switch (index) {
    case 0:
      return &highpass;
    case 1:
      return &lowpass;
    case 2:
      return &driveShaper;
    default:
      return nullptr;
  }
}

void LPHP::modSourceChanged(int index, const double* source) noexcept {
  if (DSPShell* block = modulatedBy(index)) block->setModSource(0, source);
}

void LPHP::modDepthChanged(int index, const double* depth) noexcept {
  if (DSPShell* block = modulatedBy(index)) block->setModDepth(0, depth);
}

void LPHP::processBlock() noexcept {
  if (output != input) std::copy_n(input, blockSize, output);
  if (drive) driveShaper.process(output, nullptr);
  if (parallel) std::copy_n(output, blockSize, scratchA);
  lowpass.process(parallel ? scratchA : output, nullptr);
  highpass.process(output, nullptr);
  if (parallel) vecAddInPlace(scratchA, output, blockSize);
}

}  // namespace orvantesco
