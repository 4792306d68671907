// What a shaper does in each vector; its knobs and its life cycle are in Shaper.cpp.

#include "fx/Kernels.h"
#include "fx/Shaper.h"

namespace orvantesco {

namespace {

/// From here on the last of the dry signal is left away.
constexpr double kWhollyWet = 0.99;
constexpr double kNoiseLevel = 0.5;
/// A smoothed knob comes to rest this close to 0, where the eighth root would still be a tenth.
constexpr double kRestOfAmount = 1e-9;
/// The angle of the even curves at full scale, in units of pi.
constexpr double kAsymmetric1 = 1.5;
constexpr double kAsymmetric2 = 9.5;

}  // namespace

void Shaper::processBlock() noexcept {
  if (type == kShaperWaveShape) return processWaveShape();
  followAmount();
  const double* gain = controls.gainVector();
  switch (type) {
    case kShaperTube:
      return WaveFunctions::tube({input, gain}, output);
    case kShaperSaturate:
    case kShaperSaturateFeedback:
      return waves.saturate({filteredInput(), gain, controls.trimVector()}, output);
    case kShaperRectify:
    case kShaperRectifyFeedback:
      return waves.heldSoftClip({filteredInput(), gain, controls.trimVector()}, output);
    case kShaperDestroy:
    case kShaperDestroyFeedback:
    case kShaperNoise:
    case kShaperNoiseFeedback:
      return runFold();
    case kShaperLofi:
    case kShaperLofiFeedback:
      waves.sampleAndHold({input, gain}, holdRate, output);
      return filterOutput();
    default:
      return DSPShell::processBlock();
  }
}

void Shaper::followAmount() noexcept {
  const double now = fastSmoother.tick(amount);
  if (modSource[0] != nullptr) {
    controls.modulate(modSource[0], *modDepth[0], now);
  } else {
    if (controls.holds(now)) return;
    controls.setSteady(now);
  }
  deriveControls();
}

void Shaper::deriveControls() noexcept {
  switch (type) {
    case kShaperSaturate:
    case kShaperSaturateFeedback:
      return controls.deriveSaturate();
    case kShaperRectify:
    case kShaperRectifyFeedback:
      return controls.deriveRectify();
    case kShaperDestroy:
    case kShaperDestroyFeedback:
      return controls.deriveDestroy();
    case kShaperNoise:
    case kShaperNoiseFeedback:
      return controls.deriveNoise();
    case kShaperLofi:
    case kShaperLofiFeedback:
      holdRate = controls.firstAmount() < kRestOfAmount ? 1.0 : holdRateOf(controls.firstAmount());
      return controls.deriveLofi();
    default:
      return;
  }
}

const double* Shaper::filteredInput() noexcept {
  if (filterMode == kFilterOff) return input;
  vecCopy(input, scratchA, blockSize);
  filter.process(scratchA, nullptr);
  return scratchA;
}

void Shaper::filterOutput() noexcept {
  if (filterMode != kFilterOff) filter.process(output, nullptr);
}

// "DESTROY" folds around a point beside 0, and what it makes of silence is an offset.
void Shaper::runFold() noexcept {
  WaveFunctions::fold({input, controls.gainVector(), nullptr, controls.thresholdVector()}, output);
  if (isNoise) {
    vecMulConstInPlace(kNoiseLevel, output, blockSize);
  } else {
    offsetRemover.process(output, blockSize);
  }
  filterOutput();
}

void Shaper::processWaveShape() noexcept {
  vecCopy(input, scratchA, blockSize);
  filter.process(scratchA, nullptr);
  const double share = slowSmoother.tick(wet);
  if (share < kWhollyWet) {
    vecMulConstInPlace(share, scratchA, blockSize);
    vecAddProductConst(input, 1.0 - share, scratchA, blockSize);
  }
  runShape();
}

// The curves run at the gain and trim of a shaper without an amount, 1.
void Shaper::runShape() noexcept {
  const WaveFunctions::Input in{scratchA, controls.gainVector(), controls.trimVector()};
  switch (shapeMode) {
    case kShaperSaturate:
      return waves.saturate(in, output);
    case kShaperTube:
      return WaveFunctions::tube(in, output);
    case kShaperRectify:
      return waves.softClip(in, output);
    case kShaperSine1:
      return WaveFunctions::sine(scratchA, 1.0, output);
    case kShaperSine2:
      return WaveFunctions::sine(scratchA, 3.0, output);
    case kShaperSine3:
      return WaveFunctions::sine(scratchA, 5.0, output);
    case kShaperAsymmetric1:
    case kShaperAsymmetric2:
      WaveFunctions::cosine(scratchA, shapeMode == kShaperAsymmetric1 ? kAsymmetric1 : kAsymmetric2,
                            output);
      return offsetRemover.process(output, blockSize);
    default:
      vecCopy(scratchA, output, blockSize);
  }
}

}  // namespace orvantesco
