#pragma once

#include <cstdint>

#include "delay/DelayRing.h"
#include "delay/TapGlide.h"

namespace orvantesco {

struct TapBatch;

/// Reads a ring by up to 16 taps, each with a delay time of its own that glides (TapGlide) and an
/// all-pass interpolator of its own:
///
///     y[i] = (x[p] - y[i-1]) (1 - f) / (1 + f) + x[p - 1]
///
/// with r the whole part and f the fraction of the delay, and x[p] the sample r behind where
/// sample i will be written. The all-pass keeps every frequency at its level, at any fraction and
/// while the delay moves (a linear interpolator would dull the highs at each echo). Its price is a
/// memory that at f = 0 no longer fades: whatever y is off by then would stay as a tone at half
/// the rate. So a tap that starts anew starts with y[-1] = x[p - 1] of its first sample, and one
/// that stands at f = 0 is copied instead of summed up, so that it is exact.
///
/// A tap whose glide has settled costs about half a moving one, one at a whole delay a copy.
/// Audio thread only; nothing allocates.
class TapReader {
 public:
  static constexpr int kTapCount = 16;

  /// One tap's read of 32 samples.
  struct Read {
    float delaySamples = 0.0F;  ///< where the glide goes to: 32..length of the ring - 1
    int tap = 0;                ///< 0..15
    double* output = nullptr;
  };

  /// Takes the glide's constants for a rate in Hz; every glide starts at 0 again.
  void setRate(double rateHz) noexcept;

  /// Every tap starts with a memory that fits what it reads first.
  void clearMemory() noexcept { isFresh = kAllTaps; }

  /// The next tap that is read goes to its new delay at once.
  void snapNextGlide() noexcept { snapsNext = true; }

  /// One tap. Returns whether the output is sure to lie within the runaway limit, because neither
  /// the ring nor the tap's memory holds anything near it; otherwise the caller has to look.
  bool read(const DelayRing& ring, const Read& read) noexcept;

  /// Several different taps of one ring, in lanes; the same bits as `read` of one after the other.
  bool readMany(const DelayRing& ring, const Read* reads, int count) noexcept;

  /// One tap of each of two readers, so that their recursions overlap; the same bits again.
  static bool readPair(TapReader& left, const DelayRing& ringL, const Read& readL, TapReader& right,
                       const DelayRing& ringR, const Read& readR) noexcept;

 private:
  static constexpr std::uint32_t kAllTaps = (1U << kTapCount) - 1;

  struct Tap {
    double delay = 0.0;   ///< where the glide stands
    double memory = 0.0;  ///< y[-1], unless the tap is fresh
    double coefficient = 0.0;
    float settledAt = 0.0F;  ///< the delay, in samples, that coefficient and whole belong to
    int whole = 0;
  };

  void plan(const DelayRing& ring, const Read& read, TapBatch& batch) noexcept;
  void settle(Tap& tap, float delaySamples) noexcept;
  void planChange(const DelayRing& ring, const Read& read, TapBatch& batch) noexcept;
  void planSettled(const DelayRing& ring, const Read& read, double memory,
                   TapBatch& batch) noexcept;
  void planMoving(const DelayRing& ring, const Read& read, double start, TapBatch& batch) noexcept;
  bool takeFresh(int tap) noexcept;
  void walk(const DelayRing& ring, const Read& read, double start) noexcept;
  void finish(const Read& read) noexcept;

  TapGlide glide;
  Tap taps[kTapCount];
  std::uint32_t isFresh = kAllTaps;
  bool snapsNext = false;
};

}  // namespace orvantesco
