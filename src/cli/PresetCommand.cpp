#include "cli/PresetCommand.h"

#include <CLI/CLI.hpp>

#include "cli/Message.h"
#include "cli/PresetFiles.h"
#include "cli/PresetReport.h"
#include "cli/PresetSource.h"
#include "presets/PresetWriter.h"

namespace orvantesco::cli {

PresetCommand::PresetCommand(CLI::App& program)
    : command(program.add_subcommand("preset",
                                     "Install and list presets; write, show and check files")),
      library(*command) {
  command->require_subcommand(1);
  command->footer("Example:\n  orvantesco preset show Slap.txt\n");
  addSave();
  addShow();
  upgradeCommand = command->add_subcommand("upgrade", "Rewrite files of older versions in place");
  upgradeCommand->footer("Example:\n  orvantesco preset upgrade old/*.txt\n");
  addFiles(*upgradeCommand);
  checkCommand = command->add_subcommand("check", "Say what is wrong with each file");
  checkCommand->footer("Example:\n  orvantesco preset check mine/*.txt\n");
  addFiles(*checkCommand);
}

void PresetCommand::addSave() {
  saveCommand = command->add_subcommand("save", "Write a preset file");
  saveCommand->footer(
      "Example:\n  orvantesco preset save -o Slap.txt --set \"Delay TimeL 1=120\" "
      "--set \"Feedback 1=0\"\n");
  target.addTo(*saveCommand);
}

void PresetCommand::addShow() {
  showCommand = command->add_subcommand("show", "Print what a preset sets");
  showCommand->footer("Example:\n  orvantesco preset show Slap.txt --json\n");
  showCommand->add_option("FILE", file, "a preset file")->required()->type_name("");
  showCommand->add_flag("--json", json, "print one JSON document");
}

void PresetCommand::addFiles(CLI::App& subcommand) {
  subcommand.add_option("FILE", files, "preset files")->required()->type_name("");
}

bool PresetCommand::wasCalled() const { return command->parsed(); }

ExitCode PresetCommand::run() const {
  if (library.wasCalled()) return library.run();
  if (saveCommand->parsed()) return save();
  if (showCommand->parsed()) return show();
  return upgradeCommand->parsed() ? upgradePresets(files) : checkPresets(files);
}

ExitCode PresetCommand::save() const {
  const std::string text = presetText(target.load()->preset());
  target.write(text.data(), text.size());
  return ExitCode::done;
}

ExitCode PresetCommand::show() const {
  const PresetSource source = readPresetFile(file);
  for (const std::string& line : problemLines(source)) printWarning(line);
  printResult(json ? presetJson(source.reading.preset) : presetTable(source.reading.preset));
  return ExitCode::done;
}

}  // namespace orvantesco::cli
