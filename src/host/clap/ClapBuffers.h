#pragma once

#include <array>
#include <vector>

#include "host/ChannelRecord.h"
#include "host/clap/ClapApi.h"
#include "host/clap/ClapPorts.h"

namespace orvantesco {

/// The host's audio buffers of a block as channels of doubles: 64-bit buffers are used where they
/// lie, 32-bit ones are copied through memory of our own. A channel that the host does not bring is
/// silent, one that it does not take is lost.
///
/// Audio thread, but for `prepare`.
class ClapBuffers {
 public:
  /// Frames that are processed at once, at most.
  static constexpr int longestPart = 4096;

  /// Takes the memory for parts of up to `frames` of the layout's channels. No audio runs.
  void prepare(int frames, const ClapPorts::Layout& layout);

  int partLength() const noexcept { return partFrames; }

  /// Finds the channels of a block of the host, once for all of its parts.
  void take(const clap_process_t& process) noexcept;

  /// A part of the block, as the effect takes it. It lasts until the next call.
  AudioBlock part(int first, int frames) noexcept;

  /// Brings the output of the last part into the host's buffers where they are of 32 bits.
  void deliver() const noexcept {
    if (deliversNarrow) deliverNarrow();
  }

 private:
  static constexpr std::size_t kInputs = 3;  ///< left, right, side chain
  static constexpr std::size_t kOutputs = 2;

  /// One channel of the host from the block's first frame on: at most one of the two is there.
  struct HostChannel {
    float* narrow = nullptr;
    double* wide = nullptr;
  };
  /// The channels of one direction.
  struct HostPorts {
    const clap_audio_buffer_t* ports = nullptr;
    std::uint32_t count = 0;
    HostChannel channel(std::uint32_t port, std::uint32_t number) const noexcept;
  };

  double* input(std::size_t channel) noexcept;
  double* output(std::size_t channel) noexcept;
  void deliverNarrow() const noexcept;

  int partFrames = 0;
  int mainInputs = 2;
  bool sideChain = true;
  std::array<HostChannel, kInputs> hostInputs;
  std::array<HostChannel, kOutputs> hostOutputs;
  bool deliversNarrow = false;  ///< whether an output of the host is of 32 bits
  int first = 0;                ///< of the current part
  int frames = 0;               ///< of the current part
  std::array<std::vector<double>, kInputs> inputCopies;
  std::array<std::vector<double>, kOutputs> outputCopies;
  std::array<double*, kInputs> inputs{};
  std::array<double*, kOutputs> outputs{};
};

}  // namespace orvantesco
