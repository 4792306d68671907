#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include "cli/Message.h"
#include "cli/ParamsCommand.h"
#include "cli/PresetCommand.h"
#include "cli/RenderCommand.h"
#include "cli/ScopeCommand.h"
#include "cli/StateCommand.h"

namespace orvantesco::cli {
namespace {

constexpr const char* examples =
    "Examples:\n"
    "  orvantesco render voice.wav -o echo.wav --set \"Delay TimeL 1=350\"\n"
    "  orvantesco scope -o swing.png --set \"LFO On 1=ON\"\n"
    "  orvantesco preset show Slap.txt\n"
    "  orvantesco state show session.state --json\n"
    "  orvantesco params --match \"Delay Time\"\n"
    "  orvantesco render --help\n";

/// `params` and its options.
class ParamsCall {
 public:
  explicit ParamsCall(CLI::App& program)
      : command(program.add_subcommand("params", "List the parameters")) {
    command->add_flag("--json", options.json, "print one JSON document");
    command->add_option("--match", options.match, "only names that hold this text");
    command->footer("Example:\n  orvantesco params --json --match feedback\n");
  }
  bool wasCalled() const { return command->parsed(); }
  ExitCode run() const { return static_cast<ExitCode>(runParams(options)); }

 private:
  CLI::App* command;
  ParamsOptions options;
};

}  // namespace

ExitCode runProgram(int argc, const char* const* argv) {
  CLI::App program("Renders audio through a four-slot stereo delay", "orvantesco");
  program.set_version_flag("--version", "orvantesco " ORVANTESCO_VERSION);
  program.footer(examples);
  program.require_subcommand(1);
  const RenderCommand render(program);
  const ScopeCommand scope(program);
  const PresetCommand preset(program);
  const StateCommand state(program);
  const ParamsCall params(program);
  try {
    program.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    printResult(program.help());
    return ExitCode::done;
  } catch (const CLI::Success& wanted) {
    printResult(std::string(wanted.what()) + "\n");
    return ExitCode::done;
  } catch (const CLI::ParseError& fault) {
    throw badCall(fault.what());
  }
  if (render.wasCalled()) return render.run();
  if (preset.wasCalled()) return preset.run();
  if (state.wasCalled()) return state.run();
  return scope.wasCalled() ? scope.run() : params.run();
}

}  // namespace orvantesco::cli
