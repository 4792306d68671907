#include "fx/DCRemover.h"

#include <algorithm>

#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kPole = 0.9999;
constexpr double kPole2 = kPole * kPole;
constexpr double kPole3 = kPole2 * kPole;
constexpr double kPole4 = kPole2 * kPole2;

/// Four samples at once, the recursion looked ahead: only the last product and sum wait for the
/// four before, e[k] = d[k] + a e[k-1] and y[k] = e[k] + a^(k+1) y'. Differs from the plain
/// recursion by its roundings alone.
inline void fourSamples(const double* in, double* out, double& x, double& y) noexcept {
  const double e0 = in[0] - x;
  const double e1 = (in[1] - in[0]) + kPole * e0;
  const double e2 = (in[2] - in[1]) + kPole * e1;
  const double e3 = (in[3] - in[2]) + kPole * e2;
  x = in[3];
  out[0] = e0 + kPole * y;
  out[1] = e1 + kPole2 * y;
  out[2] = e2 + kPole3 * y;
  y = e3 + kPole4 * y;
  out[3] = y;
}

}  // namespace

void DCRemover::reset() noexcept {
  DSPShell::reset();
  xPrevious = yPrevious = 0.0;
  isFresh = true;
}

void DCRemover::run(const double* in, double* out, int n) noexcept {
  double x = isFresh && start == Start::fromFirstSample ? in[0] : xPrevious;
  isFresh = false;
  double y = yPrevious;
  int i = 0;
  for (; i + 4 <= n; i += 4) fourSamples(in + i, out + i, x, y);
  for (; i < n; ++i) {
    const double now = in[i];
    y = kPole * y + (now - x);
    x = now;
    out[i] = y;
  }
  xPrevious = x;
  yPrevious = y;
}

void DCRemover::processBlock() noexcept { run(input, output, blockSize); }

void DCRemover::dropRunaway(double* buffer, int n) noexcept {
  if (isSaneSpan(buffer, n)) return;
  clearMemories();
  std::fill_n(buffer, n, 0.0);
}

void DCRemover::process(double* buffer, int n) noexcept {
  if (n < 1) return;
  run(buffer, buffer, n);
  dropRunaway(buffer, n);
}

void DCRemover::processPair(DCRemover& left, double* leftBuffer, DCRemover& right,
                            double* rightBuffer) noexcept {
  left.run(leftBuffer, leftBuffer, kVectorLength);
  right.run(rightBuffer, rightBuffer, kVectorLength);
  left.dropRunaway(leftBuffer, kVectorLength);
  right.dropRunaway(rightBuffer, kVectorLength);
}

}  // namespace orvantesco
