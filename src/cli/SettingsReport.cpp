#include "cli/SettingsReport.h"

#include <fmt/format.h>

#include <cmath>

#include "core/EffectMenu.h"
#include "params/ParamText.h"

namespace orvantesco::cli {

std::vector<int> changedIndices(ParamBank& bank) {
  for (int lfo = 0; lfo < numLfos; ++lfo) {
    bank.setLfoRateInNotes(lfo, std::round(bank.getParam(kLfoSync + lfo)->value()) >= 1.0);
  }
  std::vector<int> changed;
  for (int index = 0; index < kNumParams; ++index) {
    const IParam& param = *bank.getParam(index);
    const bool isDefault =
        static_cast<float>(param.value()) == static_cast<float>(param.defaultValue());
    if (!isDefault) changed.push_back(index);
  }
  return changed;
}

std::string shownValue(const ParamBank& bank, int index) {
  const IParam& param = *bank.getParam(index);
  const LabelList menu = effectMenuOf(index);
  const double position = std::round(param.value());
  const bool isOffered = position >= 0.0 && position < static_cast<double>(menu.size());
  if (isOffered) return menu[static_cast<std::size_t>(position)];
  return displayText(param, param.value());
}

std::string changedParameters(ParamBank& bank) {
  std::string table;
  for (const int index : changedIndices(bank)) {
    table += fmt::format("#{:<5}{:<28}{}\n", index, bank.getParam(index)->name(),
                         shownValue(bank, index));
  }
  return table;
}

}  // namespace orvantesco::cli
