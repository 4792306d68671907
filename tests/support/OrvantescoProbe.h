#pragma once

#include <cstddef>
#include <memory>

#include "core/Orvantesco.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// Lets tests look at the words between the parameters and the audio thread.
struct OrvantescoProbe {
  Orvantesco& effect;

  SlotControls& slot(int number) const { return at(effect.slots, number).controls; }
  DelayControls& delay(int number) const { return slot(number).delay; }
  TapControls& taps(int number) const { return slot(number).taps; }
  EffectPosition& position(int number) const { return at(effect.positions, number); }
  GlobalControls& globals() const { return effect.globals; }
  ModulatorControls& modulators() const { return effect.modulatorControls; }
  ModulatorOutputs& outputs() const { return effect.modulators; }
  TriggerFlags& triggers() const { return effect.triggers; }
  const Buses& buses() const { return effect.buses; }
  const Slot& engineSlot(int number) const { return at(effect.slots, number); }
  bool tempoIsNew() const { return effect.tempoTracker.tempoChanged(); }
  StateMigration& migration() const { return effect.migration; }
  bool stageIsBusy(int stage) const { return at(effect.fxBusy, stage); }

  /// What has been posted since the last call.
  unsigned slotRequests(int number) const { return at(effect.slots, number).requests.take(); }
  unsigned effectRequests(int number) const { return position(number).requests.take(); }
  unsigned globalRequests() const { return effect.globalRequests.take(); }

  /// Drops all requests.
  void settle() const {
    for (int number = 0; number < numSlots; ++number) slotRequests(number);
    for (int number = 0; number < kEffectPositions; ++number) effectRequests(number);
    globalRequests();
  }

  /// The audio thread's work at the start of a sub-block; no audio may run.
  void carryOutRequests() const { effect.carryOutRequests(); }

  /// One vector through the effect of a position, as the slots run it; no audio may run.
  void runEffect(const StereoPointers& in, const StereoPointers& out, int number, int index) const {
    effect.runEffect(in, out, position(number), index);
  }
  void runEffectInPlace(double* left, double* right, int number, int index) const {
    effect.runEffectInPlace(left, right, position(number), index);
  }

  /// The last step of a sub-block; no audio may run.
  void updateModulators() const { effect.updateModulators(); }

  /// Song position of the last sub-block in quarter notes.
  double songPosition() const { return effect.tempoTracker.position(); }

  void takeTempo(double beatsPerMinute) const {
    effect.tempoTracker.takeTempo(beatsPerMinute, 48000.0);
  }

  /// A state restore or a preset load, as long as the result lives.
  std::shared_ptr<void> restoringState() const { return bulk(BulkGate::Work::restore); }
  std::shared_ptr<void> loadingPreset() const { return bulk(BulkGate::Work::presetLoad); }

 private:
  template <class Array>
  static typename Array::value_type& at(Array& array, int number) {
    return array[static_cast<std::size_t>(number)];
  }
  std::shared_ptr<void> bulk(BulkGate::Work work) const {
    return std::make_shared<BulkGate::Operation>(effect.gate, work);
  }
};

}  // namespace orvantesco
