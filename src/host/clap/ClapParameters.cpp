#include "host/clap/ClapParameters.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "host/binding/ParameterGroup.h"
#include "host/binding/ParameterText.h"
#include "host/clap/ClapText.h"
#include "params/IParam.h"
#include "params/ParamBank.h"
#include "params/PlainText.h"

namespace orvantesco {
namespace {

/// A host that computes with positions may reach a whole number from slightly below.
constexpr double kStepTolerance = 1e-6;

constexpr std::string_view kBypassOff = "off";
constexpr std::string_view kBypassOn = "on";

bool isStepped(const IParam& param) noexcept { return param.type() != ParamType::real; }

/// What the host calls a plain value of the parameter.
double hostValueOf(const IParam& param, double plain) noexcept {
  return isStepped(param) ? plain : param.toNormalized(plain);
}

/// The way back; any number is held to the range.
double plainOf(const IParam& param, double hostValue) noexcept {
  if (!isStepped(param)) return param.fromNormalized(hostValue);
  return std::clamp(std::floor(hostValue + kStepTolerance), param.min(), param.max());
}

clap_param_info_flags flagsOf(const IParam& param) noexcept {
  clap_param_info_flags flags = CLAP_PARAM_IS_AUTOMATABLE;
  if (isStepped(param)) flags |= CLAP_PARAM_IS_STEPPED;
  const bool hasNames = !param.form().displayTexts.empty();
  if (isStepped(param) && hasNames) flags |= kClapParamIsEnum;
  return flags;
}

const ParamBank& freshBank() {
  static const auto bank = [] {
    auto built = std::make_unique<ParamBank>();
    built->buildParameterBank();
    return built;
  }();
  return *bank;
}

void describeBypass(clap_param_info_t& info) noexcept {
  info.id = ClapParameters::bypassId;
  info.flags =
      CLAP_PARAM_IS_AUTOMATABLE | CLAP_PARAM_IS_STEPPED | CLAP_PARAM_IS_BYPASS | kClapParamIsEnum;
  putText("Bypass", info.name);
  info.max_value = 1.0;
}

std::optional<double> bypassOfText(std::string_view text) {
  text = trimmed(text);
  if (sameLetters(text, kBypassOff)) return 0.0;
  if (sameLetters(text, kBypassOn)) return 1.0;
  const auto number = numberIn(text);
  if (!number) return std::nullopt;
  return *number < 1.0 ? 0.0 : 1.0;
}

}  // namespace

std::uint32_t ClapParameters::count() const noexcept {
  return static_cast<std::uint32_t>(effect.NParams()) + 1;
}

IParam* ClapParameters::find(clap_id id) const noexcept {
  return id < bypassId ? effect.GetParam(static_cast<int>(id)) : nullptr;
}

bool ClapParameters::describe(std::uint32_t place, clap_param_info_t& info) const {
  if (place >= count()) return false;
  info = {};
  if (place + 1 == count()) {
    describeBypass(info);
  } else {
    describeBankParameter(static_cast<int>(place), info);
  }
  return true;
}

/// Of a fresh bank: in a tempo mode the rate of an LFO has another name and default, which a host
/// may not see change while it plays.
void ClapParameters::describeBankParameter(int index, clap_param_info_t& info) {
  const IParam& param = *freshBank().getParam(index);
  info.id = static_cast<clap_id>(index);
  info.flags = flagsOf(param);
  putText(param.name(), info.name);
  putText(parameterModule(index), info.module);
  info.min_value = isStepped(param) ? param.min() : 0.0;
  info.max_value = isStepped(param) ? param.max() : 1.0;
  info.default_value = hostValueOf(param, param.defaultValue());
}

std::optional<double> ClapParameters::value(clap_id id) const noexcept {
  if (id == bypassId) return bypassed ? 1.0 : 0.0;
  const IParam* const param = find(id);
  if (param == nullptr) return std::nullopt;
  return hostValueOf(*param, param->value());
}

bool ClapParameters::writeText(clap_id id, double value, std::span<char> text) const {
  if (text.empty() || !std::isfinite(value)) return false;
  if (id == bypassId) {
    putText(value < 1.0 ? kBypassOff : kBypassOn, text);
    return true;
  }
  const IParam* const param = find(id);
  if (param == nullptr) return false;
  putText(parameterText(*effect.bank, static_cast<int>(id), plainOf(*param, value)), text);
  return true;
}

std::optional<double> ClapParameters::valueOfText(clap_id id, const char* text) const {
  if (text == nullptr) return std::nullopt;
  if (id == bypassId) return bypassOfText(text);
  const IParam* const param = find(id);
  if (param == nullptr) return std::nullopt;
  const auto plain = parameterValue(*effect.bank, static_cast<int>(id), text);
  if (!plain) return std::nullopt;
  return hostValueOf(*param, *plain);
}

ClapParameters::Taken ClapParameters::set(clap_id id, double value) noexcept {
  if (!std::isfinite(value)) return Taken::refused;
  if (id == bypassId) {
    bypassed = value + kStepTolerance >= 1.0;
    return Taken::moved;
  }
  IParam* const param = find(id);
  if (param == nullptr) return Taken::refused;
  if (value == hostValueOf(*param, param->value())) return Taken::asItWas;
  param->setValue(plainOf(*param, value));
  effect.OnParamChange(static_cast<int>(id));
  return Taken::moved;
}

double ClapParameters::valueOf(const HostChange& change) const noexcept {
  const IParam* const param = effect.GetParam(change.paramIdx);
  if (param == nullptr) return 0.0;
  return isStepped(*param) ? param->fromNormalized(change.normalized) : change.normalized;
}

}  // namespace orvantesco
