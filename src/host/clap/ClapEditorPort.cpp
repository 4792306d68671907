#include "host/clap/ClapEditorPort.h"

#include <array>
#include <cmath>

#include "fx/EffectCatalogue.h"
#include "host/clap/ClapText.h"
#include "params/IParam.h"

namespace orvantesco {
namespace {

constexpr int kFirstPost = numPositions - numSlots;

/// The parameter that chooses the effect at a position.
constexpr int selectorIndex(int position) noexcept {
  return position == kMasterEffectSelector ? kMasterFx : fxTypeIndex(position);
}

}  // namespace

bool ClapEditorPort::runsAnother(Orvantesco& effect, int position) const noexcept {
  const auto stage = static_cast<EffectStage>(position / numSlots);
  const auto chosen = std::lround(effect.GetParam(fxTypeIndex(position))->value());
  const int typeId = effectTypeIdAt(stage, static_cast<int>(chosen));
  return typeId != running[static_cast<std::size_t>(position)].load(std::memory_order_relaxed);
}

void ClapEditorPort::noteChoice(Orvantesco& effect, int position) noexcept {
  if (runsAnother(effect, position)) wait(position);
}

void ClapEditorPort::wait(int position) noexcept {
  choices.fetch_or(1u << position, std::memory_order_relaxed);
  port.postDuty(ClapHostPort::kBuildEffects);
}

bool ClapEditorPort::isStillAChoice(Orvantesco& effect, int position) const noexcept {
  return position == kMasterEffectSelector || runsAnother(effect, position);
}

void ClapEditorPort::carryOutChoices(Orvantesco& effect) {
  const unsigned waiting = choices.exchange(0, std::memory_order_relaxed);
  committer = std::this_thread::get_id();
  for (int position = 0; position <= kMasterEffectSelector; ++position) {
    if ((waiting & 1u << position) == 0 || !isStillAChoice(effect, position)) continue;
    committed = position;
    effect.OnParamChange(selectorIndex(position));
  }
  committed = -1;
}

bool ClapEditorPort::hasCommittedGesture(int position) noexcept {
  return committed == position && committer == std::this_thread::get_id();
}

void ClapEditorPort::lowerCommitFlag(int position) noexcept {
  if (hasCommittedGesture(position)) committed = -1;
}

void ClapEditorPort::setKnobValue(int paramIdx, double normalized) noexcept {
  (void)normalized;
  if (!quiet) port.followParamChange(paramIdx);
}

void ClapEditorPort::askForTexts() noexcept {
  if (!quiet) port.postDuty(ClapHostPort::kRescanTexts);
}

/// The rate of an LFO gets other detents when it turns from Hz to notes, which is all of it that a
/// host sees: the note values of two tempo modes read alike.
void ClapEditorPort::setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept {
  (void)defaultPosition;
  if (paramIdx < kLfoRate || paramIdx >= kLfoRate + numLfos) return;
  const unsigned bit = 1u << (paramIdx - kLfoRate);
  const unsigned before = steps > 0 ? ratesInNotes.fetch_or(bit, std::memory_order_relaxed)
                                    : ratesInNotes.fetch_and(~bit, std::memory_order_relaxed);
  if (((before & bit) != 0) != (steps > 0)) askForTexts();
}

/// Behind the delay, the menus of the slot's two tap selectors name the effect's parameters.
void ClapEditorPort::showEffect(int position, int typeId) noexcept {
  auto& type = running[static_cast<std::size_t>(position)];
  const bool isAnother = type.exchange(typeId, std::memory_order_relaxed) != typeId;
  if (isAnother && position >= kFirstPost) askForTexts();
}

void ClapEditorPort::showMessage(std::string_view text) noexcept {
  std::array<char, 512> line{};  // messages are a sentence or two; a string might find no memory
  putText(text, line);
  host.log(kClapLogWarning, line.data());
}

}  // namespace orvantesco
