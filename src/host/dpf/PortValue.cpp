#include "host/dpf/PortValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "host/dpf/DpfParameters.h"
#include "params/IParam.h"

namespace orvantesco {

double decimalOf(float value) noexcept {
  std::array<char, 32> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  double decimal = static_cast<double>(value);
  std::from_chars(digits.data(), written.ptr, decimal);
  return decimal;
}

float portValueOf(const IParam& param) noexcept { return static_cast<float>(param.value()); }

namespace {

/// A value within the range of the port and of the form that is in force: the port of an LFO's rate
/// spans Hz and notes. In whole steps where the form has them.
double meantBy(float value, PortRange range, const ParamForm& form) noexcept {
  const double low = std::max(range.min, form.min);
  const double high = std::min(range.max, form.max);
  const double held = std::clamp(decimalOf(value), low, high);
  return form.discrete ? std::round(held) : held;
}

}  // namespace

void takePortValue(Orvantesco& effect, int index, float value) noexcept {
  IParam* param = effect.GetParam(index);
  if (param == nullptr || !std::isfinite(value) || value == portValueOf(*param)) return;
  const double meant = meantBy(value, portRangeOf(index), param->form());
  if (meant == param->value()) return;
  param->setValue(meant);
  effect.OnParamChange(index);
}

}  // namespace orvantesco
