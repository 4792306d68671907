#include <array>
#include <cmath>

#include "fx/EffectCatalogue.h"

namespace orvantesco {

namespace {

using Labels = std::span<const char* const>;

constexpr std::array kShapeLabels{"SATURATE", "TUBE", "RECT",  "SIN1",
                                  "SIN2",     "SIN3", "ASYM1", "ASYM2"};
constexpr std::array kSlopeLabels{"12dB", "24dB", "36dB", "48dB"};
constexpr std::array kShaperFilterLabels{"OFF", "LP", "HP", "BP", "NOTCH"};
constexpr std::array kMultiLabels{"LP", "HP", "BP", "AP"};
constexpr std::array kSvfLabels{"LP", "HP", "BP1", "BP2"};
constexpr std::array kSteepLabels{"LP", "HP"};
constexpr std::array kPairLabels{"24db-S", "48db-S", "72db-S", "24db-P", "48db-P", "72db-P"};
constexpr std::array kLowSlopeLabels{"12db", "24db", "36db", "48db", "48db"};

}  // namespace

Labels fxParamLabels(int typeId, int paramIndex) noexcept {
  switch (fxParameter(typeId, paramIndex).scale) {
    case FxScale::shapeMode:
      return kShapeLabels;
    case FxScale::filterSlope:
      return kSlopeLabels;
    case FxScale::shaperFilterMode:
      return kShaperFilterLabels;
    case FxScale::multiMode:
      return kMultiLabels;
    case FxScale::svfMode:
      return kSvfLabels;
    case FxScale::steepMode:
      return kSteepLabels;
    case FxScale::pairMode:
      return kPairLabels;
    // The two slopes of one effect are spelled differently: the high-pass as other slopes are.
    case FxScale::sideSlope:
      if (paramIndex == 1) return kSlopeLabels;
      return kLowSlopeLabels;
    default:
      return {};
  }
}

// The slope runs between its steps; the filter takes the nearest, half to even, and the label says
// so. All other selections are whole numbers already.
const char* fxParamLabel(int typeId, int paramIndex, double shown) noexcept {
  const Labels labels = fxParamLabels(typeId, paramIndex);
  if (labels.empty()) return nullptr;
  const bool isSlope = fxParameter(typeId, paramIndex).scale == FxScale::filterSlope;
  const double entry = isSlope ? std::rint(shown) : std::trunc(shown);
  const double last = static_cast<double>(labels.size() - 1);
  return labels[static_cast<std::size_t>(std::fmin(std::fmax(entry, 0.0), last))];
}

}  // namespace orvantesco
