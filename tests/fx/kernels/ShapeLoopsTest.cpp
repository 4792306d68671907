#include "fx/kernels/ShapeLoops.h"

#include <numbers>

#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco {
namespace {

using kernels::CurveInput;
using kernels::CurveMemory;
using kernels::ShapeLoops;
using kernels::shapeLoops;
using testing_support::AtEachLevel;
using testing_support::firstDifference;
using testing_support::kLevels;
using testing_support::levelName;
using Vector = std::vector<double>;

class ShapeLoopsAtEachLevel : public AtEachLevel {};

Vector spread(double low, double high, unsigned seed) {
  std::mt19937 engine(seed);
  std::uniform_real_distribution<double> uniform(low, high);
  Vector vector(kVectorLength);
  for (double& x : vector) x = uniform(engine);
  return vector;
}

/// Magnitudes of all orders, and the numbers where a function turns.
std::vector<Vector> arguments() {
  std::vector<Vector> all;
  for (double top : {1e-300, 1e-20, 1e-9, 1e-3, 0.1, 1.0, 3.0, 19.0, 30.0, 1e6}) {
    all.push_back(spread(-top, top, 7));
  }
  Vector special(kVectorLength, 0.0);
  const double values[] = {0.0,  -0.0, 0.5,  -0.5, 1.0,   -1.0,   19.06, 22.0,
                           -22., 40.0, 1e-5, 1e50, -1e50, 1e-310, 0.25,  0.75};
  std::copy(std::begin(values), std::end(values), special.begin());
  all.push_back(special);
  return all;
}

template <class Exact>
double largestRelativeError(const Vector& in, const Vector& out, Exact exact) {
  double worst = 0.0;
  for (size_t i = 0; i < in.size(); ++i) {
    const long double expected = exact(static_cast<long double>(in[i]));
    const long double error = std::fabs(static_cast<long double>(out[i]) - expected);
    if (error > 1e-320L) worst = std::max(worst, static_cast<double>(error / std::fabs(expected)));
  }
  return worst;
}

TEST_P(ShapeLoopsAtEachLevel, TanhStaysWithinItsBoundEverywhere) {
  for (const Vector& in : arguments()) {
    Vector out(in);
    shapeLoops().tanh(in.data(), out.data());
    EXPECT_LT(largestRelativeError(in, out, [](long double x) { return std::tanh(x); }), 4.5e-16)
        << "up to " << in[0];
  }
}

TEST_P(ShapeLoopsAtEachLevel, TanhEndsAtOneAndKeepsTheSignOfZero) {
  Vector in(kVectorLength, -0.0), out(kVectorLength);
  in[1] = 50.0;
  in[2] = -INFINITY;
  in[3] = std::numeric_limits<double>::quiet_NaN();
  shapeLoops().tanh(in.data(), out.data());
  EXPECT_TRUE(std::signbit(out[0]) && out[0] == 0.0);
  EXPECT_EQ(out[1], 1.0);
  EXPECT_EQ(out[2], -1.0);
  EXPECT_TRUE(std::isnan(out[3]));
}

TEST_P(ShapeLoopsAtEachLevel, SineAndCosineStayWithinTheirBound) {
  const long double pi = std::numbers::pi_v<long double>;
  for (double factor : {1.0, 1.5, 3.0, 5.0, 9.5}) {
    const Vector in = spread(-1.3, 1.3, 5);
    Vector sines(in), cosines(in);
    shapeLoops().sine(in.data(), factor, sines.data());
    shapeLoops().cosine(in.data(), factor, cosines.data());
    long double worst = 0.0;
    for (size_t i = 0; i < in.size(); ++i) {
      const long double held = std::clamp(in[i], -1.0, 1.0);
      // The product is rounded before the function, and the bound is that of the function.
      const auto turns = static_cast<long double>(factor * static_cast<double>(held));
      worst = std::max(worst, std::fabs(sines[i] - std::sin(pi * turns)));
      worst = std::max(worst, std::fabs(cosines[i] - std::cos(pi * turns)));
    }
    EXPECT_LT(static_cast<double>(worst), 4e-16) << factor;
  }
}

TEST_P(ShapeLoopsAtEachLevel, SineAndCosineAreExactAtQuarterTurns) {
  Vector in(kVectorLength, 0.0), out(kVectorLength);
  in[1] = 1.0;
  in[2] = 0.5;
  in[3] = -0.5;
  shapeLoops().sine(in.data(), 1.0, out.data());
  EXPECT_EQ(out[0], 0.0);
  EXPECT_EQ(out[1], 0.0);
  EXPECT_EQ(out[2], 1.0);
  EXPECT_EQ(out[3], -1.0);
  shapeLoops().cosine(in.data(), 1.0, out.data());
  EXPECT_EQ(out[0], 1.0);
  EXPECT_EQ(out[1], -1.0);
  EXPECT_EQ(out[2], 0.0);
}

/// The mean slope of the soft clip's integral between two samples far apart.
TEST_P(ShapeLoopsAtEachLevel, SoftClipTakesTheSlopeOfItsIntegral) {
  for (double gain : {1.0, 4.0, 50.0}) {
    const Vector in = spread(-1.0, 1.0, 11);
    const Vector gains(kVectorLength, gain), ones(kVectorLength, 1.0);
    Vector out(in);
    CurveMemory memory;
    shapeLoops().softClip({in.data(), gains.data(), ones.data()}, memory, false, out.data());
    const long double g = gain;
    auto integral = [g](long double x) {
      const long double A = std::fabs(x) * g;
      return (A - std::log1p(A)) * (g + 1.0L) / (g * g);
    };
    long double worst = 0.0;
    for (size_t i = 1; i < in.size(); ++i) {
      const long double d = static_cast<long double>(in[i]) - in[i - 1];
      if (std::fabs(d) < 0.0101L) continue;
      worst = std::max(worst, std::fabs(out[i] - (integral(in[i]) - integral(in[i - 1])) / d));
    }
    // The difference of two integrals of about 1, over 0.01 at least.
    EXPECT_LT(static_cast<double>(worst), 5e-14) << gain;
  }
}

/// All loops after each other over vectors that join, as one long list of numbers.
Vector everyLoop() {
  const ShapeLoops& loops = shapeLoops();
  CurveMemory saturated, clipped;
  Vector all;
  for (const Vector& in : arguments()) {
    const Vector gain = spread(1.0, 50.0, 2), trim = spread(0.2, 1.0, 3);
    const Vector threshold = spread(-0.5, -0.16, 4), high(kVectorLength, 1.25);
    Vector out(kVectorLength);
    auto keep = [&] { all.insert(all.end(), out.begin(), out.end()); };
    loops.tanh(in.data(), out.data()), keep();
    loops.sine(in.data(), 5.0, out.data()), keep();
    loops.cosine(in.data(), 9.5, out.data()), keep();
    const CurveInput curve{in.data(), gain.data(), trim.data(), threshold.data()};
    loops.saturate(curve, saturated, out.data()), keep();
    loops.softClip(curve, clipped, true, out.data()), keep();
    loops.fold(curve, out.data()), keep();
    loops.fold({in.data(), gain.data(), nullptr, high.data()}, out.data()), keep();
    loops.tube(curve, out.data()), keep();
  }
  return all;
}

TEST_P(ShapeLoopsAtEachLevel, EveryLevelGivesTheSameBits) {
  const Vector here = everyLoop();
  ASSERT_TRUE(kernels::forceLevel(kernels::Level::kScalar));
  EXPECT_EQ(firstDifference(here, everyLoop()), -1);
}

TEST_P(ShapeLoopsAtEachLevel, TheOutputMayBeTheInput) {
  const Vector gain(kVectorLength, 3.0), trim(kVectorLength, 0.5), low(kVectorLength, -0.4);
  const Vector in = spread(-1.0, 1.0, 9);
  using Loop = void (*)(const CurveInput&, double*);
  const Loop each[] = {[](const CurveInput& c, double* dst) { shapeLoops().tanh(c.signal, dst); },
                       [](const CurveInput& c, double* dst) { shapeLoops().fold(c, dst); },
                       [](const CurveInput& c, double* dst) { shapeLoops().tube(c, dst); },
                       [](const CurveInput& c, double* dst) {
                         CurveMemory memory;
                         shapeLoops().saturate(c, memory, dst);
                       },
                       [](const CurveInput& c, double* dst) {
                         CurveMemory memory;
                         shapeLoops().softClip(c, memory, true, dst);
                       }};
  for (const Loop loop : each) {
    Vector apart(kVectorLength), same(in);
    loop({in.data(), gain.data(), trim.data(), low.data()}, apart.data());
    loop({same.data(), gain.data(), trim.data(), low.data()}, same.data());
    EXPECT_TRUE(apart == same);
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, ShapeLoopsAtEachLevel, ::testing::ValuesIn(kLevels), levelName);

}  // namespace
}  // namespace orvantesco
