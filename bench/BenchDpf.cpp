// What the VST3 and the LV2 cost over the bare effect, with every parameter standing still.

#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "OverTheEffect.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Lv2Host.h"
#include "host/dpf/Vst3Host.h"
#include "host/dpf/Vst3Objects.h"

namespace orvantesco {
namespace {

class Vst3PluginAtRest {
 public:
  Vst3PluginAtRest(int blockFrames, const std::string& stateText) {
    host.setState(vst3StreamOf(stateText));
    host.activateSideChain(true);
    host.activate(kBenchRate, blockFrames);
    context.state = V3_PROCESS_CTX_TEMPO_VALID;
    context.bpm = 120.0;
  }

  void play(Blocks<float>& blocks) {
    std::array<v3_audio_bus_buffers, 2> inputs{};
    inputs[0].num_channels = 2;
    inputs[0].channel_buffers_32 = blocks.in.data();
    inputs[1].num_channels = 1;
    inputs[1].channel_buffers_32 = &blocks.in[2];
    v3_audio_bus_buffers output{};
    output.num_channels = 2;
    output.channel_buffers_32 = blocks.to.data();
    v3_process_data data{};
    data.symbolic_sample_size = V3_SAMPLE_32;
    data.nframes = blocks.frames;
    data.num_input_buses = 2;
    data.num_output_buses = 1;
    data.inputs = inputs.data();
    data.outputs = &output;
    data.input_params = given.handle();
    data.output_params = told.handle();
    data.ctx = &context;
    host.processUncounted(data);
  }

 private:
  Vst3ChangeLists given{{}};
  Vst3ChangeLists told{{}};
  v3_process_context context{};
  Vst3Host host;
};

class Lv2PluginAtRest {
 public:
  Lv2PluginAtRest(int, const std::string& stateText) { host.restore(stateText); }

  void play(Blocks<float>& blocks) {
    host.process(blocks.in.data(), blocks.to.data(), static_cast<std::uint32_t>(blocks.frames));
  }

 private:
  Lv2Host host;
};

template <class Plugin>
void dpfOverTheEffect(benchmark::State& state, const std::string& preset) {
  const auto frames = static_cast<int>(state.range(0));
  BareEffect bare(preset);
  Plugin plugin(frames, stateText(bare.rig.effect));
  overTheEffect(state, bare, plugin, Blocks<float>(frames));
}

void Vst3_OverTheEffect(benchmark::State& state) { dpfOverTheEffect<Vst3PluginAtRest>(state, ""); }
BENCHMARK(Vst3_OverTheEffect)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

void Vst3_OverTheEffectAtWork(benchmark::State& state) {
  dpfOverTheEffect<Vst3PluginAtRest>(state, kPresetAtWork);
}
BENCHMARK(Vst3_OverTheEffectAtWork)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

void Lv2_OverTheEffect(benchmark::State& state) { dpfOverTheEffect<Lv2PluginAtRest>(state, ""); }
BENCHMARK(Lv2_OverTheEffect)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

void Lv2_OverTheEffectAtWork(benchmark::State& state) {
  dpfOverTheEffect<Lv2PluginAtRest>(state, kPresetAtWork);
}
BENCHMARK(Lv2_OverTheEffectAtWork)->ArgName("block")->Arg(64)->Arg(512)->MinTime(2.0);

}  // namespace
}  // namespace orvantesco
