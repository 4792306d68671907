#pragma once

#include <array>

#include "fx/Shared.h"

namespace orvantesco {

/// Menu positions of "MasterFX" are stored behind this id; the id itself means "OFF".
inline constexpr int kMasterFxOff = 38;

/// Control words of the whole plug-in. Written by the dispatch on any thread, read by the audio
/// thread once per sub-block. What would be two words that belong together is kept as the one
/// value that both follow from, so that no reader sees half of a change.
struct GlobalControls {
  Shared<double> dryLevel{0.75};           ///< 0..1; 0 while the dry mute is on
  Shared<double> wetLevel{0.75};           ///< 0..1
  Shared<double> outputLevel{1.0};         ///< linear gain
  Shared<double> inputAttenuation{1.0};    ///< linear gain of the editor's "ATTENUATION"
  Shared<bool> dryMuted{false};            ///< the editor's dry lock; outside the bank
  Shared<double> globalWidth{100.0};       ///< percent 0..150; 100 leaves the wet bus alone
  Shared<double> feedbackMaster{0.0};      ///< -0.5..0.5, added to every slot's feedback
  Shared<double> timeScale{1.0};           ///< 0.5..2, factor of all delay times
  Shared<double> mainModDepth{50.0};       ///< 0..100, unscaled: the swing comes out in samples
  Shared<double> mainModRate{67.21};       ///< rate handed to the main modulator
  Shared<double> masterFxLevel{0.75};      ///< 0..2
  Shared<int> masterFxType{kMasterFxOff};  ///< kMasterFxOff + menu position
  Shared<bool> masterFxBypass{false};
  std::array<Shared<double>, 4> masterFxParam{};  ///< the four knobs, 0..1
  Shared<int> limiterMode{0};                     ///< 0 off, 1 "SLOW I", 2 "SLOW II", 3 "FAST"
  Shared<double> limiterBoostDb{0.0};             ///< 0..36 dB
};

/// Bits of `Orvantesco::globalRequests`.
enum GlobalRequest : unsigned {
  kClearMasterReturn = 1u << 0,    ///< zero masterReturnL/R
  kClearMasterSend = 1u << 1,      ///< zero masterSendL/R and masterReturnL/R
  kResetMasterEffect = 1u << 2,    ///< clear the selected master effect and hand it its bypass
  kTakeMasterBypass = 1u << 3,     ///< hand the bypass to the selected master effect
  kTakeLimiter = 1u << 4,          ///< hand mode and boost to the limiter
  kTakeMainModRate = 1u << 5,      ///< hand the rate to the main modulator
  kStartFade = 1u << 6,            ///< silence, then 100 ms up again
  kTakeMasterFxParam = 1u << 7,    ///< hand knob 0 to the selected master effect; shifted, 1..3
  kTakeMasterFxParams = 15u << 7,  ///< hand it all four
  kResetSignals = 1u << 11         ///< clear all signal state
};

}  // namespace orvantesco
