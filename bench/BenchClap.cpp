// What the CLAP plug-in costs over the bare effect, with every parameter standing still, and how
// long a host waits for it.

#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "OverTheEffect.h"
#include "host/clap/ClapInstance.h"

namespace orvantesco {
namespace {

/// The plug-in with a factory preset, "FOLDER/NAME" or none.
class ClapPluginAtRest {
 public:
  ClapPluginAtRest(int blockFrames, const std::string& preset) {
    transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE;
    transport.tempo = 120.0;
    instance.start(kBenchRate, blockFrames);
    if (preset.empty()) return;
    const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
    loading.from_location(instance.plugin, kClapPresetInPlugin, nullptr, preset.c_str());
  }

  void play(Blocks<double>& blocks) {
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
  }

 private:
  clap_event_transport_t transport{};
  ClapInstance instance;
};

void clapOverTheEffect(benchmark::State& state, const std::string& preset) {
  const auto frames = static_cast<int>(state.range(0));
  BareEffect bare(preset);
  ClapPluginAtRest plugin(frames, preset);
  overTheEffect(state, bare, plugin, Blocks<double>(frames));
}

void Clap_OverTheEffect(benchmark::State& state) { clapOverTheEffect(state, ""); }
BENCHMARK(Clap_OverTheEffect)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

void Clap_OverTheEffectAtWork(benchmark::State& state) { clapOverTheEffect(state, kPresetAtWork); }
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
    instance.start(kBenchRate, 512);
  }
}
BENCHMARK(Clap_Load)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvantesco
