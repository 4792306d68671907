#pragma once

#include <string>
#include <vector>

#include "host/IPlugAAX.h"
#include "params/ParamBank.h"

namespace orvantesco {

inline PlugInfo stereoInfo() {
  PlugInfo info;
  info.parameterCount = kNumParams;
  info.channelList = "2-2 3-2";
  info.version = 0x10200;
  info.uniqueId = "OVsC";
  info.manufacturerId = "QLMw";
  info.latency = 44;
  info.sideChainInputs = 1;
  return info;
}

/// Writes down what the host is told, in order.
class RecordingPort : public HostPort {
 public:
  double sampleRate() const noexcept override { return rate; }
  double tempo() const noexcept override { return beatsPerMinute; }
  void transportAt(int frameInBlock, HostTimeInfo& time) const noexcept override {
    time = transport;
    time.samplePos += frameInBlock;
  }
  void latencyChanged(int samples) noexcept override { latency = samples; }
  void beginParamChange(int index) override { calls.push_back("begin " + std::to_string(index)); }
  void informParamChange(int index, double normalized) override {
    calls.push_back("inform " + std::to_string(index) + " " + std::to_string(normalized));
  }
  void endParamChange(int index) override { calls.push_back("end " + std::to_string(index)); }
  bool resizeEditor(int width, int height) override {
    calls.push_back("resize " + std::to_string(width) + "x" + std::to_string(height));
    return true;
  }

  double rate = 48000.0;
  double beatsPerMinute = 133.0;
  HostTimeInfo transport;
  int latency = -1;
  std::vector<std::string> calls;
};

/// An effect without sound: it notes what it is called with and adds 1 to every input.
class NotingPlug : public IPlugAAX {
 public:
  explicit NotingPlug(HostPort* hostPort = nullptr) : IPlugAAX(stereoInfo(), hostPort) {
    bank->buildParameterBank();
  }
  void OnParamChange(int paramIdx) override {
    dispatched.push_back(paramIdx);
    const bool inRange = GetParam(paramIdx) != nullptr;
    valueAtDispatch = inRange ? GetParam(paramIdx)->value() : -1.0;
  }
  void ProcessDoubleReplacing(double** inputs, double** outputs, int nFrames) override {
    blocks.push_back(nFrames);
    frameInBlock = nFrames - 1;
    HostTimeInfo now;
    GetTime(&now);
    positions.push_back(now.samplePos);
    for (int channel = 0; channel < 2; ++channel) {
      for (int i = 0; i < nFrames; ++i) outputs[channel][i] = inputs[channel][i] + 1.0;
    }
    sideSample = sideChainActive() ? inputs[IsInChannelConnected(2) ? 2 : 1][0] : 0.0;
  }

  std::vector<int> dispatched;
  double valueAtDispatch = -1.0;
  std::vector<int> blocks;
  std::vector<double> positions;
  double sideSample = 0.0;
};

}  // namespace orvantesco
