#pragma once

#include "host/HostPort.h"
#include "host/IPlugBase.h"

namespace orvantesco {

/// The host's side of the framework: turns its virtual operations into calls on a `HostPort`, and
/// takes blocks of audio from a binding.
class IPlugAAX : public IPlugBase {
 public:
  /// The port is not owned and must outlive the effect; null stands for no host at all.
  IPlugAAX(const PlugInfo& info, HostPort* hostPort);

  /// Stores the value and tells the host under the `mutex`, then dispatches the parameter.
  void SetParameterFromGUI(int paramIdx, double normalized) override;

  void BeginInformHostOfParamChange(int paramIdx) override;
  void InformHostOfParamChange(int paramIdx, double normalized) override;
  void EndInformHostOfParamChange(int paramIdx) override;

  double GetTempo() noexcept override;
  double GetSamplePos() noexcept override;
  void GetTimeSig(int& numerator, int& denominator) noexcept override;
  void GetTime(HostTimeInfo* info) noexcept override;
  int GetAPI() const noexcept override { return 4; }
  bool ResizeGraphics(int width, int height) override;
  void SetLatency(int samples) noexcept override;
  double GetSampleRate() noexcept override;

  /// One block from the host: refreshes the side-chain flag and the channel records and runs
  /// `ProcessDoubleReplacing`, or passes the inputs on where the block is bypassed. A block longer
  /// than `blockSize` is taken in pieces. Audio thread.
  void RenderAudio(const AudioBlock& block);

  /// Whether the current block carries a side chain: then it is the input behind the main ones.
  /// `RenderAudio` keeps this up to date; who calls the effect directly sets it. Audio thread.
  void SetSideChainActive(bool active) noexcept;
  bool sideChainActive() const noexcept { return sideChainConnected; }

 protected:
  HostPort& port() noexcept { return *hostSide; }

 private:
  void connectChannels(const AudioBlock& block) noexcept;
  void renderPiece(const AudioBlock& block, int first, int frames);

  HostPort* hostSide;
  Shared<bool> sideChainConnected{false};
  double lastTempo = HostTimeInfo{}.tempo;
  int pieceStart = 0;  ///< frame of the host's block at which the current piece begins
  bool wasBypassed = false;

  // The block's channels as `ProcessDoubleReplacing` takes them, sized once.
  std::vector<double*> inputPointers;
  std::vector<double*> outputPointers;
};

}  // namespace orvantesco
