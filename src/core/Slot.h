#pragma once

#include <array>

#include "core/AudioVector.h"
#include "core/Requests.h"
#include "core/SlotControls.h"
#include "delay/QLMMultiDelay.h"
#include "delay/RingDelay.h"
#include "fx/DCRemover.h"
#include "fx/Smoother.h"

namespace orvantesco {

/// What the depth pointers of a slot's two delays address. Filled anew at each sub-block.
struct DelayDepthCells {
  double time = 0.0;           ///< samples
  double grainPosition = 0.0;  ///< -1..1
  double grainSpeed = 0.0;
  double grainSize = 0.0;
  double tapsTime = 0.0;
};

/// One of the four slots: its control words, written by any thread, and behind them everything
/// that only the audio thread touches.
struct Slot {
  Slot();
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

  SlotControls controls;
  Requests requests;

  // Audio thread only.
  int index = 0;                           ///< 0..3
  bool running = false;                    ///< `slotOn`, taken at the start of the sub-block
  bool delayRunning = false;               ///< `delayOn`, likewise
  DelayMode modeNow = DelayMode::Forward;  ///< mode that both delays have taken
  std::array<StereoVector, kSlotStageCount> stage;
  StereoVector delayFeed;             ///< what the delay input receives from the slot itself
  StereoVector feedbackVec;           ///< what goes round
  AudioVector slotMono{};             ///< direct out, left plus right
  const double* delayOutL = nullptr;  ///< normally `stage[kStageDelay]`; the mono routes point both
  const double* delayOutR = nullptr;  ///< at one channel
  double feedbackL = 0.0;             ///< feedback of this sub-block, 0..1.6
  double feedbackR = 0.0;
  DelayDepthCells depthCells;
  double widthNow = 1.0;  ///< width that the next two belong to
  double widthCos = 1.0;
  double widthSin = 0.0;

  std::array<QLMMultiDelay, 2> delay;
  std::array<RingDelay, 2> offsetLine;
  std::array<DCRemover, 2> feedbackDc;
  Smoother inputSmoother;  ///< 60 ms
  Smoother levelSmoother;  ///< 60 ms
  Smoother panSmoother;    ///< 60 ms
};

}  // namespace orvantesco
