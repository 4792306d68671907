#include "params/dispatch/FxReadoutText.h"

#include "fx/EffectCatalogue.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

/// Decimals of a printf format such as "%.2f".
int decimalsOf(std::string_view format) noexcept {
  const auto point = format.find('.');
  const bool hasDigit = point != std::string_view::npos && point + 1 < format.size();
  return hasDigit ? format[point + 1] - '0' : ReadoutStyle{}.decimals;
}

}  // namespace

void showFxParam(ParamDispatch& change, FxParamOfType of, double x) noexcept {
  double native = x;
  change.shown = x;
  fxParamScale(of.typeId, of.p, &change.shown, &native);
  const FxReadout readout = fxReadout(of.typeId, of.p);
  change.show({readout.name, decimalsOf(readout.format), readout.unit});
  const char* label = fxParamLabel(of.typeId, of.p, change.shown);
  if (label != nullptr) change.showLabel(label);
}

}  // namespace orvantesco
