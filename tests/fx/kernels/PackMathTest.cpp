#include "fx/kernels/PackMath.h"

#include <gtest/gtest.h>

#include <random>

#include "fx/kernels/PackScalar.h"

namespace orvantesco::kernels {
namespace {

using Pack = scalar::Pack<double, 4>;

template <class Function>
double at(double x, Function function) {
  return function(Pack::all(x)).first();
}

TEST(PackMath, theLogarithmStaysWithinItsBound) {
  std::mt19937 engine(3);
  std::uniform_real_distribution<double> exponent(-300.0, 300.0), near(0.5, 2.0);
  long double worst = 0.0;
  for (int i = 0; i < 20000; ++i) {
    const double x = i % 2 == 0 ? std::pow(10.0, exponent(engine)) : near(engine);
    const long double exact = std::log(static_cast<long double>(x));
    const double found = at(x, [](Pack p) { return logarithm(p); });
    worst = std::max(worst, std::fabs(found - exact) / std::max(1.0L, std::fabs(exact)));
  }
  EXPECT_LT(static_cast<double>(worst), 3e-16);
  EXPECT_EQ(at(1.0, [](Pack p) { return logarithm(p); }), 0.0);
}

TEST(PackMath, theExponentialStaysWithinItsBound) {
  std::mt19937 engine(4);
  std::uniform_real_distribution<double> magnitude(-12.0, std::log10(700.0));
  long double worst = 0.0;
  for (int i = 0; i < 20000; ++i) {
    const double x = std::pow(10.0, magnitude(engine));
    const long double exact = std::expm1(static_cast<long double>(x));
    const double found = at(x, [](Pack p) { return expMinusOne(p); });
    worst = std::max(worst, std::fabs(found / exact - 1.0L));
  }
  EXPECT_LT(static_cast<double>(worst), 4e-16);
  EXPECT_EQ(at(0.0, [](Pack p) { return expMinusOne(p); }), 0.0);
}

}  // namespace
}  // namespace orvantesco::kernels
