#include "host/clap/ClapEditorPort.h"

#include <string>

namespace orvantesco {

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
