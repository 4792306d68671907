#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/TapOptions.h"

namespace orvantesco::cli {

struct TransportSettings {
  double tempo = 120.0;  ///< beats per minute
  int numerator = 4;
  int denominator = 4;
  double startBeats = 0.0;
  bool stopped = false;
};

/// Frames of each host block: always the same, or drawn anew for each.
struct BlockSettings {
  int frames = 512;
  std::optional<std::uint32_t> randomSeed;
};

/// How long silence is fed after the input.
struct TailSettings {
  bool automatic = true;
  double seconds = 0.0;
};

/// What is the same for every input of a call.
struct RenderSettings {
  std::string stateFile;                 ///< a host's state block, empty for none
  std::string preset;                    ///< a preset file, empty for none
  std::vector<std::string> assignments;  ///< "NAME=VALUE", in order
  std::string automationFile;            ///< empty for none
  std::string sideChainFile;             ///< empty for none
  TransportSettings transport;
  BlockSettings blocks;
  TailSettings tail;
  double warmUpSeconds = 0.25;
  bool keepLatency = false;
  std::string sampleFormat;  ///< empty: the container's default
  std::uint32_t seed = 1;
  TapSettings taps;
};

struct RenderJob {
  std::string input;
  std::string output;
};

/// One call of `render`, checked as far as that needs no engine.
struct RenderCall {
  RenderSettings settings;
  std::vector<RenderJob> jobs;
  std::string outputFolder;  ///< to be made if it is not there; empty for none
  int workers = 1;           ///< processes at a time
  bool stats = false;
  bool quiet = false;
};

}  // namespace orvantesco::cli
