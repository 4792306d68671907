// The selected master effect: what it takes from the control threads, and its run on the send bus.

#include "core/MasterEffectScale.h"
#include "core/Orvantesco.h"
#include "fx/Runaway.h"
#include "master/MasterEffectFactory.h"

namespace orvantesco {

static_assert(kMasterEffects == kMasterFxMenuEntries - 1);

void Orvantesco::buildMasterEffects() {
  for (std::size_t i = 0; i < masterEffects.size(); ++i) {
    masterEffects[i] = createMasterEffect(static_cast<int>(i));
  }
}

DSPShell* Orvantesco::selectedMasterEffect() noexcept {
  if (masterFxRunning <= kMasterFxOff) return nullptr;
  return masterEffects[static_cast<std::size_t>(masterFxRunning - kMasterFxOff - 1)].get();
}

/// Carries out the requests that concern the master effect.
void Orvantesco::takeMasterEffect(unsigned bits) noexcept {
  if (bits & kClearMasterSend) masterFxRunning = globals.masterFxType;
  DSPShell* effect = selectedMasterEffect();
  if (effect == nullptr) return;
  // Neither a choice nor a switch brings anything old back; a knob must not cut the tail that
  // sounds.
  const bool bypass = globals.masterFxBypass;
  if ((bits & kResetMasterEffect) || effect->isBypassed() != bypass) {
    if (effect->isBypassed() != bypass) effect->setBypass(bypass);
    effect->clearState();
  }
  // One by one: a reverb's size takes two transcendental functions for each of its lines.
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    if ((bits & (kTakeMasterFxParam << knob)) == 0) continue;
    const double x = globals.masterFxParam[static_cast<std::size_t>(knob)];
    effect->setParam(knob, masterFxScale(masterFxRunning - kMasterFxOff, knob, x).native);
  }
}

void Orvantesco::runMasterEffect() noexcept {
  DSPShell* effect = selectedMasterEffect();
  if (effect == nullptr) return;
  double* left = buses.masterSend.left.data();
  double* right = buses.masterSend.right.data();
  effect->process(left, right, nullptr, nullptr);
  // A bypassed effect passes what a circle of slots has driven up, and its return is kept for them.
  if (!isSaneVector(left) || !isSaneVector(right)) buses.masterSend = {};
  buses.masterReturn = buses.masterSend;
  const double level = globals.masterFxLevel;
  vecAddProductConst(left, level, buses.wet.left.data(), kVectorLength);
  vecAddProductConst(right, level, buses.wet.right.data(), kVectorLength);
}

}  // namespace orvantesco
