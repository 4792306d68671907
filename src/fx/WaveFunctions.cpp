#include "fx/WaveFunctions.h"

#include "fx/Kernels.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kHoldDrive = 1.25;

}  // namespace

void WaveFunctions::saturate(const Input& in, double* out) noexcept {
  kernels::shapeLoops().saturate(in, memory, out);
  dropRunaway();
}

void WaveFunctions::softClip(const Input& in, double* out) noexcept {
  kernels::shapeLoops().softClip(in, memory, false, out);
  dropRunaway();
}

void WaveFunctions::heldSoftClip(const Input& in, double* out) noexcept {
  kernels::shapeLoops().softClip(in, memory, true, out);
  dropRunaway();
}

void WaveFunctions::sampleAndHold(const Input& in, double rate, double* out) noexcept {
  vecMul(in.signal, in.gain, out, kVectorLength);
  vecMulConstInPlace(kHoldDrive, out, kVectorLength);
  holder.run(out, rate, out);
  kernels::shapeLoops().tanh(out, out);
}

void WaveFunctions::fold(const Input& in, double* out) noexcept {
  kernels::shapeLoops().fold(in, out);
}

void WaveFunctions::tube(const Input& in, double* out) noexcept {
  kernels::shapeLoops().tube(in, out);
}

void WaveFunctions::sine(const double* in, double i, double* out) noexcept {
  kernels::shapeLoops().sine(in, i, out);
}

void WaveFunctions::cosine(const double* in, double i, double* out) noexcept {
  kernels::shapeLoops().cosine(in, i, out);
}

void WaveFunctions::clearAll() noexcept {
  clear();
  holder.clear();
}

// The curves are bounded, so a vector that ends in a monstrous sample looks sound behind them.
void WaveFunctions::dropRunaway() noexcept {
  if (!isSane(memory.x) || !isSane(memory.t)) clear();
}

}  // namespace orvantesco
