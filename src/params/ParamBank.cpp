#include "params/ParamBank.h"

#include <algorithm>

#include "params/ParamTable.h"

namespace orvantesco {
namespace {

constexpr int hzForm = 0;
constexpr int noteForm = 1;

void addTexts(IParam& param, LabelList labels, bool clearFirst) {
  for (int i = 0; i < static_cast<int>(labels.size()); ++i)
    param.setDisplayText(i, labels[static_cast<std::size_t>(i)], clearFirst && i == 0);
}

void initMember(ParamBank& bank, const ParamFamily& family, int member) {
  const int index = family.base + member;
  IParam& param = *bank.getParam(index);
  const std::string name = family.nameOf(member);
  const ParamCaption caption{name.c_str(), family.unit};
  const double initial = family.defaultOf(member);
  const LabelList* labels = family.labelsOf(member);
  switch (family.type) {
    case ParamType::real:
      param.initDouble(caption, initial, family.range);
      break;
    case ParamType::integer:
      param.initInt(caption, int(initial), {int(family.range.min), int(family.range.max)});
      if (labels) addTexts(param, *labels, false);
      break;
    case ParamType::enumeration:
      bank.addEnum(index, caption, {*labels, int(initial)});
      break;
    case ParamType::boolean:
      param.initBool(caption, initial != 0.0);
      break;
    case ParamType::none:
      break;
  }
}

std::string keyOf(const char* name) {
  std::string key = name;
  std::erase_if(key, [](char c) { return c == ' '; });
  return key;
}

}  // namespace

ParamBank::ParamBank() : records(std::make_unique<std::array<IParam, kNumParams>>()) {}

IParam* ParamBank::getParam(int index) noexcept {
  if (index < 0 || index >= kNumParams) return nullptr;
  return &(*records)[static_cast<std::size_t>(index)];
}

const IParam* ParamBank::getParam(int index) const noexcept {
  if (index < 0 || index >= kNumParams) return nullptr;
  return &(*records)[static_cast<std::size_t>(index)];
}

void ParamBank::addEnum(int index, const ParamCaption& caption, const EnumChoice& choice) {
  IParam* const param = getParam(index);
  if (!param) return;
  const int count = static_cast<int>(choice.labels.size());
  param->initEnum(caption, choice.defaultValue, count, choice.keep);
  addTexts(*param, choice.labels, choice.keep == KeepValue::yes);
}

void ParamBank::buildParameterBank() {
  for (const ParamFamily& family : paramFamilies())
    for (int member = 0; member < family.count; ++member) initMember(*this, family, member);

  paramKeys.clear();
  for (const IParam& param : *records) paramKeys.push_back(keyOf(param.name()));

  for (int lfo = 0; lfo < numLfos; ++lfo) addNoteFormOfLfoRate(lfo);
}

void ParamBank::addNoteFormOfLfoRate(int lfo) {
  const std::string name = "LFO Sync " + std::to_string(lfo + 1);
  getParam(kLfoRate + lfo)->addForm();
  addEnum(kLfoRate + lfo, {name.c_str()}, {LfoRateSyncLabels, 0, KeepValue::yes});
  setLfoRateInNotes(lfo, false);
}

void ParamBank::setLfoRateInNotes(int lfo, bool inNotes) noexcept {
  if (lfo < 0 || lfo >= numLfos) return;
  getParam(kLfoRate + lfo)->selectForm(inNotes ? noteForm : hzForm);
}

}  // namespace orvantesco
