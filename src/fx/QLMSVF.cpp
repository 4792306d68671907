#include "fx/QLMSVF.h"

#include <algorithm>
#include <cmath>

#include "fx/BiquadDesign.h"
#include "fx/FrequencyCurve.h"
#include "fx/RateValues.h"

namespace orvantesco {

namespace {

/// Outputs of a stage, as types, so that each loop holds just what it needs.
struct PickLowpass {
  static double from(const SvfOutputs& of, double /*x*/) noexcept { return of.lowpass; }
};
struct PickHighpass {
  static double from(const SvfOutputs& of, double /*x*/) noexcept { return of.highpass; }
};
struct PickBandpass {
  static double from(const SvfOutputs& of, double /*x*/) noexcept { return of.bandpass; }
};
struct PickNotch {
  static double from(const SvfOutputs& of, double /*x*/) noexcept {
    return of.highpass + of.lowpass;
  }
};
struct PickInputAndBand {
  static double from(const SvfOutputs& of, double x) noexcept { return x + of.bandpass; }
};

/// What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
void flush(SvfMemory& memory) noexcept {
  memory.s1 = (memory.s1 + 1e-15) - 1e-15;
  memory.s2 = (memory.s2 + 1e-15) - 1e-15;
}

/// Corner in halves of the rate, as the knob's curve gives it.
double heldCorner(double control) noexcept {
  const double w = curveFrequencyHz(control) * 2.0 * inverseSampleRate;
  return std::clamp(w, kSvfLowestCorner, 2.0 * kCornerCeiling);
}

}  // namespace

QLMSVF::QLMSVF(bool isRight) noexcept : QLMFilter(isRight), structure(structureOf(kFilterOff)) {
  deriveCoefficients();
}

QLMSVF::Structure QLMSVF::structureOf(int filterMode) noexcept {
  switch (filterMode) {
    case kSvfLowpass:
      return {true, &QLMSVF::runBoth<PickLowpass>};
    case kSvfSingleLowpass:
      return {true, &QLMSVF::runOne<true, PickLowpass>};
    case kSvfHighpass:
      return {true, &QLMSVF::runBoth<PickHighpass>};
    case kSvfSingleHighpass:
      return {true, &QLMSVF::runOne<true, PickHighpass>};
    case kSvfPlainHighpass:
      return {false, &QLMSVF::runOne<false, PickHighpass>};
    case kSvfBandpass:
      return {true, &QLMSVF::runOne<true, PickBandpass>};
    case kSvfSteepBandpass:
      return {true, &QLMSVF::runBoth<PickBandpass>};
    case kSvfNotch:
      return {true, &QLMSVF::runBoth<PickNotch>};
    case kSvfInputAndBand:
      return {true, &QLMSVF::runOne<true, PickInputAndBand>};
    default:
      return {false, &QLMSVF::runOne<false, PickLowpass>};
  }
}

void QLMSVF::reset() noexcept {
  DSPShell::reset();
  deriveCoefficients();
  resonantMemory = plainMemory = {};
}

void QLMSVF::clearMemories() noexcept {
  QLMFilter::clearMemories();
  controlDirty = true;
}

void QLMSVF::setMode(int newMode) noexcept {
  if (newMode == mode) return;
  mode = newMode;
  structure = structureOf(newMode);
  reset();
}

void QLMSVF::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      setCutoff(value);
      break;
    case 1:
      resonance = std::clamp(value, 0.0, 1.0);
      break;
    case 2:
      setSpread(value);
      break;
    case 3:
      setMode(static_cast<int>(std::clamp(value, -1.0, 1e6)));
      break;
    case 4:
      setMix(value);
      break;
    default:
      break;
  }
}

void QLMSVF::updateControls() noexcept {
  cutoffNow = smoothedCutoff();
  resonanceNow = modulatedResonance();
  gainNow = gainSmoother.tick(std::clamp(gain + modulationOf(3), 0.5, 2.0));
  if (!controlsChanged() && !controlDirty) return;
  deriveCoefficients();
  controlDirty = false;
}

// At full resonance 1/Q is a little below 0, so that the filter sings by itself; towards the
// highest corners less and less, and not at 20 kHz.
void QLMSVF::deriveCoefficients() noexcept {
  const double c = std::clamp(cutoffNow, 0.0, 1.0);
  const double g = svfTangent(heldCorner(c));
  if (structure.hasResonance) {
    resonantStage = SvfStage(g, 1.0 - (1.1 - 0.1 * c * c * c) * resonanceNow);
  }
  plainStage = SvfStage(g, 1.0);
}

template <bool isResonant, class Pick>
void QLMSVF::runOne() noexcept {
  const SvfStage stage = isResonant ? resonantStage : plainStage;
  SvfMemory& kept = isResonant ? resonantMemory : plainMemory;
  SvfMemory memory = kept;
  for (int i = 0; i < blockSize; ++i) {
    const double x = input[i];
    output[i] = Pick::from(stepSvf<isResonant>(stage, memory, x), x);
  }
  flush(memory);
  kept = memory;
}

// Both stages in one loop: while the first waits for its saturation, the second costs nothing.
template <class Pick>
void QLMSVF::runBoth() noexcept {
  const SvfStage first = resonantStage;
  const SvfStage second = plainStage;
  SvfMemory memory1 = resonantMemory;
  SvfMemory memory2 = plainMemory;
  for (int i = 0; i < blockSize; ++i) {
    const double x = input[i];
    const double between = Pick::from(stepSvf<true>(first, memory1, x), x);
    output[i] = Pick::from(stepSvf<false>(second, memory2, between), between);
  }
  flush(memory1);
  flush(memory2);
  resonantMemory = memory1;
  plainMemory = memory2;
}

void QLMSVF::processBlock() noexcept {
  const bool isControlTick = everyNthBlock(2);
  if (isControlTick || controlDirty) updateControls();
  (this->*structure.run)();
}

}  // namespace orvantesco
