#pragma once

#include <array>
#include <vector>

#include "host/ChannelRecord.h"

namespace orvantesco {

/// The wrapper's audio is in single precision and the effect's in double: the buffers between.
class DpfAudio {
 public:
  DpfAudio() = default;
  DpfAudio(const DpfAudio&) = delete;
  DpfAudio& operator=(const DpfAudio&) = delete;

  /// Takes memory for pieces of up to that many frames, 1 at least. No audio runs.
  void prepare(int frames);

  /// The longest piece. A host may well send blocks longer than it announced.
  int longestPiece() const noexcept { return longest; }

  struct Piece {
    int first = 0;  ///< frame of the host's block
    int frames = 0;
  };

  /// A piece of the inputs left, right and side chain; the latter may be null. All inputs are read
  /// before an output is written, so buffers may be shared. Audio thread.
  AudioBlock take(const float* const* inputs, Piece piece) noexcept;

  /// Hands the piece that was rendered to the outputs left and right. Audio thread.
  void give(float* const* outputs, Piece piece) const noexcept;

 private:
  static constexpr std::size_t mainChannels = 2;

  int longest = 1;
  std::array<std::vector<double>, mainChannels + 1> in;
  std::array<std::vector<double>, mainChannels> out;
  std::array<double*, mainChannels> inPointers{};
  std::array<double*, mainChannels> outPointers{};
};

}  // namespace orvantesco
