#include "host/IPlugBase.h"

#include <algorithm>
#include <cmath>

#include "host/EditorPort.h"
#include "params/IParam.h"
#include "params/ParamBank.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

constexpr int defaultBlockSize = 1024;

/// Hosts may keep a stored value in single precision.
constexpr double stateTolerance = 1e-5;

/// What is no number becomes the minimum.
double insideRange(const IParam& param, double value) {
  if (std::isnan(value)) return param.min();
  return std::clamp(value, param.min(), param.max());
}

/// A range cut to the channels that a table has.
ChannelRange cut(ChannelRange range, const std::vector<ChannelRecord>& channels) noexcept {
  const int size = static_cast<int>(channels.size());
  const int first = std::clamp(range.first, 0, size);
  const int end = std::clamp(range.first + std::max(range.count, 0), first, size);
  return {first, end - first};
}

using Scratch = std::vector<std::vector<double>>;

void connect(std::vector<ChannelRecord>& channels, Scratch& scratch, ChannelRange range,
             bool connected) noexcept {
  const ChannelRange inside = cut(range, channels);
  for (int i = inside.first; i < inside.first + inside.count; ++i) {
    const auto channel = static_cast<std::size_t>(i);
    channels[channel].connected = connected;
    if (!connected) channels[channel].buffer = scratch[channel].data();
  }
}

bool isConnected(const std::vector<ChannelRecord>& channels, int channel) noexcept {
  return channel >= 0 && channel < static_cast<int>(channels.size()) &&
         channels[static_cast<std::size_t>(channel)].connected;
}

struct Pointers {
  double* const* buffers;
  int offset;
};

void point(std::vector<ChannelRecord>& channels, ChannelRange range, Pointers to) noexcept {
  const ChannelRange inside = cut(range, channels);
  for (int i = inside.first; i < inside.first + inside.count; ++i) {
    ChannelRecord& channel = channels[static_cast<std::size_t>(i)];
    if (channel.connected) channel.buffer = to.buffers[i - range.first] + to.offset;
  }
}

template <class Sample>
void copyConnected(const IPlugBase& plug, Sample** inputs, Sample** outputs, int frames) {
  for (std::size_t i = 0; i < plug.outputChannels.size(); ++i) {
    if (!plug.outputChannels[i].connected) continue;
    if (plug.IsInChannelConnected(static_cast<int>(i))) {
      std::copy_n(inputs[i], frames, outputs[i]);
    } else {
      std::fill_n(outputs[i], frames, Sample{});
    }
  }
}

/// New scratch memory: whatever pointed at the old one points at the new.
void pointAtScratch(std::vector<ChannelRecord>& channels, Scratch& scratch) noexcept {
  for (std::size_t i = 0; i < channels.size(); ++i) {
    if (!channels[i].connected) channels[i].buffer = scratch[i].data();
  }
}

void sizeScratch(Scratch& scratch, int frames) {
  for (auto& buffer : scratch) buffer.assign(static_cast<std::size_t>(frames), 0.0);
}

}  // namespace

IPlugBase::IPlugBase(const PlugInfo& plugInfo)
    : bank(std::make_unique<ParamBank>()),
      latency(plugInfo.latency),
      description(plugInfo),
      uniqueId(fourCharacterId(plugInfo.uniqueId)),
      manufacturerId(fourCharacterId(plugInfo.manufacturerId)),
      version(plugInfo.version),
      inputChannels(static_cast<std::size_t>(largestLayout(plugInfo.channelList).inputs)),
      outputChannels(static_cast<std::size_t>(largestLayout(plugInfo.channelList).outputs)),
      latencyBuffer(static_cast<int>(outputChannels.size())),
      inputScratch(inputChannels.size()),
      outputScratch(outputChannels.size()) {
  for (int i = 0; i < plugInfo.parameterCount; ++i) params.push_back(bank->getParam(i));
  latencyBuffer.resize(plugInfo.latency);
  IPlugBase::SetBlockSize(defaultBlockSize);
}

IPlugBase::~IPlugBase() = default;

void IPlugBase::ProcessDoubleReplacing(double** inputs, double** outputs, int nFrames) {
  copyConnected(*this, inputs, outputs, nFrames);
}

void IPlugBase::ProcessSingleReplacing(float** inputs, float** outputs, int nFrames) noexcept {
  copyConnected(*this, inputs, outputs, nFrames);
}

void IPlugBase::SetParameterFromGUI(int paramIdx, double normalized) {
  IParam* param = GetParam(paramIdx);
  if (param == nullptr) return;
  param->setNormalized(normalized);
  InformHostOfParamChange(paramIdx, normalized);
  OnParamChange(paramIdx);
}

