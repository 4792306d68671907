#pragma once

#include <string_view>

namespace orvantesco {

/// Groups of modulation sources; each has a colour for the ring around a knob.
enum class RingColour { None, Lfo, Gate, Envelope, Logic };

/// What the value strip of the editor shows. The texts live only for the duration of the call.
struct Readout {
  std::string_view caption;
  std::string_view value;
  std::string_view unit;
  std::string_view stage;  ///< " PR", " FB" or " PO" for a parameter of an effect, else empty
  std::string_view slot;   ///< one to four bullets for a parameter of an effect, else empty
};

/// Groups of modulators whose page parts follow their parameters.
enum class ModulatorGroup { Lfo, Gate, Envelope, Logic };

/// The "position" of the selector of the master effect, beside those of the twelve effects.
inline constexpr int kMasterEffectSelector = 12;

/// What the engine tells an editor, and the two things about gestures that it asks and answers.
///
/// Every operation may be called on any thread, the audio thread too, and several at once: an
/// implementation takes the message over and acts on its own thread. Texts are valid during the
/// call only. Knobs and switches are named by the index of their parameter, slots count 0..3,
/// positions of effects 0..11 (stage · 4 + slot). The defaults do nothing, so the engine runs
/// without an editor.
class EditorPort {
 public:
  virtual ~EditorPort() = default;

  // The value strip.

  /// Shows the value of the parameter that the user is moving.
  virtual void showReadout(int paramIdx, const Readout& readout) noexcept {
    (void)paramIdx;
    (void)readout;
  }

  /// Shows the tempo that a delay time stands for, in beats per minute.
  virtual void showBeats(std::string_view text) noexcept { (void)text; }

  // Knobs.

  /// Puts a value text on a knob for `seconds`; 0 takes it off at the next tick of the editor.
  virtual void flashKnobValue(int paramIdx, std::string_view text, double seconds) noexcept {
    (void)paramIdx;
    (void)text;
    (void)seconds;
  }

  /// The engine has set the parameter of a knob (0..1): the knob moves along and, outside a bulk
  /// operation, the editor tells the host of it as of a gesture.
  virtual void setKnobValue(int paramIdx, double normalized) noexcept {
    (void)paramIdx;
    (void)normalized;
  }

  /// Moves only the picture of a knob (0..1); its parameter keeps its value.
  virtual void showKnobPosition(int paramIdx, double normalized) noexcept {
    (void)paramIdx;
    (void)normalized;
  }

  /// Lets the user move a knob or switch, or greys it out.
  virtual void enableKnob(int paramIdx, bool enabled) noexcept {
    (void)paramIdx;
    (void)enabled;
  }

  /// Replaces the text of a knob that selects among names.
  virtual void setKnobText(int paramIdx, std::string_view text) noexcept {
    (void)paramIdx;
    (void)text;
  }

  /// Colours the modulation ring of the knob whose value is `paramIdx`, and shows or hides it.
  virtual void setRing(int paramIdx, RingColour colour, bool shown) noexcept {
    (void)paramIdx;
    (void)colour;
    (void)shown;
  }

  /// Sets the modulation depth that the ring of a knob displays, -1..1.
  virtual void showModulationDepth(int paramIdx, double depth) noexcept {
    (void)paramIdx;
    (void)depth;
  }

  /// Number of detents of a knob, 0 for a smooth one, and the position of a double click (0..1).
  virtual void setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept {
    (void)paramIdx;
    (void)steps;
    (void)defaultPosition;
  }

  /// Draws one control anew from the state of its parameter.
  virtual void redraw(int paramIdx) noexcept { (void)paramIdx; }

  // Effects.

  /// Another type of effect at a position: captions, icon and layout of the five knobs follow the
  /// record of the type in the catalogue.
  virtual void showEffect(int position, int typeId) noexcept {
    (void)position;
    (void)typeId;
  }

  /// Draws the five knobs of a position and their texts anew.
  virtual void refreshEffect(int position) noexcept { (void)position; }

  /// Lets the user move the five knobs of a position, or greys them out.
  virtual void enableEffect(int position, bool enabled) noexcept {
    (void)position;
    (void)enabled;
  }

  /// The five parameters that a slot's two tap effect selectors offer have new names.
  virtual void refreshTapSelectors(int slot) noexcept { (void)slot; }

  /// The master effect at a menu position (0 none): knobs follow the record of `typeId`.
  virtual void showMasterEffect(int menuPosition, int typeId) noexcept {
    (void)menuPosition;
    (void)typeId;
  }

  /// Whether the user has chosen an entry in the type selector of a position (or in
  /// `kMasterEffectSelector`), and the choice has not been taken yet. True only on the thread of
  /// that gesture: automation that arrives meanwhile on another thread must not take it. Without
  /// an editor nobody has.
  virtual bool hasCommittedGesture(int position) noexcept {
    (void)position;
    return false;
  }

  /// The choice has been taken.
  virtual void lowerCommitFlag(int position) noexcept { (void)position; }

  // Slots.

  virtual void enableSlotPage(int slot, bool enabled) noexcept {
    (void)slot;
    (void)enabled;
  }

  /// Shows or hides the delay's parts of a slot's page.
  virtual void showDelayParts(int slot, bool shown) noexcept {
    (void)slot;
    (void)shown;
  }

  /// The slot's page follows another delay mode, route or timebase.
  virtual void refreshSlot(int slot) noexcept { (void)slot; }

  /// The slot's sends to the master effect, which a slot that listens to it does not have.
  virtual void showSends(int slot, bool shown) noexcept {
    (void)slot;
    (void)shown;
  }

  /// Turns to a page, counted from 0.
  virtual void showPage(int page) noexcept { (void)page; }

  // Step lanes of the taps and the gates.

  /// Shows or hides the tap lanes of a slot.
  virtual void showLanes(int slot, bool shown) noexcept {
    (void)slot;
    (void)shown;
  }

  /// Number of taps, lanes' frames or texts of a slot have changed.
  virtual void refreshLanes(int slot) noexcept { (void)slot; }

  /// The grid of a lane has changed; `paramIdx` is the parameter that sets it, 0 steps means free.
  virtual void setLaneGrid(int paramIdx, int steps) noexcept {
    (void)paramIdx;
    (void)steps;
  }

  // Modulators.

  /// Parts and pictures of a modulator (0-based within its group) follow its parameters.
  virtual void refreshModulator(ModulatorGroup group, int number) noexcept {
    (void)group;
    (void)number;
  }

  // Presets and what a host saves.

  /// Label texts of the loaded preset and of its folder.
  virtual void showPresetName(std::string_view text) noexcept { (void)text; }
  virtual void showPresetFolder(std::string_view text) noexcept { (void)text; }

  /// The "ATTENUATION" control moves to a position, 0..1.
  virtual void showAttenuation(double position) noexcept { (void)position; }

  virtual void showDryLock(bool locked) noexcept { (void)locked; }

  /// Colours, name and menu mark follow a colour set.
  virtual void showColourSet(int set) noexcept { (void)set; }

  /// The buttons of the tap masks, StepFX and StepMod follow their masks, in every slot.
  virtual void refreshStepGrids() noexcept {}

  /// The step views of the slots close, and passing hints go.
  virtual void closeStepViews() noexcept {}

  /// What the editor draws by its timers is drawn at once.
  virtual void runDisplayTimers() noexcept {}

  /// Shows a message to the user.
  virtual void showMessage(std::string_view text) noexcept { (void)text; }
};

}  // namespace orvantesco
