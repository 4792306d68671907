// The program that runs the effect as a JACK client. The wrapper's own `main`, which opens the
// client and waits for a signal, is compiled under another name and called from here.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "host/binding/PluginIdentity.h"
#include "host/dpf/StartSettings.h"

int runJackClient(int argc, char* argv[]);

namespace {

using orvantesco::PluginIdentity;
using orvantesco::startSettings;

constexpr const char* footer =
    "Examples:\n"
    "  orvantesco-jack --preset \"Echo/Dub Quarter\"\n"
    "  orvantesco-jack --state session.state\n"
    "It connects to a JACK server that runs, or to PipeWire's, and ends with Ctrl-C.\n";

struct Wish {
  std::string preset;
  std::string stateFile;
};

std::string take(const Wish& wish) {
  std::string fault;
  if (!wish.stateFile.empty()) fault = startSettings().takeState(wish.stateFile);
  if (fault.empty() && !wish.preset.empty()) fault = startSettings().takePreset(wish.preset);
  return fault;
}

int run(int argc, char* argv[]) {
  Wish wish;
  CLI::App program("Runs the four-slot stereo delay as a JACK client", "orvantesco-jack");
  program.set_version_flag("--version", std::string("orvantesco-jack ") + PluginIdentity::version);
  program.add_option("--preset", wish.preset, "begin with a preset, FILE or FOLDER/NAME");
  program.add_option("--state", wish.stateFile, "begin with a state block");
  program.footer(footer);
  CLI11_PARSE(program, argc, argv);
  const std::string fault = take(wish);
  if (!fault.empty()) {
    std::fprintf(stderr, "orvantesco-jack: %s\n", fault.c_str());
    return 1;
  }
  return runJackClient(1, argv);
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    return run(argc, argv);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "orvantesco-jack: %s\n", fault.what());
    return 1;
  }
}
