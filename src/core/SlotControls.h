#pragma once

#include <array>
#include <cstdint>

#include "fx/Shared.h"

namespace orvantesco {

/// What a slot listens to. A slot can only listen to slots before it, so the graph needs no delay.
enum class SlotInput {
  Mono,
  Left,
  Right,
  Stereo,
  MasterFx,
  Slot1,
  Slot2,
  Slot3,
  Sum12,
  Sum13,
  Sum23,
  Sum123
};

enum class DelayMode { Forward, Backward, Grain, Tapped };

enum class DelayRoute {
  Dual,
  PingPongL,
  PingPongMonoL,
  PingPongR,
  PingPongMonoR,
  PingPongLR,
  Mix,
  MonoL,
  MonoR
};

enum class OutputMode { Normal, Swap, Mute };

/// The five stages of a slot; a later one never overwrites an earlier one.
enum SlotStage { kStageInput, kStagePre, kStageDelay, kStagePost, kStageOut, kSlotStageCount };

/// A modulation input: a pointer to a modulator's 32-sample vector (null for "OFF") and a depth.
struct ModInput {
  Shared<const double*> source{nullptr};
  Shared<double> depth{0.0};
};

/// The step rows and switches of a slot's "TAPPED" mode. A mask holds one bit for each tap.
struct TapControls {
  static constexpr int kSteps = 16;

  std::array<Shared<double>, kSteps> timeStep;               ///< 0..1
  std::array<Shared<double>, kSteps> levelStep;              ///< 0..1
  std::array<Shared<double>, kSteps> panStep;                ///< -1..1, positive leans left
  std::array<std::array<Shared<double>, kSteps>, 2> fxStep;  ///< two rows, percent 0..100
  Shared<double> timeStepInverse{0.0};                       ///< 1 - row amount
  Shared<double> levelStepInverse{0.0};
  Shared<double> panWidth{1.0};
  std::array<Shared<double>, 2> fxDepth{Shared<double>{1.0}, Shared<double>{1.0}};  ///< 0..1
  Shared<int> lastTap{7};          ///< index of the last tap
  Shared<int> feedbackTap{7};      ///< index of the tap that goes round
  Shared<bool> allTapsOut{false};  ///< the slot's DELAY output is the sum of all taps
  Shared<int> panMode{0};          ///< 0 "STEREO", 1 "DUAL MONO", 2 "LEFT", 3 "RIGHT"
  Shared<double> interval{0.05};   ///< seconds
  Shared<double> beatFactor{0.0};  ///< quarter notes; 0 takes `interval`
  Shared<double> swell{0.0};       ///< 0..1
  Shared<double> swing{0.0};       ///< 0..1/3
  std::array<Shared<int>, 2> fxParam{Shared<int>{-1}, Shared<int>{-1}};
  ///< per row: -1 not yet selected, 0 "OFF", else 1..5, the POST FX parameter that it drives

