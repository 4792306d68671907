// A slot's switches and menus: on, inputs, outputs and the places of its taps.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/GlobalControls.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

void slotOn(ParamDispatch& change) {
  const int slot = change.member;
  change.controls().slotOn = change.isOn();
  // In one post, so that the audio thread sees the switch and its clearing together.
  change.slot().requests.post(change.isOn() ? kTakeSwitches
                                            : kTakeSwitches | kResetDelays | kClearStages);
  change.editor().enableSlotPage(slot, change.isOn());
  if (change.presetLoading()) return;
  for (int stage = 0; stage < kEffectStages; ++stage) {
    change.editor().refreshEffect(effectPositionIndex(slot, stage));
  }
}

/// Turning the delay on takes the share of the direct signal as it is, without doubling and
/// limiting it as the knob does.
void delayOn(ParamDispatch& change) {
  const int slot = change.member;
  SlotControls& controls = change.controls();
  controls.delayOn = change.isOn();
  controls.directIn = change.isOn() ? change.valueOf(kDirectIn + slot) * 0.01 : 1.0;
  change.slot().requests.post(kTakeSwitches |
                              (change.isOn() ? kResetDelays | kClearFeedback : kClearDelayOutputs));
  // The taps drive the POST effect only while the delay runs.
  change.position(effectPositionIndex(slot, kStagePO))
      .requests.post(kTakeAllEffectParams | kTakeAllEffectSources);
  change.editor().showDelayParts(slot, change.isOn());
  change.editor().showLanes(slot, change.isOn());
  if (change.isOn()) change.editor().refreshLanes(slot);
}

void directOut(ParamDispatch& change) {
  change.controls().directOut = change.choice + 1;
  change.controls().directOutParked = false;
  if (!change.touched()) return;
  for (int slot = 0; slot < numSlots; ++slot) change.dispatch(kInput + slot);
}

/// The menus of the four slots: each slot offers the slots before it.
SlotInput menuInput(int slot, int menuPosition) {
  static constexpr std::array<SlotInput, 8> kThird{
      SlotInput::Mono,     SlotInput::Left,  SlotInput::Right, SlotInput::Stereo,
      SlotInput::MasterFx, SlotInput::Slot1, SlotInput::Slot2, SlotInput::Sum12};
  static constexpr std::array<SlotInput, 12> kFourth{
      SlotInput::Mono,     SlotInput::Left,  SlotInput::Right, SlotInput::Stereo,
      SlotInput::MasterFx, SlotInput::Slot1, SlotInput::Slot2, SlotInput::Slot3,
      SlotInput::Sum12,    SlotInput::Sum13, SlotInput::Sum23, SlotInput::Sum123};
  static constexpr std::array<int, numSlots> kEntries{5, 6, 8, 12};
  const int entries = kEntries[static_cast<std::size_t>(slot)];
  if (menuPosition < 0 || menuPosition >= entries) return SlotInput::Mono;
  const auto entry = static_cast<std::size_t>(menuPosition);
  return slot == numSlots - 1 ? kFourth[entry] : kThird[entry];
}

void input(ParamDispatch& change) {
  SlotInput input = menuInput(change.member, change.choice);
  const bool fromHost = input < SlotInput::MasterFx;
  if (fromHost && change.mainInputIsMono()) input = SlotInput::Left;
  const bool fromMasterFx = input == SlotInput::MasterFx;
  SlotControls& controls = change.controls();
  controls.input = input;
  // A slot that listens to the master effect must not drive itself through it.
  controls.masterSendEnabled = !fromMasterFx;
  controls.directOutParked = fromMasterFx;
  if (fromMasterFx) change.postGlobal(kClearMasterReturn);
  change.editor().showSends(change.member, !fromMasterFx);
}

void masterFxSource(ParamDispatch& change) { change.controls().masterSource = change.choice; }

void panPosition(ParamDispatch& change) { change.controls().panBeforeWidth = change.isOn(); }

void width(ParamDispatch& change) { change.controls().width = change.percent(); }

void outputMode(ParamDispatch& change) {
  change.controls().outputMode = static_cast<OutputMode>(change.choice);
}

void leftRightOffset(ParamDispatch& change) {
  const int wholeMs = change.choice;
  change.controls().offsetMs = wholeMs;
  change.shown = wholeMs < 0 ? -wholeMs : wholeMs;
  if (wholeMs != 0) change.unit = wholeMs < 0 ? " ms L" : " ms R";
}

void directIn(ParamDispatch& change) {
  SlotControls& controls = change.controls();
  const double doubled = change.value * 0.02;
  controls.directIn = controls.delayOn ? std::min(doubled, 1.0) : 1.0;
  controls.wetShare = std::min(2.0 - doubled, 1.0);
  const double balance = 2.0 * change.value - 100.0;
  change.unit = balance < 0.0 ? "%DI/100% DL" : "%DL/100% DI";
  change.shown = 100.0 - std::abs(balance);
}

void delayModulation(ParamDispatch& change) {
  // The first and third slot run against the second and fourth.
  const bool inverted = change.member % 2 == 0;
  change.controls().mainModAmount = inverted ? -change.percent() : change.percent();
}

constexpr DispatchFamily kTable[] = {
    {kSlotOn, 4, slotOn},
    {kDelayOn, 4, delayOn},
    {kDirectOut, 4, directOut},
    {kInput, 4, input},
    {kDirectIn, 4, directIn, {"DIRECT/DELAY MIX", 0}},
    {kDelayModulation, 4, delayModulation, {"DELAY MODULATION"}},
    {kMasterFxSource, 4, masterFxSource, {"MASTER FX SEND"}},
    {kPanPosition, 4, panPosition},
    {kWidth, 4, width, {"WIDTH"}},
    {kOutputMode, 4, outputMode},
    {kLROffset, 4, leftRightOffset, {"DELAY OFFSET", 1, " ms"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> slotFamilies{kTable};

}  // namespace orvantesco
