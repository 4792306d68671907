// Plays a sound through a CLAP file as a host does, in 64 bits, for the check of the hosts:
// scripts/check-hosts. Prints the microseconds that the look at the file and the load took.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "LoadedClap.h"

namespace {

using namespace orvantesco;
using Clock = std::chrono::steady_clock;

constexpr std::size_t voices = 3;
constexpr std::size_t heardVoices = 2;
constexpr double rateHz = 48000.0;
constexpr std::size_t blockFrames = 1024;
constexpr std::size_t warmUpFrames =
    12000;  // a fresh effect fades in, as long as the command line's

struct Wish {
  std::string plugin;
  std::string in;
  std::string out;
  std::string state;
  std::string preset;
  std::string saved;
  std::string moves;
  double tempo = 120.0;
};

struct Move {
  std::size_t frame = 0;  ///< of the sound, with the warm-up
  clap_id id = 0;
  double value = 0.0;
};

void must(bool good, const std::string& what) {
  if (!good) throw std::runtime_error(what);
}

long microsecondsSince(Clock::time_point begin) {
  const auto passed = Clock::now() - begin;
  return static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(passed).count());
}

std::ifstream opened(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  must(file.is_open(), path + ": cannot be read");
  return file;
}

/// The sound that goes in, behind a silence in which the song stands, and the one that comes out.
class Player {
 public:
  Player(const Wish& given, LoadedClap& through) : wish(given), instance(through) {
    for (auto& voice : sound) voice.assign(warmUpFrames, 0.0);
    std::ifstream file = opened(wish.in);
    std::array<float, voices> frame{};
    while (file.read(reinterpret_cast<char*>(frame.data()), sizeof frame)) {
      for (std::size_t v = 0; v < voices; ++v) sound[v].push_back(static_cast<double>(frame[v]));
    }
    for (auto& voice : heard) voice.assign(frames(), 0.0);
    if (!wish.moves.empty()) readMoves();
  }

  void play() {
    for (std::size_t first = 0; first < frames();) {
      const std::size_t most = first < warmUpFrames ? warmUpFrames : frames();
      const std::size_t end = std::min(first + blockFrames, most);
      playBlock(first, end);
      first = end;
    }
  }

  /// Left and right, frame by frame, in 64 bits.
  void write() const {
    std::ofstream file(wish.out, std::ios::binary);
    for (std::size_t i = warmUpFrames; i < frames(); ++i) {
      const std::array<double, heardVoices> frame{heard[0][i], heard[1][i]};
      file.write(reinterpret_cast<const char*>(frame.data()), sizeof frame);
    }
    must(file.flush().good(), wish.out + ": cannot be written");
  }

 private:
  std::size_t frames() const { return sound[0].size(); }

  /// Lines FRAME,NAME,VALUE, the earliest first; a value as the plug-in shows it to hosts.
  void readMoves() {
    std::ifstream file = opened(wish.moves);
    std::string frame;
    std::string name;
    std::string value;
    while (std::getline(file, frame, ',') && std::getline(file, name, ',') &&
           std::getline(file, value)) {
      moves.push_back({warmUpFrames + std::stoul(frame), instance.idOf(name), std::stod(value)});
    }
  }

  void playBlock(std::size_t first, std::size_t end) {
    for (; nextMove < moves.size() && moves[nextMove].frame < end; ++nextMove) {
      const Move& move = moves[nextMove];
      instance.in.value(static_cast<std::uint32_t>(move.frame - first), move.id, move.value);
    }
    std::array<double*, voices> from{};
    std::array<double*, heardVoices> to{};
    for (std::size_t v = 0; v < voices; ++v) from[v] = sound[v].data() + first;
    for (std::size_t v = 0; v < heardVoices; ++v) to[v] = heard[v].data() + first;
    const std::array<clap_audio_buffer_t, 2> inputs{port(from.data(), 2), port(&from[2], 1)};
    clap_audio_buffer_t output = port(to.data(), heardVoices);
    const clap_event_transport_t transport = transportAt(first);
    clap_process_t block{};
    block.steady_time = static_cast<std::int64_t>(first);
    block.frames_count = static_cast<std::uint32_t>(end - first);
    block.transport = &transport;
    block.audio_inputs = inputs.data();
    block.audio_inputs_count = inputs.size();
    block.audio_outputs = &output;
    block.audio_outputs_count = 1;
    instance.process(block);
  }

  static clap_audio_buffer_t port(double** channels, std::size_t count) {
    clap_audio_buffer_t buffer{};
    buffer.data64 = channels;
    buffer.channel_count = static_cast<std::uint32_t>(count);
    return buffer;
  }

  clap_event_transport_t transportAt(std::size_t frame) const {
    clap_event_transport_t event{};
    event.header = {sizeof event, 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_TRANSPORT, 0};
    event.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                  CLAP_TRANSPORT_HAS_TIME_SIGNATURE;
    event.tempo = wish.tempo;
    event.tsig_num = 4;
    event.tsig_denom = 4;
    if (frame < warmUpFrames) return event;
    const double beats = static_cast<double>(frame - warmUpFrames) * wish.tempo / (60.0 * rateHz);
    event.flags |= CLAP_TRANSPORT_IS_PLAYING;
    event.song_pos_beats = std::llround(beats * static_cast<double>(CLAP_BEATTIME_FACTOR));
    return event;
  }

  const Wish& wish;
  LoadedClap& instance;
  std::array<std::vector<double>, voices> sound;
  std::array<std::vector<double>, heardVoices> heard;
  std::vector<Move> moves;
  std::size_t nextMove = 0;
};

void run(const Wish& wish) {
  const auto looked = Clock::now();
  const ClapFile file(wish.plugin);
  std::printf("scanned in %ld us\n", microsecondsSince(looked));
  const auto begun = Clock::now();
  LoadedClap instance(file);
  if (!wish.state.empty()) instance.loadState(wish.state);
  if (!wish.preset.empty()) instance.loadPreset(wish.preset);
  instance.begin(rateHz, blockFrames);
  std::printf("loaded in %ld us\n", microsecondsSince(begun));
  Player player(wish, instance);
  player.play();
  player.write();
  if (!wish.saved.empty()) instance.saveState(wish.saved);
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    Wish wish;
    CLI::App program("Plays a sound through a CLAP file, as a host does", "clap-player");
    program.add_option("PLUGIN", wish.plugin, "the file")->required();
    program.add_option("IN", wish.in, "float samples of left, right and side chain")->required();
    program.add_option("OUT", wish.out, "double samples of left and right")->required();
    program.add_option("--tempo", wish.tempo, "beats per minute");
    program.add_option("--state", wish.state, "state block to begin with");
    program.add_option("--preset", wish.preset, "preset file to begin with");
    program.add_option("--moves", wish.moves, "lines FRAME,NAME,VALUE");
    program.add_option("--save", wish.saved, "where the state goes in the end");
    CLI11_PARSE(program, argc, argv);
    run(wish);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "clap-player: %s\n", fault.what());
    return 1;
  }
  return 0;
}
