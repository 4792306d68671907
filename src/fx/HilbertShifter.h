#pragma once

#include "fx/DSPShell.h"
#include "fx/HilbertPair.h"
#include "fx/SectionChain.h"
#include "fx/SimpleOSC.h"

namespace orvantesco {

/// "FREQ SHIFT": moves every partial by the same number of Hz, one channel. Single-sideband
/// modulation (S. Disch and U. Zoelzer, "Modulation and delay line based digital audio effects",
/// DAFx 1999): the input and its Hilbert transform, each times one of two oscillators at 90
/// degrees, add up to one sideband.
///
/// The shift counts with 44100 steps a second at every sample rate. What the knob calls 100 Hz is
/// 100 Hz at 44100 and 217.7 Hz at 96000: users know a setting by its sound at their rate.
///
/// Parameters: 0 position 0..1 of the frequency knob, 0.5 being no shift; 1 its range in Hz;
/// 2 feedback 0..1; 3 spread -1..1; 4 wet share. Modulated: 0, 2, 3.
class HilbertShifter final : public SimpleOSC, public DSPShell {
 public:
  explicit HilbertShifter(bool isRight) noexcept;

  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void reset() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 private:
  void updateIncrement() noexcept;
  void addFeedback() noexcept;
  void followWithHighpass(double increment) noexcept;
  void advancePhase(double increment) noexcept;
  void restoreMotion() noexcept;

  // Settings
  double frequency = 0.5;
  double scale = 10.0;  ///< Hz
  double feedbackKnob = 0.0;

  // Derived
  double incrementTarget = 0.0;  ///< radians per sample; negative shifts upwards
  double lastCutoff = -1.0;      ///< radians per sample, of the high-pass in force

  // State
  Smoother incrementSmoother;
  Smoother feedbackSmoother;
  SectionChain highpass;
  HilbertPair pair;
  double oneSampleMemory = 0.0;  ///< last sample of the first chain
  alignas(32) double blockA[kVectorLength + 1] = {};
  alignas(32) double blockB[kVectorLength] = {};
  alignas(32) double feedback[kVectorLength] = {};
  alignas(32) double phases[kVectorLength] = {};
};

}  // namespace orvantesco