void IPlugBase::InformHostOfParamChange(int paramIdx, double normalized) {
  (void)paramIdx;
  (void)normalized;
}

void IPlugBase::GetTimeSig(int& numerator, int& denominator) noexcept {
  const HostTimeInfo none;
  numerator = none.numerator;
  denominator = none.denominator;
}

bool IPlugBase::ResizeGraphics(int width, int height) {
  (void)width;
  (void)height;
  return false;
}

void IPlugBase::SetLatency(int samples) noexcept {
  latency = samples;
  latencyBuffer.resize(samples);
}

void IPlugBase::SetBlockSize(int frames) {
  if (frames == blockSize || frames < 1) return;
  blockSize = frames;
  sizeScratch(inputScratch, frames);
  sizeScratch(outputScratch, frames);
  pointAtScratch(inputChannels, inputScratch);
  pointAtScratch(outputChannels, outputScratch);
}

void IPlugBase::RedrawParamControls() {
  EditorPort* const editor = graphics;
  if (editor == nullptr) return;
  for (int i = 0; i < NParams(); ++i) editor->setKnobValue(i, GetParam(i)->getNormalized());
}

IParam* IPlugBase::GetParam(int index) const noexcept {
  return index >= 0 && index < NParams() ? params[static_cast<std::size_t>(index)] : nullptr;
}

void IPlugBase::SetHost(const char* name, int hostsVersion) {
  host = hostFromName(name);
  hostVersion = hostsVersion;
}

void IPlugBase::AttachInput(ChannelRange range, bool connected) noexcept {
  connect(inputChannels, inputScratch, range, connected);
}

void IPlugBase::AttachOutput(ChannelRange range, bool connected) noexcept {
  connect(outputChannels, outputScratch, range, connected);
}

void IPlugBase::SetInputPointers(ChannelRange range, double* const* buffers, int offset) noexcept {
  point(inputChannels, range, {buffers, offset});
}

void IPlugBase::SetOutputPointers(ChannelRange range, double* const* buffers, int offset) noexcept {
  point(outputChannels, range, {buffers, offset});
}

bool IPlugBase::IsInChannelConnected(int channel) const noexcept {
  return isConnected(inputChannels, channel);
}

bool IPlugBase::IsOutChannelConnected(int channel) const noexcept {
  return isConnected(outputChannels, channel);
}

void IPlugBase::passThrough(double* const* inputs, double* const* outputs,
                            PassThrough pass) noexcept {
  for (int i = 0; i < static_cast<int>(outputChannels.size()); ++i) {
    if (i < pass.inputCount && IsInChannelConnected(i)) {
      latencyBuffer.process(i, inputs[i], outputs[i], pass.frames);
    } else {
      std::fill_n(outputs[i], pass.frames, 0.0);
    }
  }
}

void IPlugBase::clearScratch() noexcept {
  for (auto& buffer : inputScratch) std::fill(buffer.begin(), buffer.end(), 0.0);
  for (auto& buffer : outputScratch) std::fill(buffer.begin(), buffer.end(), 0.0);
}

bool IPlugBase::SerializeState(StateChunk& chunk) { return SerializeParams(chunk); }

int IPlugBase::UnserializeState(const StateChunk& chunk, int startPos) {
  return UnserializeParams(chunk, startPos);
}

bool IPlugBase::SerializeParams(StateChunk& chunk) {
  const std::lock_guard lock(mutex);
  return std::all_of(params.begin(), params.end(),
                     [&chunk](const IParam* param) { return chunk.putDouble(param->value()) > 0; });
}

int IPlugBase::UnserializeParams(const StateChunk& chunk, int startPos) {
  int position = startPos;
  std::vector<double> values;
  for (int i = 0; i < NParams(); ++i) {
    double value = 0.0;
    position = chunk.getDouble(position, value);
    if (position < 0) break;
    values.push_back(value);
  }
  takeParamValues(values);
  return position;
}

void IPlugBase::takeParamValues(const std::vector<double>& values) {
  const std::lock_guard lock(mutex);
  const std::size_t count = std::min(values.size(), params.size());
  for (std::size_t i = 0; i < count; ++i) {
    params[i]->setValue(insideRange(*params[i], values[i]));
  }
  for (int i = 0; i < NParams(); ++i) OnParamChange(i);
}

bool IPlugBase::CompareState(const StateChunk& chunk, int startPos) {
  int position = startPos;
  return std::all_of(params.begin(), params.end(), [&](const IParam* param) {
    double stored = 0.0;
    position = chunk.getDouble(position, stored);
    return position >= 0 && std::abs(stored - param->value()) <= stateTolerance;
  });
}

}  // namespace orvantesco
