#pragma once

#include <array>
#include <vector>

#include "model/ModelBlocks.h"
#include "model/ModelFilters.h"

namespace orvantesco::model {

enum class DelayMode { forward, backward, grain, tapped };

/// One channel of a slot's delay. Everything that was written since the last reset is kept in
/// one growing vector; `ringAt` looks up what a ring of finite length would hold.
class DelayModel {
 public:
  explicit DelayModel(const Rates& rates);

  void setMode(DelayMode newMode);
  /// Empties the ring and the memories of filters and taps; glides and cycles go on.
  void reset();
  void clearTapMemory() { freshTap.fill(true); }
  void snapNextRead() { snapGlide = true; }
  void setLowpassHz(double hz);
  void setHighpassHz(double hz);
  void setReverseFade(double ms);
  void setGrain(double sizeMs, double octaves, double start, double fadeMs);
  void triggerReverse(bool now) { reverseTrigger = reverseTrigger || now; }

  /// The next 32 samples of tap 0..15 at a delay in samples.
  Block read(double delaySamples, int tap);
  /// Whole samples behind the block written last, no glide.
  Block readRaw(double delaySamples) const;
  void write(const Block& samples);

 private:
  double ringAt(long position) const;
  long writePos() const { return static_cast<long>(written.size()) % length; }
  Block readTap(double target, int tap);
  Block readReverse(double delaySamples);
  Block readGrain(double delaySamples);
  double grainSample() const;
  void startGrain(double delaySamples, double size, int i);
  void followGrainSize(const Block& sizes, double target);
  void updateGrainFade(double size);

  Rates rates;
  long length = 0;
  std::vector<double> written;
  DelayMode mode = DelayMode::forward;

  std::array<Glide, 16> tapGlide;
  std::array<double, 16> tapMemory{};
  std::array<bool, 16> freshTap{};
  bool snapGlide = true;
  EchoFilter lowpass;
  EchoFilter highpass;
  bool lowpassActive = false;
  bool highpassActive = false;

  bool reverseTrigger = false;
  bool reverseCrossing = false;
  long reverseStart = 0;
  long reverseCount = 0;
  long reverseCrossPos = 0;
  double reverseFadeSamples = 441.0;

  Glide grainSizeGlide;
  double grainSizeMs = 100.0;
  double grainRate = 1.0;
  double grainStart = 0.0;  ///< 0: at the delay time, 1: at the newest material
  double grainFadeMs = 0.0;
  double grainFadeSamples = 0.0;
  double grainFadeMadeFor = 0.0;
  double grainCount = 0.0;
  double grainPos = 0.0;
  double grainOldPos = 0.0;
};

}  // namespace orvantesco::model
