#include "model/Signal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace orvantesco::model {

namespace {

std::vector<double> cut(const std::vector<double>& whole, size_t from, size_t to) {
  return {whole.begin() + static_cast<long>(from), whole.begin() + static_cast<long>(to)};
}

double worst(const std::vector<double>& a, const std::vector<double>& b) {
  double found = 0.0;
  for (size_t i = 0; i < a.size(); ++i) {
    const double difference = std::abs(a[i] - b[i]);
    if (!std::isfinite(difference)) return std::numeric_limits<double>::infinity();
    found = std::max(found, difference);
  }
  return found;
}

}  // namespace

Signal silence(size_t frames) { return constant(frames, 0.0, 0.0); }

Signal constant(size_t frames, double left, double right) {
  return {std::vector<double>(frames, left), std::vector<double>(frames, right)};
}

Signal impulse(size_t frames, size_t at, double left, double right) {
  Signal out = silence(frames);
  out.left[at] = left;
  out.right[at] = right;
  return out;
}

Signal noise(size_t frames, unsigned seed, double level) {
  std::mt19937 generator(seed);
  const auto draw = [&] {
    return (static_cast<double>(generator()) / 4294967295.0 * 2 - 1) * level;
  };
  Signal out = silence(frames);
  for (size_t i = 0; i < frames; ++i) {
    out.left[i] = draw();
    out.right[i] = draw();
  }
  return out;
}

Signal sine(size_t frames, double hz, double sampleRate) {
  Signal out = silence(frames);
  for (size_t i = 0; i < frames; ++i)
    out.left[i] = std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(i) / sampleRate);
  out.right = out.left;
  return out;
}

Signal joined(const Signal& first, const Signal& second) {
  Signal out = first;
  out.left.insert(out.left.end(), second.left.begin(), second.left.end());
  out.right.insert(out.right.end(), second.right.begin(), second.right.end());
  return out;
}

Signal part(const Signal& whole, size_t from, size_t to) {
  return {cut(whole.left, from, to), cut(whole.right, from, to)};
}

double worstDifference(const Signal& a, const Signal& b) {
  if (a.size() != b.size()) return std::numeric_limits<double>::infinity();
  return std::max(worst(a.left, b.left), worst(a.right, b.right));
}

double peak(const Signal& signal) { return worstDifference(signal, silence(signal.size())); }

}  // namespace orvantesco::model
