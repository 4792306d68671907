#pragma once

#include "host/HostTimeInfo.h"

namespace orvantesco {

/// What a host gives to the plug-in and takes from it. Each plug-in format has one
/// implementation; `OfflineHost` serves the command line, tests and benchmarks.
/// The default of every operation does nothing, so that the engine runs without a host.
class HostPort {
 public:
  virtual ~HostPort() = default;

  /// Sample rate in Hz that the host runs at now. Any thread.
  virtual double sampleRate() const noexcept { return 44100.0; }

  /// Tempo of the current block in beats per minute. Audio thread.
  virtual double tempo() const noexcept { return 120.0; }

  /// Transport at a frame of the current block, 0 being its first. Audio thread. The host answers
  /// for a frame and not for a block, so that the answer does not depend on how blocks are cut.
  virtual void transportAt(int frameInBlock, HostTimeInfo& info) const noexcept {
    (void)frameInBlock;
    info = HostTimeInfo{};
  }

  /// Latency in samples that the host has to compensate. Audio thread or main thread.
  virtual void latencyChanged(int samples) noexcept { (void)samples; }

  /// A gesture of the user on a parameter begins, changes it (0..1), ends. Editor thread.
  virtual void beginParamChange(int paramIdx) { (void)paramIdx; }
  virtual void informParamChange(int paramIdx, double normalized) {
    (void)paramIdx;
    (void)normalized;
  }
  virtual void endParamChange(int paramIdx) { (void)paramIdx; }

  /// Asks for a new size of the editor's window in pixels; false if the host refuses. Editor
  /// thread.
  virtual bool resizeEditor(int width, int height) {
    (void)width;
    (void)height;
    return false;
  }
};

}  // namespace orvantesco
