#include "cli/ParameterSetting.h"

#include <fmt/format.h>

#include "cli/Failure.h"
#include "cli/Text.h"
#include "core/EffectMenu.h"
#include "params/ParamLookup.h"
#include "params/ParamText.h"

namespace orvantesco::cli {
namespace {

template <class T>
T valueOrThrow(const OrParamError<T>& result) {
  if (const auto* error = std::get_if<ParamError>(&result)) throw badCall(error->message);
  return std::get<T>(result);
}

}  // namespace

ParameterSetting parseSetting(const ParamBank& bank, std::string_view name,
                              std::string_view value) {
  const int index = valueOrThrow(findParam(bank, name));
  const IParam& param = *bank.getParam(index);
  return {index, valueOrThrow(parseValue(param, value, effectMenuOf(index)))};
}

ParameterSetting parseAssignment(const ParamBank& bank, std::string_view text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string_view::npos) {
    throw badCall(fmt::format("--set: '{}' given, expected NAME=VALUE", oneLine(text)));
  }
  return parseSetting(bank, text.substr(0, sign), text.substr(sign + 1));
}

}  // namespace orvantesco::cli
