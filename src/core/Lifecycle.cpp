// Construction, changes of sample rate and clearing.

#include <algorithm>
#include <chrono>
#include <cmath>

#include "core/DelayLengths.h"
#include "core/EffectSetup.h"
#include "core/EngineRate.h"
#include "core/Orvantesco.h"
#include "core/TailEstimate.h"
#include "params/ParamBank.h"

namespace orvantesco {

namespace {

constexpr double kFreshProcessRate = 44100.0;
constexpr double kInputFilterHz = 15000.0;
constexpr int kInputFilterOrder = 12;
constexpr double kGainSmoothingMs = 60.0;
constexpr double kMixSmoothingMs = 200.0;
constexpr double kOffsetSeconds = 0.5;
/// A position at POST holds a pair for each tap.
constexpr std::uint32_t kInstancesAtMost = 32;

double rateInForce() { return initialisedRate > 0.0 ? initialisedRate.get() : kFreshProcessRate; }

/// At the rate in force and from 0, as a new one.
void startSmoother(Smoother& smoother, double ms) {
  smoother.setTime(ms);
  smoother.rateChanged();
}

std::uint32_t seedOfTheClock() {
  return static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

/// Every instance of every position gets a number of its own.
template <class Positions>
void seedNoise(Positions& positions, std::uint32_t start) {
  for (EffectPosition& position : positions) {
    position.noiseSeed = start;
    start += kInstancesAtMost;
  }
}

PlugInfo plugInfo() {
  PlugInfo info;
  info.parameterCount = kNumParams;
  info.channelList = "2-2 3-2";
  info.effectName = "Orvantesco";
  info.manufacturerName = "qlm-works";
  info.version = 0x10200;
  info.uniqueId = "OVsC";
  info.manufacturerId = "QLMw";
  info.latency = 44;
  info.sideChainInputs = 1;
  info.doesStateChunks = true;
  return info;
}

}  // namespace

Slot::Slot() {
  delay[1].setRightChannel();
  for (QLMMultiDelay& line : delay) {
    line.setModDepth(kDelayTimeControl, &depthCells.time);
    line.setModDepth(kGrainPositionControl, &depthCells.grainPosition);
    line.setModDepth(kGrainSpeedControl, &depthCells.grainSpeed);
    line.setModDepth(kGrainSizeControl, &depthCells.grainSize);
    line.setModDepth(kTapsTimeControl, &depthCells.tapsTime);
  }
  delayOutL = stage[kStageDelay].left.data();
  delayOutR = stage[kStageDelay].right.data();
}

Orvantesco::Orvantesco(HostPort& hostPort, const OrvantescoOptions& options)
    : IPlugAAX(plugInfo(), &hostPort) {
  graphics = options.editor;
  const double rate = rateInForce();
  const std::uint32_t seed = options.seed.value_or(seedOfTheClock());
  modulatorSeed = seed;
  modulatorUnits.seed(seed);
  seedNoise(positions, seed);
  const bool freshProcess = initialisedRate <= 0.0;
  bank->buildParameterBank();
  for (int slot = 0; slot < numSlots; ++slot) slots[static_cast<std::size_t>(slot)].index = slot;
  attachInputs(options.mainInputs, options.sideChain);
  buildMasterEffects();
  initForRate(rate);
  // The process's first instance knows no host's rate yet, so its first block initialises; a later
  // one is ready at the rate in force, and those that play do not notice it.
  lastSeenSampleRate = freshProcess ? -1.0 : rate;
  SetSampleRate(-1.0);
  dispatchAllParameters();
  carryOutRequests();
  gate.open();
}

Orvantesco::~Orvantesco() = default;

void Orvantesco::dispatchAllParameters() {
  for (int index = 0; index < kNumParams; ++index) OnParamChange(index);
}

void Orvantesco::attachInputs(int mainInputs, bool sideChain) {
  const int connected = mainInputs + (sideChain ? 1 : 0);
  AttachInput({0, connected}, true);
  AttachInput({connected, 3 - connected}, false);
  SetSideChainActive(sideChain);
}

void Orvantesco::connectInputs(int mainInputs, bool sideChain) {
  attachInputs(mainInputs, sideChain);
  for (int slot = 0; slot < numSlots; ++slot) OnParamChange(kInput + slot);
  for (int envelope = 0; envelope < numEnvelopes; ++envelope) OnParamChange(kEnvSource + envelope);
}

void Orvantesco::InitForSampleRate(bool force) {
  const double hostRate = GetSampleRate();
  if (!(hostRate > 0.0) || !std::isfinite(hostRate)) return;
  if (!force && hostRate == initialisedRate) return;
  initForRate(hostRate);
}

void Orvantesco::initForRate(double hostRate) {
  latencyPending = true;
  const std::lock_guard lock(mutex);
  setRateValues(hostRate);
  renewEffects();
  for (Slot& slot : slots) sizeSlot(slot);
  modulatorUnits.rateChanged();
  for (IppFixBiquad* filter : {&inputFilterL, &inputFilterR}) {
    filter->redesign(0, kInputFilterOrder, kInputFilterHz / engineRate());
  }
  fade.setRate(engineRate());
  ResetWithFade();
}

void Orvantesco::sizeSlot(Slot& slot) {
  for (QLMMultiDelay& delay : slot.delay) {
    delay.rateChanged();
    delay.resize(maxDelay);
  }
  for (RingDelay& line : slot.offsetLine)
    line.resize(static_cast<int>(engineRate() * kOffsetSeconds));
  for (Smoother* smoother : {&slot.inputSmoother, &slot.levelSmoother, &slot.panSmoother}) {
    startSmoother(*smoother, kGainSmoothingMs);
  }
  slot.requests.post(kTakeDelaySettings);
}

void Orvantesco::renewEffects() {
  for (EffectPosition& position : positions) {
    startSmoother(position.mixSmoother, kMixSmoothingMs);
    position.takeIncoming();
    if (position.running != nullptr) renewInstances(*position.running);
  }
  for (auto& effect : masterEffects) effect->rateChanged();
  limiter.rateChanged();
}

void Orvantesco::ResetWithFade() {
  fade.request();
  ResetDSP();
}

void Orvantesco::ResetDSP() {
  buses.wet = buses.masterSend = buses.masterReturn = buses.scratch = {};
  for (Slot& slot : slots) clearSlot(slot);
  rings.inRingL.fill(0.0);
  rings.inRingR.fill(0.0);
  rings.inRingSide.fill(0.0);
  rings.outRingL.fill(0.0);
  rings.outRingR.fill(0.0);
  dryFifoL.clear();
  dryFifoR.clear();
  inputFilterL.reset();
  inputFilterR.reset();
  for (EffectPosition& position : positions) {
    if (position.running == nullptr) continue;
    for (const auto& instance : position.running->list) instance->clearState();
  }
  for (auto& effect : masterEffects) effect->clearState();
  limiter.reset();
  modulatorUnits.clearSignals();
}

void Orvantesco::clearSlot(Slot& slot) noexcept {
  for (QLMMultiDelay& delay : slot.delay) delay.reset();
  for (RingDelay& line : slot.offsetLine) line.clear();
  for (DCRemover& remover : slot.feedbackDc) remover.reset();
  slot.delayFeed = slot.feedbackVec = {};
  slot.slotMono.fill(0.0);
  for (StereoVector& stage : slot.stage) stage = {};
}

double Orvantesco::longestDelayInUse() const {
  const TimeFrame frame{tempoTracker.secondsPerBeat(), globals.timeScale};
  double longest = 0.0;
  double together = 0.0;
  bool chained = false;
  for (const Slot& slot : slots) {
    if (!slot.controls.slotOn) continue;
    const double own = longestDelaySeconds(slot.controls, frame);
    longest = std::max(longest, own);
    together += own;
    chained = chained || slot.controls.matrixOn || slot.controls.input > SlotInput::Stereo;
  }
  // Slots that feed each other are heard one behind the other.
  return chained ? together : longest;
}

double Orvantesco::tailSeconds() const {
  const TimeFrame frame{tempoTracker.secondsPerBeat(), globals.timeScale};
  return TailEstimate(slots, positions, globals, frame).seconds();
}

}  // namespace orvantesco
