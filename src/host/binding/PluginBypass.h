#pragma once

#include <array>
#include <vector>

#include "core/Orvantesco.h"
#include "host/binding/DryHistory.h"

namespace orvantesco {

/// Runs the blocks of one effect, with a bypass that does not click: the dry signal, as late as the
/// effect reports, and the effect fade over into each other in ten milliseconds.
///
/// While it is bypassed the effect does not run and a block costs next to nothing. Coming back, it
/// begins with empty delays, and its input rises where the dry signal falls, so that its echoes
/// have no hard edge either. For as long as the latency it first runs unheard.
///
/// Out of a bypass and its fades a block goes to the effect as it is, bit for bit.
///
/// Audio thread, but for construction and `prepare`.
class PluginBypass {
 public:
  static constexpr double fadeSeconds = 0.01;

  /// The effect is not owned and outlives this.
  explicit PluginBypass(Orvantesco& effect);
  PluginBypass(const PluginBypass&) = delete;
  PluginBypass& operator=(const PluginBypass&) = delete;

  /// Takes all memory for blocks of up to `maxFrames` at a rate in Hz, which the host's port must
  /// name already, and lets the effect start anew at it and report its latency. It begins where the
  /// host wants it, bypassed or not, without a fade. No audio runs.
  void prepare(int maxFrames, double rateHz, bool bypassed);

  /// Forgets everything that sounds, without a fade, from the next frame on.
  void reset() noexcept;

  /// One block, of any length; `block.bypass` is what the host wants from its first frame on.
  /// Buffers may be shared between inputs and outputs. A mono input passes to both outputs.
  void process(const AudioBlock& block) noexcept;

  /// Whether the effect stands still.
  bool isBypassed() const noexcept { return heard == 0; }

 private:
  static constexpr std::size_t channels = 2;

  /// Gains of one frame of a fade.
  struct Gains {
    double dry = 0.0;
    double effect = 0.0;
  };

  void takeMemory(std::size_t frames);
  void processPiece(AudioBlock block) noexcept;
  void takeDry(const AudioBlock& block) noexcept;
  void rememberDry(const AudioBlock& block) noexcept;
  void passDry(const AudioBlock& block) const noexcept;
  void start() noexcept;
  void feedEffect(AudioBlock& block) noexcept;
  void mix(const AudioBlock& block, bool bypass) noexcept;
  Gains stepFade(bool bypass, int delay) noexcept;
  bool isAtRest() const noexcept { return heard == fadeFrames && running == fullyRunning(); }
  int fullyRunning() const noexcept { return kVectorLength + fadeFrames + DryHistory::length; }
  int pieceLength(const AudioBlock& block, int first) const noexcept;
  double rise(int frame) const noexcept;
  double fedGain(int frame) const noexcept { return rise(frame - kVectorLength); }

  Orvantesco& engine;
  int fadeFrames = 1;
  int heard = 1;  ///< how far the effect is faded in, 0 .. fadeFrames
  /// Frames since the effect was started, up to `fullyRunning`. In the first vector it clears what
  /// it held; then its input rises over `fadeFrames`, and by its latency later what comes out.
  int running = fullyRunning();

  std::array<DryHistory, channels> history;
  std::array<std::vector<double>, channels> dry;  ///< of the piece, as it is to be heard
  std::array<std::vector<double>, channels> fed;  ///< the effect's input while it rises
  std::array<double*, channels> fedPointers{};
};

}  // namespace orvantesco
