#include "core/TailLength.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvantesco {

namespace {

constexpr double kForever = std::numeric_limits<double>::infinity();
constexpr double kNepersPerDecibel = 0.1151292546497;

using Matrix = decltype(TailLoops::gain);

double largestRowSum(const Matrix& a) {
  double largest = 0.0;
  for (const auto& row : a) {
    double sum = 0.0;
    for (const double x : row) sum += x;
    largest = std::max(largest, sum);
  }
  return largest;
}

/// (a / norm)²
Matrix squaredOver(const Matrix& a, double norm) {
  Matrix product{};
  for (std::size_t i = 0; i < TailLoops::count; ++i) {
    for (std::size_t k = 0; k < TailLoops::count; ++k) {
      const double left = a[i][k] / norm;
      for (std::size_t j = 0; j < TailLoops::count; ++j) product[i][j] += left * a[k][j] / norm;
    }
  }
  return product;
}

/// Largest magnitude of an eigenvalue of a matrix without negative entries: the limit of the
/// norm of a power's root (I. Gelfand, 1941), with the powers 2, 4, 8 ... 1024.
double spectralRadius(Matrix a) {
  constexpr int squarings = 10;
  double logarithm = 0.0;
  double weight = 1.0;
  for (int k = 0; k <= squarings; ++k) {
    const double norm = largestRowSum(a);
    if (norm == 0.0 || !std::isfinite(norm)) return norm;
    logarithm += weight * std::log(norm);
    a = squaredOver(a, norm);
    weight *= 0.5;
  }
  return std::exp(logarithm);
}

/// The gains, each grown by what a decay of `rate` nepers a second takes away over its delay.
Matrix grown(const TailLoops& loops, double rate) {
  Matrix a = loops.gain;
  for (std::size_t i = 0; i < TailLoops::count; ++i) {
    for (double& x : a[i]) x *= std::exp(rate * loops.seconds[i]);
  }
  return a;
}

}  // namespace

bool loopsFade(const TailLoops& loops) { return spectralRadius(loops.gain) < 1.0; }

double loopDecay(const TailLoops& loops) {
  // Below it is no decay that anybody waits for, above it there is nothing to wait for.
  constexpr double slowest = 1e-3;
  constexpr double fastest = 1e6;
  constexpr int halvings = 24;
  if (!loopsFade(loops)) return 0.0;
  double low = slowest;
  double high = fastest;
  for (int k = 0; k < halvings; ++k) {
    const double middle = std::sqrt(low * high);
    (spectralRadius(grown(loops, middle)) < 1.0 ? low : high) = middle;
  }
  return low / kNepersPerDecibel;
}

double loopDecaySeconds(const TailLoops& loops, double decibels) {
  const double decay = loopDecay(loops);
  return decay > 0.0 ? std::max(decibels, 0.0) / decay : kForever;
}

}  // namespace orvantesco
