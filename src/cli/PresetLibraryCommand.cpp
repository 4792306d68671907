#include "cli/PresetLibraryCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "cli/Message.h"
#include "cli/PresetListReport.h"
#include "presets/PresetInstall.h"
#include "presets/PresetScan.h"

namespace orvantesco::cli {
namespace {

std::string counted(int presets) {
  return fmt::format("{} preset{}", presets, presets == 1 ? "" : "s");
}

/// Without a folder for data there is no place to look at or to write to.
PresetFolders libraryOfTheUser() {
  const PresetFolders folders = presetFolders();
  if (!folders.presetRootPath.empty()) return folders;
  throw workFailed("preset: found no home, expected an absolute path in XDG_DATA_HOME or HOME");
}

}  // namespace

PresetLibraryCommand::PresetLibraryCommand(CLI::App& preset)
    : installCommand(preset.add_subcommand(
          "install", "Make the preset folders and write the shipped presets that are missing")),
      listCommand(preset.add_subcommand("list", "List the presets of the library")) {
  installCommand->footer(
      "Example:\n  orvantesco preset install\n"
      "What is there stays as it is. The folders lie in $XDG_DATA_HOME, or else in\n"
      "~/.local/share, below qlm-works/Orvantesco/Presets.\n");
  listCommand->add_flag("--json", json, "print one JSON document");
  listCommand->footer("Example:\n  orvantesco preset list --json\n");
}

bool PresetLibraryCommand::wasCalled() const {
  return installCommand->parsed() || listCommand->parsed();
}

ExitCode PresetLibraryCommand::run() const { return installCommand->parsed() ? install() : list(); }

ExitCode PresetLibraryCommand::install() const {
  const PresetFolders folders = libraryOfTheUser();
  const PresetInstallReport report = installPresets(folders);
  for (const std::string& fault : report.faults) printError("preset install: " + fault);
  printResult(fmt::format("{}: {} written, {} there already\n", folders.presetRootPath,
                          counted(report.written), counted(report.kept)));
  return report.faults.empty() ? ExitCode::done : ExitCode::workFailed;
}

/// Goes on where a folder cannot be read, and fails at the end.
ExitCode PresetLibraryCommand::list() const {
  const PresetFolders folders = libraryOfTheUser();
  const PresetCatalogue catalogue = scanPresets(folders.presetRootPath);
  const auto presets = listedPresets(catalogue, folders);
  printResult(json ? presetListJson(presets, folders) : presetListTable(presets));
  if (!catalogue.hasRoot) {
    printWarning(fmt::format("{}: cannot be opened, 'orvantesco preset install' makes it",
                             folders.presetRootPath));
    return ExitCode::done;
  }
  for (const std::string& path : catalogue.unopened) {
    printError(fmt::format("preset list: {}: cannot be opened, expected a folder", path));
  }
  return catalogue.unopened.empty() ? ExitCode::done : ExitCode::workFailed;
}

}  // namespace orvantesco::cli
