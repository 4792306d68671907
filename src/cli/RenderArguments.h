#pragma once

#include <string>
#include <vector>

#include "cli/RenderCall.h"
#include "cli/TapOptions.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// The arguments of `render` as they were typed, and their meaning.
class RenderArguments {
 public:
  /// Declares the options; the object must outlive the parsing.
  void addTo(CLI::App& command);

  /// Throws a `Failure` for a value that an option does not take and for files that would
  /// overwrite each other.
  RenderCall toCall() const;

  /// Declares only what shapes the sound, for a command that plays without writing audio.
  void addPlaying(CLI::App& command);

  /// Declares only what settings are made of, for a command that plays nothing.
  void addSettings(CLI::App& command);

  /// What these options mean. Throws a `Failure` for a value that an option does not take.
  RenderSettings settings() const;

 private:
  void addFiles(CLI::App& command);
  void addTransport(CLI::App& command);
  void addTaps(CLI::App& command);

  std::vector<std::string> inputs;
  std::string output;
  std::string outputFolder;
  std::string workers;
  std::string stateFile;
  std::string preset;
  std::vector<std::string> assignments;
  TapOptionTexts taps;
  std::string automationFile;
  std::string sideChainFile;
  std::string tempo = "120";
  std::string timeSignature = "4/4";
  std::string start = "0";
  std::string block = "512";
  std::string tail = "auto";
  std::string warmUp = "0.25";
  std::string sampleFormat;
  std::string seed = "1";
  bool stopped = false;
  bool keepLatency = false;
  bool stats = false;
  bool quiet = false;
};

}  // namespace orvantesco::cli
