#include "cli/SettingsFile.h"

#include <CLI/CLI.hpp>

#include "cli/Message.h"
#include "cli/OutputFile.h"
#include "cli/PresetSource.h"
#include "cli/RenderJobs.h"

namespace orvantesco::cli {
namespace {

constexpr double kAnyRateHz = 44100.0;

}  // namespace

void SettingsFile::addTo(CLI::App& command) {
  command.add_option("-o", output, "the file to write")->required()->type_name("FILE");
  arguments.addSettings(command);
}

std::unique_ptr<RenderEngine> SettingsFile::load() const {
  const RenderSettings settings = arguments.settings();
  protectInputs(output, {settings.stateFile, fileOfPreset(settings.preset)});
  auto engine = std::make_unique<RenderEngine>(RenderEngine::Input{kAnyRateHz, 2, false}, settings);
  engine->apply(settings);
  for (const std::string& line : engine->presetWarnings()) printWarning(line);
  return engine;
}

void SettingsFile::write(const void* content, std::size_t bytes) const {
  OutputFile file(output);
  file.write(content, static_cast<std::int64_t>(bytes));
  file.commit();
}

}  // namespace orvantesco::cli
