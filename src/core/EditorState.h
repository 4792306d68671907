#pragma once

#include <cmath>
#include <string>

#include "fx/Shared.h"
#include "host/EditorPages.h"
#include "presets/HostState.h"

namespace orvantesco {

/// What an editor shows and a host saves, but no parameter holds. The words may be read and
/// written by any thread; the texts belong to whoever holds the `mutex` of the effect.
/// The selection, which counts where no menu knows better, belongs to whoever has the turn (see
/// `BulkGate`).
struct EditorState {
  Shared<int> colourSet{0};
  Shared<int> currentPage{kDelayPage};
  Shared<int> lastSubPage{kDelayPage};
  Shared<double> attenuation{1.0};  ///< of its control, 0..1; see `attenuationGain`
  std::string presetName;
  std::string presetFolderLabel;
  PresetSelection selection;
};

/// Gain of the "ATTENUATION" control at a position 0..1: whole decibels from -12 to -1, and 1 at
/// the upper end.
inline double attenuationGain(double position) noexcept {
  if (position == 1.0) return 1.0;
  const double db = std::trunc(-3.0 * std::exp2((1.0 - position) * 3.0 - 1.0));
  return std::exp(db * 0.1151292546497);
}

}  // namespace orvantesco
