#pragma once

#include "fx/VectorLength.h"

namespace orvantesco {

/// What a delay network works on in one vector of 32 samples. Its shortest line is longer than a
/// vector, so all that comes out of the lines is known before anything goes in, and only the two
/// recursions of each line run from sample to sample:
///
///     y = x[n] + (x[n + 1] - y) f     all-pass interpolation; lines 0..modulated-1
///     z = gain y - coefficient z      damping
///
/// They run one line a vector lane; the mixing runs one sample a lane, line after line:
///
///     left  = z0 - z1 + z2 - z3 + ...     right = z0 + z1 - z2 - z3 + ...
///     in[i] = (z[i + 1] + scale (z0 + z1 + ...)) + feed,   the last line taking z[0]
///
/// With scale = -2 / lines this is a Householder reflection and a rotation by one line: it keeps
/// the energy, and costs two operations a line (J.-M. Jot, "Digital delay networks for designing
/// artificial reverberators", 1991). Every operation is rounded to float in the order given, so
/// all processor levels give the same bits. What is written is held at ±1e8.
struct FdnVector {
  static constexpr int kMaxLines = 16;

  int lines = 0;      ///< even, 2..kMaxLines
  int modulated = 0;  ///< 0..lines

  /// 32 samples of each line, and those one later. All entries are read: where there is no line
  /// they are silence, and where a line does not swing `next` is `now`.
  const float* now[kMaxLines] = {};
  const float* next[kMaxLines] = {};
  float* to[kMaxLines] = {};    ///< 32 samples that go into each line; nobody else's memory
  const float* feed = nullptr;  ///< 32 samples that go into all lines
  float* left = nullptr;        ///< 32 samples
  float* right = nullptr;       ///< 32 samples
  float scale = 0.0F;

  int tick = kVectorLength;  ///< the sample from which `fractionFrom` holds; 32 for none
  alignas(32) float fractionBefore[kMaxLines] = {};
  alignas(32) float fractionFrom[kMaxLines] = {};  ///< 0 for lines that are not modulated
  alignas(32) float gain[kMaxLines] = {};
  alignas(32) float coefficient[kMaxLines] = {};
  alignas(32) float allPassState[kMaxLines] = {};
  alignas(32) float dampingState[kMaxLines] = {};
};

using FdnRun = void (*)(FdnVector&) noexcept;

void runFdnScalar(FdnVector& vector) noexcept;
void runFdnSse2(FdnVector& vector) noexcept;  ///< x86-64
void runFdnAvx2(FdnVector& vector) noexcept;  ///< x86-64, only where the processor has AVX2

/// The operation of the processor level in force (fx/kernels/Level.h).
FdnRun fdnRun() noexcept;

}  // namespace orvantesco
