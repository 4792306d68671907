#include "host/binding/ParameterText.h"

#include <algorithm>
#include <cmath>

#include "core/EffectMenu.h"
#include "params/ParamText.h"
#include "params/PlainText.h"

namespace orvantesco {
namespace {

/// What lies behind the end of the menu runs nothing, as its first entry does.
std::string menuText(LabelList menu, double value) {
  const auto entry = static_cast<std::size_t>(std::lround(value));
  return menu[entry < menu.size() ? entry : 0];
}

std::optional<double> menuValue(LabelList menu, std::string_view text) {
  for (std::size_t entry = 0; entry < menu.size(); ++entry) {
    if (sameLetters(menu[entry], trimmed(text))) return static_cast<double>(entry);
  }
  return std::nullopt;
}

/// "-0.00 ms" is a zero, and a zero has no sign.
std::string withoutSignOfZero(std::string text) {
  if (!text.starts_with('-')) return text;
  const std::string_view digits = std::string_view(text).substr(0, text.find(' '));
  if (digits.find_first_of("123456789") == digits.npos) text.erase(0, 1);
  return text;
}

double heldToRange(const IParam& param, double value) {
  const ParamForm& form = param.form();
  return std::isnan(value) ? form.min : std::clamp(value, form.min, form.max);
}

}  // namespace

std::string parameterText(const ParamBank& bank, int index, double value) {
  const IParam* param = bank.getParam(index);
  if (param == nullptr) return {};
  const double held = heldToRange(*param, value);
  const LabelList menu = effectMenuOf(index);
  return menu.empty() ? withoutSignOfZero(displayText(*param, held)) : menuText(menu, held);
}

std::string normalizedParameterText(const ParamBank& bank, int index, double normalized) {
  const IParam* param = bank.getParam(index);
  if (param == nullptr) return {};
  return parameterText(bank, index, param->fromNormalized(normalized));
}

std::optional<double> parameterValue(const ParamBank& bank, int index, std::string_view text) {
  const IParam* param = bank.getParam(index);
  if (param == nullptr) return std::nullopt;
  const LabelList menu = effectMenuOf(index);
  if (menu.empty()) return valueOfDisplayText(*param, text);
  if (const auto value = menuValue(menu, text)) return value;
  const auto number = numberIn(trimmed(text));
  if (!number) return std::nullopt;
  return heldToRange(*param, std::round(*number));
}

std::optional<double> normalizedParameterValue(const ParamBank& bank, int index,
                                               std::string_view text) {
  const auto value = parameterValue(bank, index, text);
  if (!value) return std::nullopt;
  return bank.getParam(index)->toNormalized(*value);
}

}  // namespace orvantesco
