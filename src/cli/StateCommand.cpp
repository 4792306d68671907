#include "cli/StateCommand.h"

#include <CLI/CLI.hpp>

#include "cli/Message.h"
#include "cli/StateFile.h"
#include "cli/StateReport.h"

namespace orvantesco::cli {

StateCommand::StateCommand(CLI::App& program)
    : command(program.add_subcommand("state", "Write and show the state that a host saves")) {
  command->require_subcommand(1);
  command->footer("Example:\n  orvantesco state show session.state --json\n");
  addSave();
  addShow();
}

void StateCommand::addSave() {
  saveCommand = command->add_subcommand("save", "Write a state block");
  saveCommand->footer(
      "Example:\n  orvantesco state save -o slow.state --preset Slap.txt "
      "--set \"Delay TimeL 1=800\"\n");
  target.addTo(*saveCommand);
}

void StateCommand::addShow() {
  showCommand = command->add_subcommand("show", "Print the fields of a state block");
  showCommand->footer("Example:\n  orvantesco state show session.state --json\n");
  showCommand->add_option("FILE", file, "a state block")->required()->type_name("");
  showCommand->add_flag("--json", json, "print one JSON document");
}

bool StateCommand::wasCalled() const { return command->parsed(); }

ExitCode StateCommand::run() const {
  if (saveCommand->parsed()) {
    save();
  } else {
    show();
  }
  return ExitCode::done;
}

void StateCommand::save() const {
  const auto engine = target.load();
  const StateChunk chunk = engine->stateBlock();
  target.write(chunk.data(), static_cast<std::size_t>(chunk.size()));
}

void StateCommand::show() const {
  const HostState state = readStateFile(file);
  printResult(json ? stateJson(state) : stateTable(state));
}

}  // namespace orvantesco::cli
