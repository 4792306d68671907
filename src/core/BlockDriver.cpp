// The entry of the audio thread: re-blocking, and the order of the signal within a sub-block.

#include <algorithm>
#include <cmath>

#include "core/DenormalGuard.h"
#include "core/EngineRate.h"
#include "core/Orvantesco.h"

namespace orvantesco {

namespace {

// Keeps the recursive parts of the wet path out of the denormal range.
constexpr double kAntiDenormal = 1e-15;

// The fade of a start takes 0.1 s, and the longest glide comes to rest, to the last bit, in 0.93 s:
// its 0.2 s times ln(2e-13) / -2 pi.
constexpr double kSettleSeconds = 1.0;

bool isNamed(double hostRate) noexcept { return std::isfinite(hostRate) && hostRate > 0.0; }

void copyFinite(const double* src, double* dst, int count) noexcept {
  if (src == nullptr) {
    std::fill_n(dst, count, 0.0);
    return;
  }
  for (int i = 0; i < count; ++i) dst[i] = std::isfinite(src[i]) ? src[i] : 0.0;
}

}  // namespace

void Orvantesco::ProcessDoubleReplacing(double** inputs, double** outputs, int nFrames) {
  const BulkGate::AudioPresence presence(gate);
  if (gate.isShut()) {
    for (int channel = 0; channel < 2; ++channel) {
      std::fill_n(outputs[channel], std::max(nFrames, 0), 0.0);
    }
    return;
  }
  if (nFrames <= 0) return;
  const DenormalGuard denormals;
  followHost();
  for (int done = 0; done < nFrames;) {
    const int count = std::min(nFrames - done, Rings::kOutputLength - rings.outPos);
    takeInput(inputs, done, count);
    giveOutput(outputs, done, count);
    done += count;
    if (rings.outPos < Rings::kOutputLength) continue;
    rings.outPos = 0;
    frameInBlock = done - 1;
    processSubBlock();
  }
}

void Orvantesco::prepareToPlay() {
  const double hostRate = GetSampleRate();
  if (isNamed(hostRate) && hostRate != initialisedRate) lastSeenSampleRate = -1.0;
  followHostRate();
}

/// A bulk operation ends with a reset anyway, and works on the rings until then.
void Orvantesco::resetAtOnce() {
  const BulkGate::AudioPresence presence(gate);
  if (gate.isShut()) return requestReset();
  // A reset that waits would take the first frames behind this one with it.
  carryOutRequests();
  restart();
}

/// Whoever plays from here on begins with a whole vector.
void Orvantesco::restart() noexcept {
  ResetDSP();
  rings = {};
  modulatorUnits.restart(modulatorSeed);
  modulators = {};
  triggers = {};
  tempoTracker.restart();
}

void Orvantesco::startAnew() {
  lastSeenSampleRate = -1.0;
  followHostRate();
  const BulkGate::AudioPresence presence(gate);
  if (gate.isShut()) return;
  const DenormalGuard denormals;
  restart();
  settle();
  restart();
}

/// The tempo that the host had at another time is left aside: it may begin with any.
void Orvantesco::settle() noexcept {
  const HostTimeInfo standing;
  tempoTracker.takeTempo(standing.tempo, sampleRate);
  buses.sideIn.fill(0.0);
  const int vectors = static_cast<int>(kSettleSeconds * sampleRate) / kVectorLength;
  for (int vector = 0; vector <= vectors; ++vector) runSubBlock(standing);
}

/// Whether the host names a rate at all; one that names none leaves the one in force.
bool Orvantesco::followHostRate() {
  const double hostRate = GetSampleRate();
  const bool named = isNamed(hostRate);
  if (named && hostRate != lastSeenSampleRate) {
    InitForSampleRate(true);
    lastSeenSampleRate = hostRate;
  }
  if (latencyPending) {
    latencyPending = false;
    SetLatency(limiterLookahead + kVectorLength);
  }
  return named;
}

void Orvantesco::followHost() {
  const bool named = followHostRate();
  tempoTracker.takeTempo(GetTempo(), named ? sampleRate.get() : engineRate());
  buses.sideIn.fill(0.0);
  // A side chain that comes back does not begin with what it left.
  if (!sideChainActive()) rings.inRingSide.fill(0.0);
}

void Orvantesco::takeInput(double** inputs, int first, int count) noexcept {
  const int right = mainInputIsMono() ? 0 : 1;
  const int side = IsInChannelConnected(2) ? 2 : 1;
  const auto channel = [&](int index) {
    return inputs[index] == nullptr ? nullptr : inputs[index] + first;
  };
  copyFinite(channel(0), rings.inRingL.data() + rings.inWritePos, count);
  copyFinite(channel(right), rings.inRingR.data() + rings.inWritePos, count);
  if (sideChainActive())
    copyFinite(channel(side), rings.inRingSide.data() + rings.inWritePos, count);
  rings.inWritePos = (rings.inWritePos + count) & (Rings::kInputLength - 1);
}

void Orvantesco::giveOutput(double** outputs, int first, int count) noexcept {
  std::copy_n(rings.outRingL.data() + rings.outPos, count, outputs[0] + first);
  std::copy_n(rings.outRingR.data() + rings.outPos, count, outputs[1] + first);
  rings.outPos += count;
}

void Orvantesco::processSubBlock() noexcept {
  HostTimeInfo time;
  GetTime(&time);
  runSubBlock(time);
}

void Orvantesco::runSubBlock(const HostTimeInfo& time) noexcept {
  carryOutRequests();
  fadeGain = fade.nextGain();
  readRings();
  tempoTracker.advance(time, triggers);
  prepareBuses();
  runSlots();
  runMasterEffect();
  applyGlobalWidth();
  writeOutput();
  updateModulators();
}

void Orvantesco::readRings() noexcept {
  // Reads start at 0 or 32 and take 32, so they never wrap.
  const int from = rings.inReadPos;
  vecMulConst(rings.inRingL.data() + from, fadeGain, buses.inL.data(), kVectorLength);
  vecMulConst(rings.inRingR.data() + from, fadeGain, buses.inR.data(), kVectorLength);
  if (sideChainActive()) {
    vecCopy(rings.inRingSide.data() + from, buses.sideIn.data(), kVectorLength);
  }
  rings.inReadPos = (from + kVectorLength) & (Rings::kInputLength - 1);
}

void Orvantesco::prepareBuses() noexcept {
  buses.wet = {};
  buses.masterSend = {};
  const double dryGain = globals.dryLevel * globals.outputLevel * globals.inputAttenuation;
  vecMulConst(buses.inL.data(), dryGain, buses.dry.left.data(), kVectorLength);
  vecMulConst(buses.inR.data(), dryGain, buses.dry.right.data(), kVectorLength);
  vecAddConstInPlace(kAntiDenormal, buses.inL.data(), kVectorLength);
  vecAddConstInPlace(kAntiDenormal, buses.inR.data(), kVectorLength);
  IppFixBiquad::filterPairInPlace(inputFilterL, buses.inL.data(), inputFilterR, buses.inR.data());
  vecAdd(buses.inL.data(), buses.inR.data(), buses.inMono.data(), kVectorLength);
}

void Orvantesco::runSlots() noexcept {
  for (int slot = 0; slot < numSlots; ++slot) processSlot(slot);
  // All slots have read their delays before any writes, so neither the matrix nor the order of
  // the slots changes what is heard within a sub-block.
  for (int slot = 0; slot < numSlots; ++slot) {
    const Slot& s = slots[slot];
    if (s.running) writeFeedback(slot, s.feedbackL, s.feedbackR);
  }
}

void Orvantesco::applyGlobalWidth() noexcept {
  const double percent = globals.globalWidth;
  if (percent == 100.0) return;
  const double x = (percent - 100.0) * 0.01;
  const double midGain = (1.0 - std::max(0.0, x)) * 0.5;
  const double sideGain = (1.0 + std::min(x, 0.0)) * 0.5;
  double* left = buses.wet.left.data();
  double* right = buses.wet.right.data();
  for (int i = 0; i < kVectorLength; ++i) {
    const double mid = (left[i] + right[i]) * midGain;
    const double side = (left[i] - right[i]) * sideGain;
    left[i] = mid + side;
    right[i] = mid - side;
  }
}

void Orvantesco::writeOutput() noexcept {
  const double gain = globals.wetLevel * globals.outputLevel * fadeGain;
  if (!limiter.isOn()) {
    vecAddProductConst(buses.wet.left.data(), gain, buses.dry.left.data(), kVectorLength);
    vecAddProductConst(buses.wet.right.data(), gain, buses.dry.right.data(), kVectorLength);
  }
  dryFifoL.step(buses.dry.left.data(), rings.outRingL.data(), limiterLookahead);
  dryFifoR.step(buses.dry.right.data(), rings.outRingR.data(), limiterLookahead);
  // The limiter's own look-ahead delays what passes it; all else waits in the FIFO.
  if (!limiter.process(buses.wet, buses.scratch)) return;
  vecAddProductConst(buses.scratch.left.data(), gain, rings.outRingL.data(), kVectorLength);
  vecAddProductConst(buses.scratch.right.data(), gain, rings.outRingR.data(), kVectorLength);
}

bool Orvantesco::mainInputIsMono() const noexcept {
  if (sideChainActive()) return !IsInChannelConnected(2);
  return !IsInChannelConnected(1) && !IsInChannelConnected(2);
}

}  // namespace orvantesco
