// Plays a sound through a client of a JACK server and records what comes back, for the check of the
// hosts: scripts/check-hosts. It is the master of time, and lets the server run as fast as it can.
//
// Usage: jack-player SERVER CLIENT BPM IN OUT     IN: float samples of left, right and side chain,
// frame by frame; OUT: left and right. CLIENT is the name of the client to play through.

#include <jack/jack.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t voices = 3;
constexpr std::size_t heardVoices = 2;
constexpr int rampMs = 700;  // a fresh effect fades in
constexpr double beatsPerBar = 4.0;
constexpr double ticksPerBeat = 1920.0;

struct Wish {
  std::string server;
  std::string client;
  double tempo = 120.0;
  std::string in;
  std::string out;
};

void must(bool good, const std::string& what) {
  if (!good) throw std::runtime_error(what);
}

/// Two clients, one in front of the other: a single one would get its sound back a period later.
class Player {
 public:
  explicit Player(const Wish& given) : wish(given), source(open("player")), sink(open("recorder")) {
    read();
    for (std::size_t v = 0; v < voices; ++v) outs[v] = port(source, "out", v, JackPortIsOutput);
    for (std::size_t v = 0; v < heardVoices; ++v) ins[v] = port(sink, "in", v, JackPortIsInput);
    jack_set_process_callback(source, play, this);
    jack_set_process_callback(sink, record, this);
    must(jack_set_timebase_callback(source, 0, tellTime, this) == 0, "no master of time");
    must(jack_activate(source) == 0 && jack_activate(sink) == 0, "the clients do not start");
  }
  ~Player() {
    jack_client_close(sink);
    jack_client_close(source);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void run() {
    connect();
    jack_transport_locate(source, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(rampMs));
    must(jack_set_freewheel(source, 1) == 0, "the server does not run free");
    jack_transport_start(source);
    for (int tries = 0; !isComplete && tries < 600; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    jack_transport_stop(source);
    jack_set_freewheel(source, 0);
    must(isComplete, "the sound did not come to its end");
    write();
  }

 private:
  jack_client_t* open(const char* name) const {
    jack_client_t* const client =
        jack_client_open(name, static_cast<jack_options_t>(JackNoStartServer | JackServerName),
                         nullptr, wish.server.c_str());
    must(client != nullptr, "no server " + wish.server);
    return client;
  }

  static jack_port_t* port(jack_client_t* client, const char* name, std::size_t number,
                           unsigned long direction) {
    const std::string full = name + std::to_string(number);
    return jack_port_register(client, full.c_str(), JACK_DEFAULT_AUDIO_TYPE, direction, 0);
  }

  void read() {
    std::ifstream file(wish.in, std::ios::binary);
    std::array<float, voices> frame{};
    while (file.read(reinterpret_cast<char*>(frame.data()), sizeof frame)) {
      for (std::size_t v = 0; v < voices; ++v) sound[v].push_back(frame[v]);
    }
    must(!sound[0].empty(), wish.in + " holds no sound");
    for (auto& voice : heard) voice.assign(sound[0].size(), 0.0F);
  }

  void write() const {
    std::ofstream file(wish.out, std::ios::binary);
    for (std::size_t i = 0; i < heard[0].size(); ++i) {
      const std::array<float, heardVoices> frame{heard[0][i], heard[1][i]};
      file.write(reinterpret_cast<const char*>(frame.data()), sizeof frame);
    }
    must(file.good(), "cannot write " + wish.out);
  }

  /// The client's ports stand in the order of its inputs and outputs.
  std::vector<std::string> portsOf(unsigned long direction) const {
    const std::string pattern = "^" + wish.client + ":";
    const char** const names =
        jack_get_ports(source, pattern.c_str(), JACK_DEFAULT_AUDIO_TYPE, direction);
    std::vector<std::string> ports;
    for (const char* const* name = names; name != nullptr && *name != nullptr; ++name) {
      ports.emplace_back(*name);
    }
    jack_free(names);
    return ports;
  }

  /// The client may still be on its way to the server: its ports come before it can be connected.
  void connect() const {
    for (int tries = 0; tries < 1000; ++tries) {
      if (isConnected(portsOf(JackPortIsInput), portsOf(JackPortIsOutput))) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error("no way to and from the ports of " + wish.client);
  }

  bool isConnected(const std::vector<std::string>& inputs,
                   const std::vector<std::string>& outputs) const {
    if (inputs.size() != voices || outputs.size() != heardVoices) return false;
    bool good = true;
    for (std::size_t v = 0; v < voices; ++v) {
      good = good && connects(jack_port_name(outs[v]), inputs[v].c_str());
    }
    for (std::size_t v = 0; v < heardVoices; ++v) {
      good = good && connects(outputs[v].c_str(), jack_port_name(ins[v]));
    }
    return good;
  }

  bool connects(const char* from, const char* to) const {
    const int result = jack_connect(source, from, to);
    return result == 0 || result == EEXIST;
  }

  /// The frame of the song at which a block begins, or none while the transport stands.
  static bool rolls(jack_client_t* client, std::size_t& frame) {
    jack_position_t position{};
    const bool rolling = jack_transport_query(client, &position) == JackTransportRolling;
    frame = position.frame;
    return rolling;
  }

  static int play(jack_nframes_t frames, void* self) {
    auto& player = *static_cast<Player*>(self);
    std::size_t first = 0;
    const bool rolling = rolls(player.source, first);
    for (std::size_t v = 0; v < voices; ++v) {
      auto* const to = static_cast<float*>(jack_port_get_buffer(player.outs[v], frames));
      const auto& voice = player.sound[v];
      for (std::size_t i = 0; i < frames; ++i) {
        to[i] = rolling && first + i < voice.size() ? voice[first + i] : 0.0F;
      }
    }
    return 0;
  }

  static int record(jack_nframes_t frames, void* self) {
    auto& player = *static_cast<Player*>(self);
    std::size_t first = 0;
    if (!rolls(player.sink, first)) return 0;
    for (std::size_t v = 0; v < heardVoices; ++v) {
      const auto* const from = static_cast<float*>(jack_port_get_buffer(player.ins[v], frames));
      auto& voice = player.heard[v];
      for (std::size_t i = 0; i < frames && first + i < voice.size(); ++i) {
        voice[first + i] = from[i];
      }
    }
    if (first + frames >= player.heard[0].size()) player.isComplete = true;
    return 0;
  }

  static void tellTime(jack_transport_state_t, jack_nframes_t, jack_position_t* position, int,
                       void* self) {
    const double tempo = static_cast<Player*>(self)->wish.tempo;
    const double beats = position->frame * tempo / (60.0 * position->frame_rate);
    const auto whole = static_cast<int>(beats);
    const auto perBar = static_cast<int>(beatsPerBar);
    position->valid = JackPositionBBT;
    position->bar = whole / perBar + 1;
    position->beat = whole % perBar + 1;
    position->tick = static_cast<int>((beats - whole) * ticksPerBeat);
    position->bar_start_tick = (position->bar - 1) * beatsPerBar * ticksPerBeat;
    position->beats_per_bar = static_cast<float>(beatsPerBar);
    position->beat_type = 4.0F;
    position->ticks_per_beat = ticksPerBeat;
    position->beats_per_minute = tempo;
  }

  Wish wish;
  std::array<std::vector<float>, voices> sound;
  std::array<std::vector<float>, heardVoices> heard;
  std::array<jack_port_t*, voices> outs{};
  std::array<jack_port_t*, heardVoices> ins{};
  std::atomic<bool> isComplete = false;
  jack_client_t* source = nullptr;
  jack_client_t* sink = nullptr;
};

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 6) {
    std::fprintf(stderr, "Usage: jack-player SERVER CLIENT BPM IN OUT\n");
    return 2;
  }
  try {
    Player({argv[1], argv[2], std::strtod(argv[3], nullptr), argv[4], argv[5]}).run();
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "jack-player: %s\n", fault.what());
    return 1;
  }
  return 0;
}
