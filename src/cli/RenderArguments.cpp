#include "cli/RenderArguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <bit>
#include <thread>

#include "cli/AudioFormat.h"
#include "cli/Failure.h"
#include "cli/OptionValue.h"
#include "cli/RenderJobs.h"
#include "cli/Text.h"

namespace orvantesco::cli {
namespace {

constexpr ExpectedNumber tempoRange{"--tempo", 0.001, 10000.0,
                                    "beats per minute from 0.001 to 10000"};
constexpr ExpectedNumber startRange{"--start", -1e9, 1e9, "a position in beats"};
constexpr ExpectedNumber tailRange{"--tail", 0.0, 86400.0, "auto or seconds from 0 to 86400"};
constexpr ExpectedNumber warmUpRange{"--warm-up", 0.0, 3600.0, "seconds from 0 to 3600"};
constexpr ExpectedNumber blockRange{"--block", 1.0, 1048576.0,
                                    "frames from 1 to 1048576, or random:SEED"};
constexpr ExpectedNumber blockSeedRange{"--block random:", 0.0, 4294967295.0,
                                        "random: and a whole number from 0 to 4294967295"};
constexpr ExpectedNumber seedRange{"--seed", 0.0, 4294967295.0,
                                   "a whole number from 0 to 4294967295"};
constexpr ExpectedNumber jobsRange{"--jobs", 1.0, 1024.0, "a whole number from 1 to 1024"};

BlockSettings blocksFrom(const std::string& text) {
  constexpr std::string_view random = "random:";
  BlockSettings blocks;
  if (text.starts_with(random)) {
    const std::string_view seed = std::string_view(text).substr(random.size());
    blocks.randomSeed = static_cast<std::uint32_t>(wholeFor(blockSeedRange, seed));
  } else {
    blocks.frames = static_cast<int>(wholeFor(blockRange, text));
  }
  return blocks;
}

TailSettings tailFrom(const std::string& text) {
  if (text == "auto") return {};
  return {false, numberFor(tailRange, text)};
}

constexpr ExpectedNumber signaturePart{
    "--time-signature", 1.0, 64.0,
    "N/D as in 3/4, N from 1 to 64, D one of 1, 2, 4, 8, 16, 32, 64"};

void setTimeSignature(const std::string& text, TransportSettings& transport) {
  const auto parts = split(text, '/');
  if (parts.size() != 2) throw unexpected(signaturePart, text);
  transport.numerator = static_cast<int>(wholeFor(signaturePart, parts.front()));
  transport.denominator = static_cast<int>(wholeFor(signaturePart, parts.back()));
  const bool isNoteValue = std::has_single_bit(static_cast<unsigned>(transport.denominator));
  if (!isNoteValue) throw unexpected(signaturePart, text);
}

int processorCores() { return static_cast<int>(std::max(1U, std::thread::hardware_concurrency())); }

}  // namespace

void RenderArguments::addTo(CLI::App& command) {
  addFiles(command);
  addPlaying(command);
  command.add_option("--block", block, "frames per host block, or random:SEED")
      ->capture_default_str();
  command.add_flag("--keep-latency", keepLatency, "leave the latency in the output");
  command.add_option("--format", sampleFormat, "pcm16, pcm24, float or double");
  command.add_flag("--stats", stats, "print what was rendered as JSON");
  command.add_flag("--quiet", quiet, "no progress bar");
}

void RenderArguments::addPlaying(CLI::App& command) {
  addTransport(command);
  addSettings(command);
  const auto option = [&command](const char* name, std::string& text, const char* help) {
    return command.add_option(name, text, help);
  };
  option("--automation", automationFile, "CSV lines seconds,NAME,VALUE")->type_name("FILE");
  option("--sidechain", sideChainFile, "third input, of the same rate as INPUT")->type_name("FILE");
  option("--tail", tail, "seconds of silence after the input, or auto")->capture_default_str();
  option("--warm-up", warmUp, "seconds of silence before the input")->capture_default_str();
}

void RenderArguments::addSettings(CLI::App& command) {
  command.add_option("--state", stateFile, "state block of a host, applied first")
      ->type_name("FILE");
  command.add_option("--preset", preset, "preset file, or the name of a preset in the library")
      ->type_name("FILE|NAME");
  command
      .add_option("--set", assignments,
                  "a parameter, as the user sets it in the editor; repeatable")
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->type_name("NAME=VALUE");
  addTaps(command);
  command.add_option("--seed", seed, "seed of every random source")->capture_default_str();
}

void RenderArguments::addFiles(CLI::App& command) {
  command.add_option("INPUT", inputs, "audio files, 1 or 2 channels, 8 to 768 kHz")
      ->required()
      ->type_name("");
  const auto option = [&command](const char* name, std::string& text, const char* help) {
    return command.add_option(name, text, help)->type_name("FILE");
  };
  option("-o", output, "output: .wav, .flac, .aiff or .ogg");
  option("--output-dir", outputFolder, "one output per input, named as the input")
      ->type_name("DIR");
  option("--jobs", workers, "worker processes for several inputs (as many as cores)")
      ->type_name("N");
}

void RenderArguments::addTransport(CLI::App& command) {
  const auto option = [&command](const char* name, std::string& text, const char* help) {
    return command.add_option(name, text, help)->capture_default_str();
  };
  option("--tempo", tempo, "beats per minute")->type_name("BPM");
  option("--time-signature", timeSignature, "time signature")->type_name("N/D");
  option("--start", start, "position at which the input begins")->type_name("BEATS");
  command.add_flag("--stopped", stopped, "the transport stands still");
}

void RenderArguments::addTaps(CLI::App& command) {
  const auto option = [&command](const char* name, std::vector<std::string>& texts,
                                 const char* help) {
    return command.add_option(name, texts, help)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  };
  option("--taps", taps.taps, "taps that sound, in hexadecimal (bit 0 is the first), or a pattern")
      ->type_name("SLOT:LEFT:RIGHT|SLOT:PATTERN");
  option("--step-fx", taps.stepFx, "taps whose POST effect runs in TAPPED mode")
      ->type_name("SLOT:MASK");
  option("--step-mod", taps.stepMod, "taps on which row 1 or 2 lets its parameter be modulated")
      ->type_name("ROW:SLOT:MASK");
}

RenderSettings RenderArguments::settings() const {
  RenderSettings result;
  result.stateFile = stateFile;
  result.preset = preset;
  result.assignments = assignments;
  result.automationFile = automationFile;
  result.sideChainFile = sideChainFile;
  result.transport.tempo = numberFor(tempoRange, tempo);
  result.transport.startBeats = numberFor(startRange, start);
  result.transport.stopped = stopped;
  setTimeSignature(timeSignature, result.transport);
  result.blocks = blocksFrom(block);
  result.tail = tailFrom(tail);
  result.warmUpSeconds = numberFor(warmUpRange, warmUp);
  result.keepLatency = keepLatency;
  if (!sampleFormat.empty()) checkSampleFormatName(sampleFormat);
  result.sampleFormat = sampleFormat;
  result.seed = static_cast<std::uint32_t>(wholeFor(seedRange, seed));
  result.taps = parseTapOptions(taps, result.seed);
  return result;
}

RenderCall RenderArguments::toCall() const {
  RenderCall call;
  call.settings = settings();
  call.jobs = pairInputsWithOutputs(inputs, {output, outputFolder});
  call.workers =
      workers.empty() ? processorCores() : static_cast<int>(wholeFor(jobsRange, workers));
  call.outputFolder = outputFolder;
  call.stats = stats;
  call.quiet = quiet;
  protectInputs(call);
  for (const RenderJob& job : call.jobs) audioFormatFor(job.output, sampleFormat);
  return call;
}

}  // namespace orvantesco::cli
