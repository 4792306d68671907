// What the CLAP plug-in costs over the bare effect, with every parameter standing still, and how
// long a host waits for it.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <variant>
#include <vector>

#include "host/clap/ClapInstance.h"
#include "presets/FactoryPresets.h"
#include "presets/PresetReader.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

constexpr double kRate = 48000.0;
constexpr int kFramesAtOnce = 4096;

/// Blocks of noise in and out, the same for both sides.
class Blocks {
 public:
  explicit Blocks(int blockFrames) : frames(blockFrames), sound(noise(1u << 15)), out(4096) {}

  /// The next block; its pointers lie in `in`, `to`.
  void next() {
    in = {&sound.left[at], &sound.right[at], &sound.left[at]};
    to = {out.left.data(), out.right.data()};
    at = (at + static_cast<std::size_t>(frames)) % sound.size();
  }

  int frames;
  std::array<double*, 3> in{};
  std::array<double*, 2> to{};

 private:
  StereoBuffer sound;
  StereoBuffer out;
  std::size_t at = 0;
};

/// Nanoseconds a frame of some 4096 frames.
template <class PlayBlock>
double timeOf(Blocks& blocks, PlayBlock play) {
  const auto start = std::chrono::steady_clock::now();
  for (int done = 0; done < kFramesAtOnce; done += blocks.frames) {
    blocks.next();
    play();
  }
  const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
  return spent.count() / kFramesAtOnce;
}

double timeOfPlugin(ClapInstance& instance, Blocks& blocks) {
  clap_event_transport_t transport{};
  transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE;
  transport.tempo = 120.0;
  return timeOf(blocks, [&] {
    std::array<clap_audio_buffer_t, 2> inputs{};
    inputs[0].data64 = blocks.in.data();
    inputs[0].channel_count = 2;
    inputs[1].data64 = &blocks.in[2];
    inputs[1].channel_count = 1;
    clap_audio_buffer_t output{};
    output.data64 = blocks.to.data();
    output.channel_count = 2;
    clap_process_t process{};
    process.frames_count = static_cast<std::uint32_t>(blocks.frames);
    process.transport = &transport;
    process.audio_inputs = inputs.data();
    process.audio_inputs_count = 2;
    process.audio_outputs = &output;
    process.audio_outputs_count = 1;
    instance.process(process);
  });
}

double timeOfEffect(EngineRig& rig, Blocks& blocks) {
  return timeOf(blocks, [&] {
    AudioBlock block;
    block.inputs = blocks.in.data();
    block.inputCount = 2;
    block.sideChain = blocks.in[2];
    block.outputs = blocks.to.data();
    block.outputCount = 2;
    block.frames = blocks.frames;
    rig.effect.RenderAudio(block);
  });
}

/// The bare effect and the plug-in around another one, with the same settings and a host that
/// stands still.
struct Pair {
  Pair(int blockFrames, const std::string& preset) : rig(kRate, withSideChain()) {
    rig.host.setRunning(false);
    instance.start(kRate, blockFrames);
    if (preset.empty()) return;
    const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
    loading.from_location(instance.plugin, kClapPresetInPlugin, nullptr, preset.c_str());
    const std::size_t slash = preset.find('/');
    const auto* const found = findFactoryPreset(preset.substr(0, slash), preset.substr(slash + 1));
    const PresetResult read = parsePreset(found->text);
    rig.effect.settings().applyPreset(std::get<PresetReading>(read).preset, found->relativePath());
  }

  static OrvantescoOptions withSideChain() {
    OrvantescoOptions options = EngineRig::seeded();
    options.sideChain = true;
    return options;
  }

  EngineRig rig;
  ClapInstance instance;
};

double medianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Both take turns, each as often behind the other as before it. The fastest turn of each counts,
/// since all else was somebody else's; beside it stands the ratio of the middle one of all rounds,
/// in which both had the same neighbours.
void overTheEffect(benchmark::State& state, const std::string& preset) {
  Pair pair(static_cast<int>(state.range(0)), preset);
  Blocks blocks(static_cast<int>(state.range(0)));
  double effect = 1e9;
  double plugin = 1e9;
  std::vector<double> ratios;
  for (auto _ : state) {
    const double before = timeOfEffect(pair.rig, blocks);
    const double first = timeOfPlugin(pair.instance, blocks);
    const double second = timeOfPlugin(pair.instance, blocks);
    const double behind = timeOfEffect(pair.rig, blocks);
    effect = std::min({effect, before, behind});
    plugin = std::min({plugin, first, second});
    ratios.push_back((first + second) / (before + behind));
  }
  state.counters["effect_ns_per_frame"] = effect;
  state.counters["plugin_ns_per_frame"] = plugin;
  state.counters["ratio"] = plugin / effect;
  state.counters["middle_ratio"] = medianOf(ratios);
}

void Clap_OverTheEffect(benchmark::State& state) { overTheEffect(state, ""); }
BENCHMARK(Clap_OverTheEffect)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

/// With settings that a musician plays.
void Clap_OverTheEffectAtWork(benchmark::State& state) {
  overTheEffect(state, "Rhythm Taps/Swung Ping Pong");
}
BENCHMARK(Clap_OverTheEffectAtWork)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

/// From the file's entry to the descriptor, once the file is loaded.
void Clap_Scan(benchmark::State& state) {
  for (auto _ : state) {
    clap_entry.init("");
    const auto* const factory =
        static_cast<const clap_plugin_factory_t*>(clap_entry.get_factory(CLAP_PLUGIN_FACTORY_ID));
    benchmark::DoNotOptimize(factory->get_plugin_descriptor(factory, 0));
    clap_entry.deinit();
  }
}
BENCHMARK(Clap_Scan);

/// An instance that is ready to play, and its end.
void Clap_Load(benchmark::State& state) {
  for (auto _ : state) {
    ClapInstance instance;
    instance.start(kRate, 512);
  }
}
BENCHMARK(Clap_Load)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvantesco
