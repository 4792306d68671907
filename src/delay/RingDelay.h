#pragma once

#include "delay/DelayRing.h"
#include "fx/Smoother.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// A short delay line for one channel of a block: offsets, look-ahead, combs. It is written first
/// and read then, so a delay of 0 gives back what was just written. The slots' long delay with
/// its taps is QLMMultiDelay.
///
/// The length is a power of two; indices that leave it come in again at the other end. Lifecycle:
/// construct, `resize` (the only later place where memory is taken), then write and read in turn.
/// Audio thread only, but for construction and `resize`.
class RingDelay {
 public:
  static constexpr int kFirstCapacity = 16384;  ///< samples, until the first `resize`

  RingDelay() { resize(kFirstCapacity); }

  /// Takes the next power of two from `samples` on (64 at least) and the time of the modulated
  /// read's glide in ms, and starts anew. Throws std::bad_alloc.
  void resize(int samples, double smoothingMs = Smoother::kDefaultTimeMs);

  /// Silence, at a cost that does not depend on the length; the glide stays.
  void clear() noexcept;

  /// Silence, and the glide anew: its constants at the rate in force, its first value 0.
  void rateChanged() noexcept;

  int capacity() const noexcept { return ring.length(); }

  /// Appends n samples, 0..32, held at ±1e8; what is not finite is written as 0.
  void write(const double* source, int n) noexcept { ring.write(source, n); }

  /// n samples (1..32) of which the last is int(delaySamples) behind the newest; at most
  /// capacity - 1. A pointer into the ring where they lie there in one piece, else to a copy;
  /// it stands until the next write or read.
  const double* read(double delaySamples, int n) noexcept;

  /// n samples (1..32) at a delay that glides to delaySamples (0.1 ms at least, capacity - 1 at
  /// most) and may move with every sample, through the first-order all-pass interpolator
  /// y[i] = (x[p] - y[i-1]) (1 - f) / (1 + f) + x[p-1]. Stands until the next read.
  const double* readModulated(double delaySamples, int n) noexcept;

 private:
  int mask() const noexcept { return ring.length() - 1; }

  DelayRing ring;
  Smoother timeSmoother;
  double apState = 0.0;
  alignas(64) double scratch[kVectorLength] = {};
};

}  // namespace orvantesco
