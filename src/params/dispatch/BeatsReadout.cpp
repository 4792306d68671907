#include "params/dispatch/BeatsReadout.h"

#include <cmath>

#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

void showBeatsOf(const ParamDispatch& change) noexcept {
  if (!change.touched()) return;
  constexpr double kFastestShown = 300.0;
  const double beatsPerMinute = std::round(60000.0 / change.value);
  ReadoutText text;
  if (beatsPerMinute > kFastestShown) {
    text.append(">300");
  } else {
    text.append(static_cast<int>(beatsPerMinute));
  }
  change.editor().showBeats(text.view());
}

}  // namespace orvantesco
