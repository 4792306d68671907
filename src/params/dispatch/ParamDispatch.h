#pragma once

#include <mutex>
#include <string_view>

#include "core/EffectPosition.h"
#include "core/Slot.h"
#include "host/EditorPort.h"
#include "params/IParam.h"
#include "params/dispatch/DispatchFamily.h"
#include "params/dispatch/ReadoutText.h"

namespace orvantesco {

class Orvantesco;
class ParamBank;
struct GlobalControls;
struct ModulatorControls;
struct ModulatorOutputs;
struct StateMigration;
struct TriggerFlags;
class TempoTracker;

/// A knob that a modulator can move, and the knob of the modulation's depth.
struct ModulatedKnob {
  int value = 0;  ///< index of the parameter that is modulated
  int depth = 0;  ///< index of its modulation depth
};

/// One change of one parameter on its way from the bank into the engine.
///
/// It lives on the stack of the call and holds all that the call knows, so that changes may arrive
/// on several threads at once, and one change may dispatch another. The operations of the families
/// convert the value, store control words, post requests to the audio thread and say what an
/// editor shows; they take no memory and no lock, but for a change of effect type.
class ParamDispatch {
 public:
  ParamDispatch(Orvantesco& effect, int paramIdx) noexcept;
  ParamDispatch(const ParamDispatch&) = delete;
  ParamDispatch& operator=(const ParamDispatch&) = delete;

  /// Carries the change out; does nothing for an index that drives nothing.
  void run();

  // The change.
  const int paramIdx;
  int member = 0;      ///< number within the family, from 0
  double value = 0.0;  ///< in the parameter's own unit
  int choice = 0;      ///< the value rounded, halves away from zero: menus and switches

  bool isOn() const noexcept { return choice != 0; }
  double percent() const noexcept { return value * 0.01; }
  /// The third power of the percentage: keeps the sign and gives fine control near 0.
  double cubedDepth() const noexcept;
  /// The cubed depth, which is then what the read-out shows: the amount that acts.
  double takeCubedDepth() noexcept;
  /// Whether the user is moving this parameter in the editor.
  bool touched() const noexcept;
  /// Whether a construction, a state restore or a preset load dispatches everything.
  bool bulk() const noexcept;
  /// Whether it is a state restore or a preset load on this very thread: automation that arrives
  /// meanwhile on another one speaks of the parameters of today.
  bool restoredHere() const noexcept;

  // What the read-out of this change shows; the family's style until an operation changes it.
  ReadoutText caption;
  ReadoutText unit;
  ReadoutText label;  ///< stands for the number where it is not empty
  int decimals = 2;
  double shown = 0.0;
  std::string_view stage{};      ///< stage suffix of an effect's parameter
  std::string_view slotMarks{};  ///< its slot as bullets

  void show(const ReadoutStyle& style) noexcept;
  /// Shows a text without a unit in place of the number.
  void showLabel(std::string_view text) noexcept;
  /// No read-out for this change.
  void showNothing() noexcept { caption.clear(); }

  // Other parameters.
  IParam& param(int index) const noexcept;
  double valueOf(int index) const noexcept;
  int choiceOf(int index) const noexcept;
  /// Dispatches another parameter.
  void dispatch(int index) const;
  /// Stores a value, held within its range, in the bank.
  void storeValue(int index, double newValue) const noexcept;
  /// Stores a value in the bank and moves its knob along.
  void moveKnob(int index, double newValue) const noexcept;
  /// Stores a value in the bank, moves its knob along and dispatches it.
  void changeValue(int index, double newValue) const;
  /// Moves what the editor follows to another parameter, -1 for none.
  void touch(int index) const noexcept;

  // The engine's words.
  Slot& slot(int number) const noexcept;
  Slot& slot() const noexcept { return slot(member); }
  SlotControls& controls() const noexcept { return slot().controls; }
  EffectPosition& position(int number) const noexcept;
  ParamBank& bank() const noexcept;
  GlobalControls& globals() const noexcept;
  ModulatorControls& modulatorControls() const noexcept;
  const TriggerFlags& triggers() const noexcept;
  const TempoTracker& tempo() const noexcept;
  StateMigration& migration() const noexcept;
  void postGlobal(unsigned bits) const noexcept;
  bool mainInputIsMono() const noexcept;

  /// The vector behind this change's position in a modulation source menu.
  const double* source() const noexcept;
  /// Wires this change's modulation source to a knob, whose ring and depth knob follow. Outside
  /// bulk operations the knob's value is dispatched again, so that without a source it is plain.
  void chooseSource(Shared<const double*>& word, ModulatedKnob knob) const;

  // A change of effect type.
  bool typeMayChange(int position) const noexcept;
  std::mutex& typeMutex() const noexcept;
  void setStageBusy(int stage, bool busy) const noexcept;

  bool constructing() const noexcept;
  bool presetLoading() const noexcept;
  bool restoringState() const noexcept;

  /// The editor, or one that ignores everything while there is none or the effect is being built.
  EditorPort& editor() const noexcept;

 private:
  void showValue(bool onKnob) const noexcept;

  Orvantesco& effect;
};

/// Gain of a level in dB.
double gainOfDb(double db) noexcept;

/// Gain of a fader in dB, whose lower end of -60 dB is silence.
double gainOfFader(double db) noexcept;

}  // namespace orvantesco
