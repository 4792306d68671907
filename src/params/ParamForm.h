#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "fx/Shared.h"

namespace orvantesco {

/// Room for a name, a unit or a display text, with the closing zero.
inline constexpr std::size_t paramTextSize = 32;
using ParamTextField = std::array<char, paramTextSize>;

/// The label of one discrete value. The text is never owned: it outlives the record, as every
/// literal and every list of Labels.h does. It is one word, so replacing it while others read is
/// safe: they see the old text or the new one.
struct DisplayText {
  int value = 0;
  Shared<const char*> text{""};
};

/// All that a record says of its value: name, range, curve and texts.
///
/// A form is filled while its record is built and then stands still, but for two words that may
/// be replaced at any time: `shape`, and the text of an entry. A record that changes its range at
/// run time owns several forms and publishes one of them by a pointer, so that a reader who takes
/// `IParam::form()` once sees a name, range, curve and texts that belong together.
struct ParamForm {
  ParamTextField name{};
  ParamTextField label{};  ///< the unit
  ParamTextField group{};  ///< always empty in this program
  double defaultValue = 0.0;
  double min = 0.0;
  double max = 0.0;
  double step = 0.0;
  Shared<double> shape{1.0};              ///< exponent of the normalised curve
  int displayPrecision = 0;               ///< decimals shown, derived from `step`
  bool discrete = false;                  ///< values are whole steps
  std::vector<DisplayText> displayTexts;  ///< in order of insertion
};

}  // namespace orvantesco
