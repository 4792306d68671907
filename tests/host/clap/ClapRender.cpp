#include "host/clap/ClapRender.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

constexpr double kFixed = 2147483648.0;

double rounded(double position) { return std::round(position * kFixed) / kFixed; }

/// Position of a frame of the whole render as a host tells it for the start of a block.
double beatsAt(const ClapPlan& plan, std::size_t frame) {
  return rounded(plan.startBeats + static_cast<double>(frame) * plan.tempo / (60.0 * plan.rateHz));
}

clap_event_transport_t transportAt(const ClapPlan& plan, std::size_t frame) {
  clap_event_transport_t event{};
  event.header = {sizeof event, 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_TRANSPORT, 0};
  event.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                CLAP_TRANSPORT_HAS_TIME_SIGNATURE | CLAP_TRANSPORT_IS_PLAYING;
  event.tempo = plan.tempo;
  event.song_pos_beats = std::llround(beatsAt(plan, frame) * kFixed);
  event.tsig_num = 4;
  event.tsig_denom = 4;
  return event;
}

/// A host's buffers of one block, of either width, the outputs full of rubbish.
template <class Sample>
class HostBuffers {
 public:
  HostBuffers(const StereoBuffer& sound, const ClapPlan& plan, std::size_t first, int frameCount)
      : frames(static_cast<std::size_t>(frameCount)) {
    take(0, sound.left.data() + first);
    take(1, sound.right.data() + first);
    if (plan.side != nullptr) take(2, plan.side + first);
    if (plan.side == nullptr) in[2].assign(frames, 0);
    for (auto& channel : out) channel.assign(frames, Sample(77));
    for (std::size_t c = 0; c < 3; ++c) inputs[c] = in[c].data();
    for (std::size_t c = 0; c < 2; ++c) outputs[c] = plan.inPlace ? in[c].data() : out[c].data();
    ports[0] = port(inputs.data(), plan.mono ? 1 : 2);
    ports[1] = port(inputs.data() + 2, 1);
    output = port(outputs.data(), 2);
  }

  clap_process_t block() {
    clap_process_t process{};
    process.steady_time = -1;
    process.frames_count = static_cast<std::uint32_t>(frames);
    process.audio_inputs = ports.data();
    process.audio_inputs_count = 2;
    process.audio_outputs = &output;
    process.audio_outputs_count = 1;
    return process;
  }

  void give(StereoBuffer& result, std::size_t first) const {
    std::copy_n(outputs[0], frames, result.left.data() + first);
    std::copy_n(outputs[1], frames, result.right.data() + first);
  }

 private:
  void take(std::size_t channel, const double* from) {
    in[channel].resize(frames);
    std::transform(from, from + frames, in[channel].begin(),
                   [](double sample) { return static_cast<Sample>(sample); });
  }
  static clap_audio_buffer_t port(Sample** channels, std::uint32_t count) {
    clap_audio_buffer_t buffer{};
    if constexpr (sizeof(Sample) == sizeof(double)) {
      buffer.data64 = channels;
    } else {
      buffer.data32 = channels;
    }
    buffer.channel_count = count;
    return buffer;
  }

  std::size_t frames;
  std::array<std::vector<Sample>, 3> in;
  std::array<std::vector<Sample>, 2> out;
  std::array<Sample*, 3> inputs{};
  std::array<Sample*, 2> outputs{};
  std::array<clap_audio_buffer_t, 2> ports{};
  clap_audio_buffer_t output{};
};

template <class Sample>
StereoBuffer render(ClapInstance& instance, const StereoBuffer& sound, const ClapPlan& plan) {
  StereoBuffer result(sound.size());
  auto move = plan.moves.begin();
  std::size_t number = 0;
  for (std::size_t first = 0; first < sound.size();) {
    const int frames = static_cast<int>(std::min<std::size_t>(
        static_cast<std::size_t>(plan.blockAt(number++)), sound.size() - first));
    const std::size_t end = first + static_cast<std::size_t>(frames);
    for (; move != plan.moves.end() && move->frame < end; ++move) {
      instance.in.value(static_cast<std::uint32_t>(move->frame - first), move->id, move->value);
    }
    HostBuffers<Sample> buffers(sound, plan, first, frames);
    clap_process_t block = buffers.block();
    const clap_event_transport_t transport = transportAt(plan, first);
    block.transport = &transport;
    instance.process(block);
    buffers.give(result, first);
    first = end;
  }
  return result;
}

/// The transport as its user understands it.
class PlainPort : public HostPort {
 public:
  explicit PlainPort(const ClapPlan& how) : plan(how) {}
  double sampleRate() const noexcept override { return plan.rateHz; }
  double tempo() const noexcept override { return plan.tempo; }
  void transportAt(int frameInBlock, HostTimeInfo& info) const noexcept override {
    info = HostTimeInfo{};
    info.tempo = plan.tempo;
    info.transportIsRunning = true;
    info.ppqPos =
        rounded(blockBeats + (frameInBlock + partStart) * plan.tempo / (60.0 * plan.rateHz));
  }

  double blockBeats = 0.0;
  int partStart = 0;

 private:
  const ClapPlan& plan;
};

}  // namespace

int ClapPlan::longest() const { return *std::max_element(blocks.begin(), blocks.end()); }

StereoBuffer throughClap(ClapInstance& instance, const StereoBuffer& sound, const ClapPlan& plan) {
  return plan.wide ? render<double>(instance, sound, plan) : render<float>(instance, sound, plan);
}

StereoBuffer withoutClap(const std::vector<std::uint8_t>& state, const StereoBuffer& sound,
                         const ClapPlan& plan) {
  PlainPort port(plan);
  OrvantescoOptions options;
  options.mainInputs = plan.mono ? 1 : 2;
  options.sideChain = true;
  Orvantesco effect(port, options);
  StateChunk chunk;
  chunk.putBytes(state.data(), static_cast<int>(state.size()));
  effect.UnserializeState(chunk, 0);
  effect.startAnew();
  StereoBuffer result = sound;
  std::vector<double> side(sound.size());
  if (plan.side != nullptr) std::copy_n(plan.side, sound.size(), side.begin());
  auto move = plan.moves.begin();
  std::size_t number = 0;
  for (std::size_t first = 0; first < sound.size();) {
    const auto length = static_cast<std::size_t>(plan.blockAt(number++));
    const std::size_t blockEnd = std::min(first + length, sound.size());
    port.blockBeats = beatsAt(plan, first);
    for (std::size_t at = first; at < blockEnd;) {
      for (; move != plan.moves.end() && move->frame <= at; ++move) {
        IParam& param = *effect.GetParam(static_cast<int>(move->id));
        if (param.type() == ParamType::real) {
          param.setNormalized(move->value);
        } else {
          param.setValue(move->value);
        }
        effect.OnParamChange(static_cast<int>(move->id));
      }
      const std::size_t end =
          move != plan.moves.end() ? std::min<std::size_t>(move->frame, blockEnd) : blockEnd;
      double* channels[] = {result.left.data() + at, result.right.data() + at};
      AudioBlock block;
      block.inputs = channels;
      block.inputCount = plan.mono ? 1 : 2;
      block.sideChain = side.data() + at;
      block.outputs = channels;
      block.outputCount = 2;
      block.frames = static_cast<int>(end - at);
      port.partStart = static_cast<int>(at - first);
      effect.RenderAudio(block);
      at = end;
    }
    first = blockEnd;
  }
  return result;
}

}  // namespace orvantesco
