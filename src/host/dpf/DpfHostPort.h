#pragma once

#include <DistrhoPlugin.hpp>
#include "fx/Shared.h"
#include "host/HostPort.h"

namespace orvantesco {

/// The host behind the wrapper of VST3, LV2 and JACK, as the effect sees it.
///
/// Audio thread, but for the sample rate, which is set while no audio runs, and the latency.
class DpfHostPort : public HostPort {
 public:
  /// Hz.
  void setSampleRate(double rateHz) noexcept { rate = rateHz; }

  /// The transport at the first frame of the host's block.
  void takePosition(const DISTRHO::TimePosition& position) noexcept;

  /// What the effect reported last, in samples. Any thread.
  int latencySamples() const noexcept { return latency; }

  double sampleRate() const noexcept override { return rate; }
  double tempo() const noexcept override { return atBlockStart.tempo; }
  void transportAt(int frameInBlock, HostTimeInfo& info) const noexcept override;
  void latencyChanged(int samples) noexcept override { latency = samples; }

 private:
  double quarterNotesAt(const DISTRHO::TimePosition& position) const noexcept;

  Shared<double> rate{44100.0};
  Shared<int> latency{0};
  HostTimeInfo atBlockStart;
};

}  // namespace orvantesco
