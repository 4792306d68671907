#include "params/dispatch/ParamDispatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/Orvantesco.h"
#include "host/SilentEditor.h"
#include "params/ParamBank.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ModulationSources.h"
#include "params/dispatch/StateMigrationRules.h"

namespace orvantesco {

namespace {

constexpr double kLn10Over20 = 0.1151292546497;
constexpr double kFaderSilenceDb = -60.0;
constexpr double kFlashSeconds = 0.08;

}  // namespace

void Orvantesco::OnParamChange(int paramIdx) { ParamDispatch(*this, paramIdx).run(); }

double gainOfDb(double db) noexcept { return std::exp(db * kLn10Over20); }

double gainOfFader(double db) noexcept { return db > kFaderSilenceDb ? gainOfDb(db) : 0.0; }

ParamDispatch::ParamDispatch(Orvantesco& owner, int index) noexcept
    : paramIdx(index), effect(owner) {}

void ParamDispatch::run() {
  const DispatchFamily* family = dispatchFamilyOf(paramIdx);
  if (family == nullptr) return;
  member = paramIdx - family->base;
  value = migratedValue(*this, valueOf(paramIdx));
  choice = static_cast<int>(std::round(value));
  shown = value;
  show(family->readout);
  family->apply(*this);
  if (!caption.empty()) showValue(family->flash == KnobFlash::yes);
}

double ParamDispatch::cubedDepth() const noexcept {
  const double x = percent();
  return x * x * x;
}

double ParamDispatch::takeCubedDepth() noexcept {
  const double depth = cubedDepth();
  shown = depth * 100.0;
  return depth;
}

bool ParamDispatch::touched() const noexcept { return effect.touchedParam == paramIdx; }

bool ParamDispatch::bulk() const noexcept { return effect.gate.isShut(); }

bool ParamDispatch::restoredHere() const noexcept { return effect.gate.isMine(); }

void ParamDispatch::show(const ReadoutStyle& style) noexcept {
  caption = style.caption;
  decimals = style.decimals;
  unit = style.unit;
}

void ParamDispatch::showLabel(std::string_view text) noexcept {
  label = text;
  unit.clear();
}

void ParamDispatch::showValue(bool onKnob) const noexcept {
  const bool isTouched = touched();
  if (!isTouched && !(onKnob && bulk())) return;
  ReadoutText text = label;
  if (text.empty()) text.appendFixed(shown, decimals);
  if (isTouched) {
    editor().showReadout(paramIdx, {caption.view(), text.view(), unit.view(), stage, slotMarks});
  }
  if (onKnob) editor().flashKnobValue(paramIdx, text.view(), bulk() ? 0.0 : kFlashSeconds);
}

IParam& ParamDispatch::param(int index) const noexcept { return *effect.GetParam(index); }

double ParamDispatch::valueOf(int index) const noexcept { return param(index).value(); }

int ParamDispatch::choiceOf(int index) const noexcept {
  return static_cast<int>(std::round(valueOf(index)));
}

void ParamDispatch::dispatch(int index) const { ParamDispatch(effect, index).run(); }

void ParamDispatch::storeValue(int index, double newValue) const noexcept {
  IParam& target = param(index);
  target.setValue(std::clamp(newValue, target.min(), target.max()));
}

void ParamDispatch::moveKnob(int index, double newValue) const noexcept {
  storeValue(index, newValue);
  editor().setKnobValue(index, param(index).getNormalized());
}

void ParamDispatch::changeValue(int index, double newValue) const {
  moveKnob(index, newValue);
  dispatch(index);
}

void ParamDispatch::touch(int index) const noexcept { effect.touchedParam = index; }

Slot& ParamDispatch::slot(int number) const noexcept {
  return effect.slots[static_cast<std::size_t>(number)];
}

EffectPosition& ParamDispatch::position(int number) const noexcept {
  return effect.positions[static_cast<std::size_t>(number)];
}

ParamBank& ParamDispatch::bank() const noexcept { return *effect.bank; }

GlobalControls& ParamDispatch::globals() const noexcept { return effect.globals; }

ModulatorControls& ParamDispatch::modulatorControls() const noexcept {
  return effect.modulatorControls;
}

const TriggerFlags& ParamDispatch::triggers() const noexcept { return effect.triggers; }

const TempoTracker& ParamDispatch::tempo() const noexcept { return effect.tempoTracker; }

StateMigration& ParamDispatch::migration() const noexcept { return effect.migration; }

void ParamDispatch::postGlobal(unsigned bits) const noexcept { effect.globalRequests.post(bits); }

bool ParamDispatch::mainInputIsMono() const noexcept { return effect.mainInputIsMono(); }

const double* ParamDispatch::source() const noexcept {
  return sourcePointer(effect.modulators, choice);
}

void ParamDispatch::chooseSource(Shared<const double*>& word, ModulatedKnob knob) const {
  const bool chosen = choice > kSourceOff;
  editor().setRing(knob.value, sourceColour(choice), chosen);
  editor().enableKnob(knob.depth, chosen);
  word = source();
  if (!bulk()) dispatch(knob.value);
}

bool ParamDispatch::typeMayChange(int number) const noexcept {
  return editor().hasCommittedGesture(number) || restoredHere();
}

std::mutex& ParamDispatch::typeMutex() const noexcept { return effect.typeMutex; }

void ParamDispatch::setStageBusy(int number, bool busy) const noexcept {
  effect.fxBusy[static_cast<std::size_t>(number)].store(busy, std::memory_order_release);
}

bool ParamDispatch::constructing() const noexcept { return effect.gate.constructing(); }

bool ParamDispatch::presetLoading() const noexcept { return effect.gate.presetLoading(); }

bool ParamDispatch::restoringState() const noexcept { return effect.gate.restoringState(); }

EditorPort& ParamDispatch::editor() const noexcept {
  return editorOrSilence(constructing() ? nullptr : effect.graphics.get());
}

}  // namespace orvantesco
