#pragma once

#include <cstddef>
#include <vector>

namespace orvantesco::model {

/// A stereo signal of any length.
struct Signal {
  std::vector<double> left;
  std::vector<double> right;
  size_t size() const { return left.size(); }
};

Signal silence(size_t frames);
/// The same value on both sides throughout.
Signal constant(size_t frames, double left, double right);
/// One sample of each side's level at frame `at`.
Signal impulse(size_t frames, size_t at, double left = 1.0, double right = 1.0);
/// Uniform noise between -level and +level, the sides independent of one another.
Signal noise(size_t frames, unsigned seed, double level = 0.5);
Signal sine(size_t frames, double hz, double sampleRate);
/// One after the other.
Signal joined(const Signal& first, const Signal& second);
/// Frames from..to-1.
Signal part(const Signal& whole, size_t from, size_t to);

/// The greatest difference of any sample of either side; infinite where lengths differ or a
/// sample is not finite.
double worstDifference(const Signal& a, const Signal& b);
/// The greatest magnitude of either side.
double peak(const Signal& signal);

}  // namespace orvantesco::model
