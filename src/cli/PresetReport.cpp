#include "cli/PresetReport.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/SettingsReport.h"
#include "core/Orvantesco.h"
#include "host/OfflineHost.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::ordered_json;

/// An effect into which a preset has been loaded.
struct LoadedPreset {
  explicit LoadedPreset(const Preset& preset) { effect.settings().applyPreset(preset); }
  OfflineHost host{44100.0};
  Orvantesco effect{host};
};

Json jsonOf(ParamBank& bank) {
  Json parameters = Json::array();
  for (const int index : changedIndices(bank)) {
    const IParam& param = *bank.getParam(index);
    parameters.push_back({{"index", index},
                          {"name", param.name()},
                          {"key", bank.keys()[static_cast<std::size_t>(index)]},
                          {"value", param.value()},
                          {"text", shownValue(bank, index)}});
  }
  return parameters;
}

std::string hex(const std::optional<std::uint16_t>& mask) {
  return mask ? fmt::format("{:04X}", *mask) : "as it is";
}

std::string maskLines(const Preset& preset) {
  std::string table;
  for (std::size_t slot = 0; slot < 4; ++slot) {
    table += fmt::format("slot {}: taps {} | {}, StepFX {}, StepMod {} {}\n", slot + 1,
                         hex(preset.tapMask[2 * slot]), hex(preset.tapMask[2 * slot + 1]),
                         hex(preset.stepFxMask[slot]), hex(preset.stepModMask[0][slot]),
                         hex(preset.stepModMask[1][slot]));
  }
  return table;
}

}  // namespace

std::string presetJson(const Preset& preset) {
  LoadedPreset loaded(preset);
  Json taps = Json::array();
  for (const auto& mask : preset.tapMask) taps.push_back(mask ? Json(*mask) : Json());
  const Json json{{"version", preset.version},
                  {"page", preset.lastPage ? Json(*preset.lastPage) : Json()},
                  {"tapMask", taps},
                  {"stepFxMask", preset.stepFxMask},
                  {"stepModMask", preset.stepModMask},
                  {"parameters", jsonOf(*loaded.effect.bank)}};
  return json.dump(2) + "\n";
}

std::string presetTable(const Preset& preset) {
  LoadedPreset loaded(preset);
  const std::string page =
      preset.lastPage ? std::to_string(*preset.lastPage) : "of the preset before";
  return fmt::format("version {}, page {}\n", preset.version, page) + maskLines(preset) +
         changedParameters(*loaded.effect.bank);
}

}  // namespace orvantesco::cli
