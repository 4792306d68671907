#include "fx/DSPShell.h"

#include <algorithm>
#include <cassert>

#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kSilence[kVectorLength] = {};

}  // namespace

DSPShell::DSPShell(bool isRight) noexcept : channelSign(isRight ? -1.0 : 1.0) {
  disconnectModulation();
}

void DSPShell::disconnectModulation() noexcept {
  std::fill_n(modSource, kControlCount, nullptr);
  std::fill_n(modDepth, kControlCount, &kZeroDepth);
}

void DSPShell::reset() noexcept {
  std::fill_n(scratchB, 2 * kVectorLength, 0.0);
  blockCounter = 0;
}

void DSPShell::processBlock() noexcept {
  if (output != input) std::copy_n(input, blockSize, output);
}

void DSPShell::prepare() noexcept {
  disconnectModulation();
  slowSmoother.rateChanged();
  fastSmoother.rateChanged();
  controlDirty = true;
  bypassed = false;
  reset();
}

void DSPShell::rateChanged() noexcept {
  slowSmoother.rateChanged();
  fastSmoother.rateChanged();
  blockCounter = 0;
  controlDirty = true;
}

void DSPShell::clearState() noexcept {
  std::fill_n(scratchA, kVectorLength, 0.0);
  std::fill_n(scratchB, 2 * kVectorLength, 0.0);
  onStateCleared();
  reset();
}

void DSPShell::clearMemories() noexcept {
  clearState();
  slowSmoother.snap(0.0);
  fastSmoother.snap(0.0);
}

void DSPShell::connect(const double* in, double* out) noexcept {
  input = in;
  output = out;
}

void DSPShell::process(double* in, double* out) noexcept {
  if (bypassed) return;
  connect(in, out != nullptr ? out : in);
  // A stereo block run on one channel hears silence on the other, not its own last output, and
  // leaves there what nobody takes.
  input2 = kSilence;
  output2 = scratchB + kVectorLength;
  processBlock();
  guard(false);
}

void DSPShell::process(double* inL, double* inR, double* outL, double* outR) noexcept {
  if (bypassed) return;
  const bool inPlace = outL == nullptr;
  connect(inL, inPlace ? inL : outL);
  input2 = inR;
  output2 = inPlace || outR == nullptr ? inR : outR;
  processBlock();
  guard(true);
}

void DSPShell::guard(bool isStereo) noexcept {
  if (isSaneVector(output) && (!isStereo || isSaneVector(output2))) return;
  clearMemories();
  std::fill_n(output, blockSize, 0.0);
  if (isStereo) std::fill_n(output2, blockSize, 0.0);
}

void DSPShell::setModSource(int index, const double* source) noexcept {
  assert(index >= 0 && index < kControlCount);
  if (index < 0 || index >= kControlCount) return;
  modSource[index] = source;
  modSourceChanged(index, source);
}

void DSPShell::setModDepth(int index, const double* depth) noexcept {
  assert(index >= 0 && index < kControlCount);
  if (index < 0 || index >= kControlCount) return;
  modDepth[index] = depth != nullptr ? depth : &kZeroDepth;
  modDepthChanged(index, modDepth[index]);
}

void DSPShell::setBypass(bool on) noexcept {
  bypassed = on;
  reset();
}

}  // namespace orvantesco
