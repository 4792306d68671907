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

void takePortValue(Orvantesco& effect, int index, float value) noexcept {
  IParam* param = effect.GetParam(index);
  if (param == nullptr || !std::isfinite(value) || value == portValueOf(*param)) return;
  const PortRange range = portRangeOf(index);
  const double held = std::clamp(decimalOf(value), range.min, range.max);
  const double meant = param->form().discrete ? std::round(held) : held;
  if (meant == param->value()) return;
  param->setValue(meant);
  effect.OnParamChange(index);
}

}  // namespace orvantesco
