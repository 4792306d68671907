#include "host/IPlugAAX.h"

#include <algorithm>
#include <cmath>

#include "params/IParam.h"

namespace orvantesco {
namespace {

/// Stands in where there is no host: every operation of the port does nothing by itself.
HostPort& absentHost() {
  static HostPort none;
  return none;
}

bool isTempo(double beatsPerMinute) noexcept {
  return std::isfinite(beatsPerMinute) && beatsPerMinute > 0.0;
}

double finiteOrZero(double position) noexcept { return std::isfinite(position) ? position : 0.0; }

}  // namespace

IPlugAAX::IPlugAAX(const PlugInfo& plugInfo, HostPort* hostPort)
    : IPlugBase(plugInfo),
      hostSide(hostPort != nullptr ? hostPort : &absentHost()),
      inputPointers(inputChannels.size(), nullptr),
      outputPointers(outputChannels.size(), nullptr) {}

void IPlugAAX::SetParameterFromGUI(int paramIdx, double normalized) {
  IParam* param = GetParam(paramIdx);
  if (param == nullptr) return;
  {
    const std::lock_guard lock(mutex);
    param->setNormalized(normalized);
    InformHostOfParamChange(paramIdx, normalized);
  }
  OnParamChange(paramIdx);
}

void IPlugAAX::BeginInformHostOfParamChange(int paramIdx) { hostSide->beginParamChange(paramIdx); }

void IPlugAAX::InformHostOfParamChange(int paramIdx, double normalized) {
  hostSide->informParamChange(paramIdx, normalized);
}

void IPlugAAX::EndInformHostOfParamChange(int paramIdx) { hostSide->endParamChange(paramIdx); }

double IPlugAAX::GetTempo() noexcept {
  const double answered = hostSide->tempo();
  if (isTempo(answered)) lastTempo = answered;
  return lastTempo;
}

double IPlugAAX::GetSamplePos() noexcept {
  HostTimeInfo now;
  GetTime(&now);
  return now.samplePos;
}

void IPlugAAX::GetTimeSig(int& numerator, int& denominator) noexcept {
  HostTimeInfo now;
  GetTime(&now);
  numerator = now.numerator;
  denominator = now.denominator;
}

void IPlugAAX::GetTime(HostTimeInfo* time) noexcept {
  hostSide->transportAt(pieceStart + frameInBlock, *time);
  if (!isTempo(time->tempo)) time->tempo = lastTempo;
  time->samplePos = finiteOrZero(time->samplePos);
  time->ppqPos = finiteOrZero(time->ppqPos);
  time->cycleStart = finiteOrZero(time->cycleStart);
  time->cycleEnd = finiteOrZero(time->cycleEnd);
}

bool IPlugAAX::ResizeGraphics(int width, int height) {
  return hostSide->resizeEditor(width, height);
}

void IPlugAAX::SetLatency(int samples) noexcept {
  hostSide->latencyChanged(samples);
  IPlugBase::SetLatency(samples);
}

double IPlugAAX::GetSampleRate() noexcept {
  SetSampleRate(hostSide->sampleRate());
  return sampleRate;
}

void IPlugAAX::RenderAudio(const AudioBlock& block) {
  SetSideChainActive(block.sideChain != nullptr);
  connectChannels(block);
  if (block.bypass && !wasBypassed) latencyBuffer.clear();
  wasBypassed = block.bypass;
  const int longest = std::max(blockSize.get(), 1);
  for (int first = 0; first < block.frames; first += longest) {
    renderPiece(block, first, std::min(longest, block.frames - first));
  }
  pieceStart = 0;
}

void IPlugAAX::connectChannels(const AudioBlock& block) noexcept {
  const int connectedInputs = block.inputCount + (block.sideChain != nullptr ? 1 : 0);
  AttachInput({0, connectedInputs}, true);
  AttachInput({connectedInputs, static_cast<int>(inputChannels.size())}, false);
  AttachOutput({0, block.outputCount}, true);
  AttachOutput({block.outputCount, static_cast<int>(outputChannels.size())}, false);
}

/// The scratch buffers are cleared when the table changes, so that no old audio is taken for input.
void IPlugAAX::SetSideChainActive(bool active) noexcept {
  if (active == sideChainConnected) return;
  sideChainConnected = active;
  clearScratch();
}

void IPlugAAX::renderPiece(const AudioBlock& block, int first, int frames) {
  pieceStart = block.firstFrame + first;
  SetInputPointers({0, block.inputCount}, block.inputs, first);
  SetInputPointers({block.inputCount, 1}, &block.sideChain, first);
  SetOutputPointers({0, block.outputCount}, block.outputs, first);
  const auto bufferOf = [](const ChannelRecord& channel) { return channel.buffer; };
  std::transform(inputChannels.begin(), inputChannels.end(), inputPointers.begin(), bufferOf);
  std::transform(outputChannels.begin(), outputChannels.end(), outputPointers.begin(), bufferOf);
  if (block.bypass) {
    passThrough(inputPointers.data(), outputPointers.data(), {block.inputCount, frames});
  } else {
    ProcessDoubleReplacing(inputPointers.data(), outputPointers.data(), frames);
  }
}

}  // namespace orvantesco
