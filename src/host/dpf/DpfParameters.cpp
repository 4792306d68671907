#include "host/dpf/DpfParameters.h"

#include <algorithm>
#include <memory>

#include "core/EffectMenu.h"
#include "host/binding/ParameterGroup.h"
#include "host/binding/ParameterSymbol.h"
#include "params/ParamBank.h"

namespace orvantesco {
namespace {

/// The wrapper counts the labels of a parameter in one byte.
constexpr std::size_t mostLabels = 255;

const ParamBank& bankOfDefaults() {
  static const auto bank = [] {
    auto built = std::make_unique<ParamBank>();
    built->buildParameterBank();
    return built;
  }();
  return *bank;
}

const IParam& paramOf(int index) { return *bankOfDefaults().getParam(index); }

bool isLfoRate(int index) { return index >= kLfoRate && index < kLfoRate + numLfos; }

bool isDiscrete(const IParam& param) { return param.type() != ParamType::real; }

std::uint32_t hintsOf(const IParam& param) {
  std::uint32_t hints = DISTRHO::kParameterIsAutomatable;
  if (isDiscrete(param)) hints |= DISTRHO::kParameterIsInteger;
  if (param.type() == ParamType::boolean) hints |= DISTRHO::kParameterIsBoolean;
  return hints;
}

/// A choice from a list, if every value has a label; else the labels mark some places of a range.
bool isList(const IParam& param) {
  const auto values = static_cast<std::size_t>(param.max() - param.min()) + 1;
  return isDiscrete(param) && param.form().displayTexts.size() >= values;
}

/// Effects have the names that their stage offers, so that what a person chooses is what runs. What
/// lies behind the end of that menu runs nothing, as its first entry does.
const char* labelOf(int index, const DisplayText& text) {
  const LabelList menu = effectMenuOf(index);
  if (menu.empty()) return text.text.get();
  const auto entry = static_cast<std::size_t>(text.value);
  return menu[entry < menu.size() ? entry : 0];
}

void describeLabels(int index, DISTRHO::ParameterEnumerationValues& labels) {
  const IParam& param = paramOf(index);
  const auto& texts = param.form().displayTexts;
  if (texts.empty() || texts.size() > mostLabels) return;
  labels.count = static_cast<std::uint8_t>(texts.size());
  labels.restrictedMode = isList(param);
  labels.values = new DISTRHO::ParameterEnumerationValue[texts.size()];  // theirs from here on
  for (std::size_t i = 0; i < texts.size(); ++i) {
    labels.values[i].value = static_cast<float>(texts[i].value);
    labels.values[i].label = labelOf(index, texts[i]);
  }
}

}  // namespace

PortRange portRangeOf(int index) {
  const IParam& param = paramOf(index);
  return {isLfoRate(index) ? 0.0 : param.min(), param.max()};
}

void describeParameter(std::uint32_t index, DISTRHO::Parameter& parameter) {
  if (index == kDpfBypass) {
    parameter.initDesignation(DISTRHO::kParameterDesignationBypass);
    return;
  }
  const auto i = static_cast<int>(index);
  const IParam& param = paramOf(i);
  const PortRange range = portRangeOf(i);
  parameter.hints = hintsOf(param);
  parameter.name = param.name();
  parameter.symbol = parameterSymbol(i).c_str();
  parameter.unit = param.label();
  parameter.ranges.def = defaultPortValue(index);
  parameter.ranges.min = static_cast<float>(range.min);
  parameter.ranges.max = static_cast<float>(range.max);
  parameter.groupId = static_cast<std::uint32_t>(parameterGroupOf(i));
  describeLabels(i, parameter.enumValues);
}

float defaultPortValue(std::uint32_t index) {
  if (index >= kDpfBypass) return 0.0F;
  return static_cast<float>(paramOf(static_cast<int>(index)).defaultValue());
}

void describeGroup(std::uint32_t groupId, DISTRHO::PortGroup& group) {
  const auto groups = parameterGroups();
  if (groupId >= groups.size()) return;
  group.name = groups[groupId].path.c_str();
  group.symbol = groups[groupId].symbol.c_str();
}

}  // namespace orvantesco
