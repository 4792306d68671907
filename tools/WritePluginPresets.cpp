// Writes the shipped presets in the forms in which LV2 and VST3 hosts list them.
// Usage: write-plugin-presets LV2-BUNDLE VST3-FOLDER
//
// What stood in the two folders before goes.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "host/dpf/FactoryState.h"
#include "host/dpf/Lv2Presets.h"
#include "host/dpf/Vst3Preset.h"

namespace {

namespace fs = std::filesystem;
using orvantesco::FactoryState;
using States = std::vector<FactoryState>;

/// Two presets must not share a file.
void write(const fs::path& path, const std::string& content) {
  if (fs::exists(path)) throw std::runtime_error(path.string() + ": of two presets");
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << content;
  if (!file.flush()) throw std::runtime_error(path.string() + ": cannot be written");
}

void writeLv2(const fs::path& bundle, const States& presets) {
  fs::remove_all(bundle);
  write(bundle / "manifest.ttl", orvantesco::lv2PresetManifest(presets));
  for (const FactoryState& preset : presets) {
    write(bundle / orvantesco::lv2PresetFileName(preset), orvantesco::lv2PresetFile(preset));
  }
}

void writeVst3(const fs::path& folder, const States& presets) {
  fs::remove_all(folder);
  for (const FactoryState& preset : presets) {
    write(folder / orvantesco::vst3PresetFileName(preset),
          orvantesco::vst3PresetFile(preset.stateText));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("write-plugin-presets: expected LV2-BUNDLE VST3-FOLDER\n", stderr);
    return 2;
  }
  try {
    const States presets = orvantesco::factoryStatesOf(orvantesco::factoryPresets());
    writeLv2(argv[1], presets);
    writeVst3(argv[2], presets);
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "write-plugin-presets: %s\n", fault.what());
    return 1;
  }
}