  std::array<Shared<std::uint16_t>, 2> tapMask{Shared<std::uint16_t>{0xFFFF},
                                               Shared<std::uint16_t>{0xFFFF}};  ///< per side
  Shared<std::uint16_t> stepFxMask{0xFFFF};            ///< the tap's POST FX runs
  std::array<Shared<std::uint16_t>, 2> stepModMask{};  ///< per row: the tap may be modulated
};

/// Control words of a slot's delays, in the bank's own units where the sample rate or the tempo
/// would enter: what depends on those is derived on the audio thread and so never stale.
struct DelayControls {
  Shared<DelayMode> mode{DelayMode::Forward};
  Shared<DelayRoute> route{DelayRoute::Dual};
  Shared<bool> feedbackProportional{false};
  Shared<int> timebase{2};                    ///< 0 "MS", else position in the note menu
  Shared<double> timeL{0.5}, timeR{0.5};      ///< seconds, used with "MS"
  Shared<double> factorL{4.0}, factorR{4.0};  ///< units of the timebase, used with a note
  Shared<double> spreadMs{0.0};               ///< + on the left, - on the right
  Shared<double> modDepth{0.0};               ///< cubed depth of the time modulation, -1..1
  Shared<double> tapsTimeModDepth{0.0};       ///< cubed depth · 0.5
  Shared<double> grainPositionDepth{0.0}, grainSpeedDepth{0.0}, grainSizeDepth{0.0};  ///< cubed
  Shared<const double*> timeSource{nullptr}, tapsTimeSource{nullptr};
  Shared<const double*> grainPositionSource{nullptr}, grainSpeedSource{nullptr};
  Shared<const double*> grainSizeSource{nullptr};
  Shared<double> lopassHz{7500.0}, hipassHz{20.0};
  Shared<double> grainSizeMs{100.0};
  Shared<double> grainSpeed{0.0};     ///< half octaves, -1..1
  Shared<double> grainPosition{0.0};  ///< 0..1
  Shared<double> grainFadeMs{0.0};    ///< 0 is automatic
  Shared<double> reverseFadeMs{10.0};
  Shared<const unsigned char*> reverseTrigger{nullptr};  ///< a trigger flag; null counts as off
};

/// Control words of one slot. Written by the dispatch on any thread, read by the audio thread once
/// per sub-block.
struct SlotControls {
  Shared<bool> slotOn{false};
  Shared<bool> delayOn{true};
  Shared<SlotInput> input{SlotInput::Mono};
  Shared<bool> masterSendEnabled{true};  ///< off while the slot listens to the master effect
  Shared<int> directOut{kStageOut};      ///< a SlotStage; kStageDelay reads the delay's sum
  Shared<bool> directOutParked{false};   ///< the slot contributes nothing to later slots
  Shared<int> masterSource{kStageOut};   ///< a SlotStage
  Shared<double> inputGain{1.0};         ///< linear; 0 at -60 dB and below
  ModInput inputGainMod;                 ///< depth cubed
  Shared<double> level{1.0};             ///< linear
  ModInput levelMod;                     ///< depth cubed
  Shared<double> pan{0.0};               ///< -1..1
  ModInput panMod;                       ///< depth linear
  Shared<double> send{0.5};              ///< 0..1
  ModInput sendMod;                      ///< depth linear
  Shared<double> feedback{0.5};          ///< 0..1.6
  ModInput feedbackMod;                  ///< depth cubed
  Shared<double> mainModAmount{0.0};     ///< 0..1, negative for the first and third slot
  Shared<double> directIn{0.0};          ///< gain of the direct signal
  Shared<double> wetShare{1.0};          ///< gain of the delayed signal
  Shared<double> offsetMs{0.0};          ///< whole ms; negative delays the left channel
  Shared<double> width{1.0};             ///< 0..1
  Shared<bool> panBeforeWidth{false};
  Shared<OutputMode> outputMode{OutputMode::Normal};
  Shared<bool> matrixOn{false};
  std::array<Shared<double>, 4> matrix{};  ///< gain from each sending slot, -1..1
  DelayControls delay;
  TapControls taps;
};

/// Bits of `Slot::requests`.
enum SlotRequest : unsigned {
  kResetDelays = 1u << 0,         ///< both delays start from an empty ring
  kClearStages = 1u << 1,         ///< zero the ten stage vectors and `slotMono`
  kClearDelayOutputs = 1u << 2,   ///< zero `stageDelay`
  kClearFeedback = 1u << 3,       ///< zero `feedbackVec`
  kTakeDelayMode = 1u << 4,       ///< both delays take `delay.mode`, which resets them
  kClearTapMemoryLeft = 1u << 5,  ///< clear the all-pass memory of the left delay
  kClearTapMemoryRight = 1u << 6,
  kSnapTapGlideLeft = 1u << 7,  ///< the next read of the left delay jumps to its time
  kSnapTapGlideRight = 1u << 8,
  kSnapTapGlide = kSnapTapGlideLeft | kSnapTapGlideRight,
  kTakeDelaySettings = 1u << 9,  ///< hand filters, grain and reverse settings to both delays
  kTakeDelaySources = 1u << 10,  ///< hand the five modulation sources to both delays
  kTakeSwitches = 1u << 11,      ///< `slotOn` and `delayOn`, together with what they clear
};

}  // namespace orvantesco
