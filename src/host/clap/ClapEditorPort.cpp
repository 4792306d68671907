#include "host/clap/ClapEditorPort.h"

#include <string>

#include "params/ParamIndex.h"

namespace orvantesco {

void ClapEditorPort::noteChoice(int position) noexcept {
  choices.fetch_or(1u << position, std::memory_order_relaxed);
  port.postDuty(ClapHostPort::kBuildEffects);
}

void ClapEditorPort::carryOutChoices(Orvantesco& effect) {
  const unsigned waiting = choices.exchange(0, std::memory_order_relaxed);
  committer = std::this_thread::get_id();
  for (int position = 0; position < numPositions; ++position) {
    if ((waiting & 1u << position) == 0) continue;
    committed = position;
    effect.OnParamChange(fxTypeIndex(position));
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
  if (!quiet) port.followParamChange(paramIdx, normalized);
}

/// The menus of two parameters of the slot have new entries.
void ClapEditorPort::refreshTapSelectors(int slot) noexcept {
  (void)slot;
  if (!quiet) port.postDuty(ClapHostPort::kRescanTexts);
}

/// A knob that gets other detents speaks of something else from now on: notes in place of Hz.
void ClapEditorPort::setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept {
  (void)paramIdx;
  (void)steps;
  (void)defaultPosition;
  if (!quiet) port.postDuty(ClapHostPort::kRescanTexts);
}

void ClapEditorPort::showMessage(std::string_view text) noexcept {
  host.log(kClapLogWarning, std::string(text).c_str());
}

}  // namespace orvantesco
