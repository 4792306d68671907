#pragma once

#include "fx/Smoother.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// Target of every modulation depth that is not connected, the same address in the whole process.
inline constexpr double kZeroDepth = 0.0;

/// Base of every signal block: effects, the filters they are built from, reverbs, EQ, limiter.
///
/// Life cycle: construct (the only place where memory is taken), set parameters and sources, then
/// `process` once for each vector of 32 samples. `reset` drops the signal's history and keeps the
/// settings. After a change of rate its owner calls `rateChanged`, then `reset`; the block then
/// behaves as one newly built at that rate with the same parameters, sources and depths.
///
/// A block belongs to the audio thread from the moment that thread can see it; before that to the
/// thread that builds it. So its state is plain words, and nothing but construction allocates.
class DSPShell {
 public:
  static constexpr int kControlCount = 10;

  explicit DSPShell(bool isRight = false) noexcept;
  virtual ~DSPShell() = default;
  DSPShell(const DSPShell&) = delete;
  DSPShell& operator=(const DSPShell&) = delete;

  /// A second mode of blocks that have one: the slope of a filter pair, the mode of a delay.
  virtual void setSecondary(int /*secondaryMode*/) noexcept {}
  /// Clears all signal state; parameters, sources and smoothers stay.
  virtual void reset() noexcept;
  /// Takes the control value of parameter `index`, already scaled to the block's own unit.
  virtual void setParam(int /*index*/, double /*value*/) noexcept {}
  /// Takes a normalised number of filter stages.
  virtual void setStages(double /*normalised*/) noexcept {}
  /// Tell a block that forwards its modulation that a pointer has just been stored.
  virtual void modSourceChanged(int /*index*/, const double* /*source*/) noexcept {}
  virtual void modDepthChanged(int /*index*/, const double* /*depth*/) noexcept {}
  /// The block's work, from `input` to `output`; a stereo block also `input2` to `output2`.
  virtual void processBlock() noexcept;
  /// Back to the state after construction, sources too; `mix`, `spread` and the channel stay.
  /// Not what a change of rate runs: see `rateChanged`.
  virtual void prepare() noexcept;
  /// Follows the clearing of the scratch buffers in `clearState`.
  virtual void onStateCleared() noexcept {}

  /// Takes every constant that depends on the sample rate anew and puts smoothers and counters
  /// to their first values. Overrides call their base first. The caller goes on with `reset`.
  virtual void rateChanged() noexcept;
  /// Drops whatever the signal has left in the block, also what `reset` keeps. Called when the
  /// output has run away. Overrides call their base first.
  virtual void clearMemories() noexcept;

  /// One vector of one channel; `out` null means in place. A bypassed block writes nothing.
  void process(double* in, double* out) noexcept;
  /// One vector of two channels; `outL` null means both in place.
  void process(double* inL, double* inR, double* outL, double* outR) noexcept;

  /// Address of the 32 samples of the modulator of control `index`, null for none.
  void setModSource(int index, const double* source) noexcept;
  /// Address of the signed depth of control `index`; null stands for `kZeroDepth`.
  void setModDepth(int index, const double* depth) noexcept;
  const double* modSourceOf(int index) const noexcept { return modSource[index]; }
  const double* modDepthOf(int index) const noexcept { return modDepth[index]; }

  /// Switches the block off or on, and clears it: off and on again drops its tail.
  void setBypass(bool on) noexcept;
  bool isBypassed() const noexcept { return bypassed; }

  /// Wet share 0..1. The block itself does not read it: who runs the block mixes.
  void setMix(double share) noexcept { mix = share; }
  double wetShare() const noexcept { return mix; }

  /// Clears the scratch buffers and all signal state.
  void clearState() noexcept;

 protected:
  static constexpr int blockSize = kVectorLength;

  /// True once in every `period` calls, `period` a power of two: the control rate of a block.
  bool everyNthBlock(int period) noexcept {
    blockCounter = (blockCounter + 1) & (period - 1);
    return blockCounter == 0;
  }

  /// What modulation adds to control `index` in this vector: depth times the source's first
  /// sample, 0 without a source.
  double modulationOf(int index) const noexcept {
    return modSource[index] != nullptr ? *modDepth[index] * *modSource[index] : 0.0;
  }

  const double* modSource[kControlCount] = {};
  const double* modDepth[kControlCount] = {};
  double mix = 1.0;
  double spread = 0.0;  ///< signed offset of this channel, as the spread control gives it
  Smoother slowSmoother{50.0};
  Smoother fastSmoother{10.0};
  double channelSign = 1.0;  ///< +1 left, -1 right: spread moves the channels apart

  const double* input = nullptr;
  double* output = nullptr;
  const double* input2 = nullptr;  ///< never null within a call, also in a one-channel call
  double* output2 = nullptr;

  alignas(32) double scratchA[kVectorLength] = {};
  alignas(32) double scratchB[2 * kVectorLength] = {};

  int blockCounter = 0;
  bool controlDirty = true;  ///< forces new coefficients at the next vector
  bool bypassed = false;

 private:
  void connect(const double* in, double* out) noexcept;
  void disconnectModulation() noexcept;
  /// Drops all memories and silences this vector where an output has run away.
  void guard(bool isStereo) noexcept;
};

}  // namespace orvantesco
