#include <array>
#include <complex>
#include <numbers>

#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco {
namespace {

using Real = long double;
using Complex = std::complex<Real>;
constexpr Real kPi = std::numbers::pi_v<Real>;

struct Spec {
  double freq = 0.1;
  double rippleDb = 0.0;
  int order = 1;
  int type = kButterworth;
  bool isLowpass = true;
};

std::ostream& operator<<(std::ostream& out, const Spec& spec) {
  return out << (spec.isLowpass ? "low" : "high") << "-pass, type " << spec.type << ", order "
             << spec.order << ", corner " << spec.freq << ", ripple " << spec.rippleDb;
}

using Taps = std::vector<double>;

Taps designed(const Spec& spec) {
  Taps taps(static_cast<size_t>(2 * (spec.order + 1)), -99.0);
  double work[1] = {};
  const auto design = spec.isLowpass ? iirDesignLowpass : iirDesignHighpass;
  EXPECT_EQ(design(spec.freq, spec.rippleDb, spec.order, taps.data(), spec.type, work), 0) << spec;
  return taps;
}

/// Another road to the same filter: poles as complex numbers, moved one by one to the z plane, the
/// denominator multiplied out from its roots and the gain set to 1 at the pass band's end.
class ComplexDesign {
 public:
  explicit ComplexDesign(const Spec& spec) : zero(spec.isLowpass ? -1.0L : 1.0L) {
    // From the end of the band that lies nearer, or the angle's rounding would be magnified.
    const Real toHalf = kPi * (0.5L - static_cast<Real>(spec.freq));
    const Real warped =
        spec.freq < 0.25 ? std::tan(kPi * spec.freq) : std::cos(toHalf) / std::sin(toHalf);
    Complex gain = 1.0L;
    for (int k = 0; k < spec.order; ++k) {
      const Complex analogue = prototypePole(spec, k);
      const Complex placed = spec.isLowpass ? analogue * warped : warped / analogue;
      const Complex pole = (1.0L + placed) / (1.0L - placed);
      // 1 - pole at 0 Hz and 1 + pole at half the rate, without the difference of near numbers.
      const Complex distance = spec.isLowpass ? -2.0L * placed : Complex(2.0L);
      gain *= distance / (1.0L - placed) / 2.0L;
      append(denominator, pole);
      append(numerator, Complex(zero));
    }
    scale = gain.real();
    if (spec.type == kChebyshev1 && spec.order % 2 == 0) {
      scale *= std::pow(10.0L, -static_cast<Real>(spec.rippleDb) / 20.0L);
    }
  }

  Real b(size_t k) const { return numerator[k].real() * scale; }
  Real a(size_t k) const { return denominator[k].real(); }

 private:
  static Complex prototypePole(const Spec& spec, int k) {
    const Real angle = kPi * (2 * k + 1) / (2 * spec.order);
    if (spec.type == kButterworth) return Complex(-std::sin(angle), std::cos(angle));
    const Real epsilon =
        std::sqrt(std::pow(10.0L, static_cast<Real>(spec.rippleDb) / 10.0L) - 1.0L);
    const Real mu = std::asinh(1.0L / epsilon) / spec.order;
    return Complex(-std::sinh(mu) * std::sin(angle), std::cosh(mu) * std::cos(angle));
  }
  static void append(std::vector<Complex>& polynomial, Complex root) {
    polynomial.push_back(0.0L);
    for (size_t k = polynomial.size() - 1; k > 0; --k) polynomial[k] -= root * polynomial[k - 1];
  }

  Real zero;
  Real scale = 1.0L;
  std::vector<Complex> numerator{1.0L};
  std::vector<Complex> denominator{1.0L};
};

Real ulpsApart(double got, Real expected) {
  const double rounded = static_cast<double>(expected);
  const double ulp = std::nextafter(std::fabs(rounded), INFINITY) - std::fabs(rounded);
  return std::fabs(static_cast<Real>(got) - expected) / static_cast<Real>(ulp);
}

double gainDb(const Taps& taps, double freq) {
  const size_t terms = taps.size() / 2;
  Complex b = 0.0L, a = 0.0L;
  for (size_t k = 0; k < terms; ++k) {
    const Complex turn = std::polar(1.0L, -2.0L * kPi * static_cast<Real>(freq) * k);
    b += static_cast<Real>(taps[k]) * turn;
    a += static_cast<Real>(taps[terms + k]) * turn;
  }
  return static_cast<double>(20.0L * std::log10(std::abs(b / a)));
}

std::vector<Spec> allKinds(double freq, double rippleDb) {
  std::vector<Spec> specs;
  for (int order = 1; order <= kIirMaxOrder; ++order) {
    for (const bool low : {true, false}) {
      specs.push_back({freq, 0.0, order, kButterworth, low});
      specs.push_back({freq, rippleDb, order, kChebyshev1, low});
    }
  }
  return specs;
}

TEST(IirDesign, TapsAreWithinFourUlpOfALongDoubleDesign) {
  Real worst = 0.0L;
  for (const double freq :
       {0.0002, 0.001, 0.0137, 0.1, 0.2085, 0.313, 15000.0 / 44100.0, 0.45, 0.49, 0.4999}) {
    for (const double rippleDb : {0.01, 0.5, 3.0, 29.0}) {
      for (const Spec& spec : allKinds(freq, rippleDb)) {
        const Taps taps = designed(spec);
        const ComplexDesign expected(spec);
        const size_t terms = taps.size() / 2;
        Real apart = 0.0L;
        for (size_t k = 0; k < terms; ++k) {
          apart = std::max(apart, ulpsApart(taps[k], expected.b(k)));
          apart = std::max(apart, ulpsApart(taps[terms + k], expected.a(k)));
        }
        EXPECT_LE(apart, 4.0L) << spec;
        worst = std::max(worst, apart);
      }
    }
  }
  RecordProperty("worstUlp", std::to_string(static_cast<double>(worst)));
}

TEST(IirDesign, ATapThatIsZeroInTheoryIsZero) {
  // At a quarter of the rate the poles of a Butterworth filter lie on the imaginary axis.
  for (int order = 1; order <= kIirMaxOrder; ++order) {
    for (const bool low : {true, false}) {
      const Taps taps = designed({0.25, 0.0, order, kButterworth, low});
      for (int k = 1; k <= order; k += 2) {
        EXPECT_EQ(taps[static_cast<size_t>(order + 1 + k)], 0.0) << order << " tap " << k;
      }
    }
  }
}

TEST(IirDesign, ButterworthIsThreeDbDownAtItsCorner) {
  for (const double freq : {0.05, 0.2, 15000.0 / 44100.0, 0.45}) {
    for (const Spec& spec : allKinds(freq, 1.0)) {
      if (spec.type != kButterworth) continue;
      const Taps taps = designed(spec);
      EXPECT_NEAR(gainDb(taps, freq), -10.0 * std::log10(2.0), 1e-6) << spec;
      EXPECT_NEAR(gainDb(taps, spec.isLowpass ? 0.0 : 0.5), 0.0, 1e-6) << spec;
    }
  }
}

// High orders at low corners are left out: there the rounding of the taps to double alone moves
// the response by more than what is asked for here.
TEST(IirDesign, ChebyshevLeavesItsRippleAtTheCorner) {
  for (const double freq : {0.15, 0.2, 0.4}) {
    for (const double rippleDb : {0.1, 0.5, 6.0}) {
      for (const Spec& spec : allKinds(freq, rippleDb)) {
        if (spec.type != kChebyshev1) continue;
        const Taps taps = designed(spec);
        const double atEnd = spec.order % 2 == 0 ? -rippleDb : 0.0;
        EXPECT_NEAR(gainDb(taps, freq), -rippleDb, 1e-6) << spec;
        EXPECT_NEAR(gainDb(taps, spec.isLowpass ? 0.0 : 0.5), atEnd, 1e-6) << spec;
      }
    }
  }
}

TEST(IirDesign, ChebyshevPassBandTouchesBothEdgesOfItsRipple) {
  const double freq = 0.2, rippleDb = 1.0;
  for (const Spec& spec : allKinds(freq, rippleDb)) {
    if (spec.type != kChebyshev1 || spec.order < 2) continue;
    const Taps taps = designed(spec);
    double lowest = 0.0, highest = -100.0;
    for (int i = 0; i <= 2000; ++i) {
      const double inBand = spec.isLowpass ? freq * i / 2000.0 : 0.5 - (0.5 - freq) * i / 2000.0;
      lowest = std::min(lowest, gainDb(taps, inBand));
      highest = std::max(highest, gainDb(taps, inBand));
    }
    EXPECT_NEAR(lowest, -rippleDb, 1e-4) << spec;
    EXPECT_NEAR(highest, 0.0, 1e-4) << spec;
  }
}

TEST(IirDesign, FallsBySixDbAnOctaveForEachOrder) {
  for (int order = 1; order <= 4; ++order) {
    const Taps low = designed({0.001, 0.0, order, kButterworth, true});
    const Taps high = designed({0.1, 0.0, order, kButterworth, false});
    EXPECT_NEAR(gainDb(low, 0.01) - gainDb(low, 0.02), 6.02 * order, 0.06 * order);
    EXPECT_NEAR(gainDb(high, 0.002) - gainDb(high, 0.001), 6.02 * order, 0.06 * order);
  }
}

TEST(IirDesign, RangesAreTestedAndABadValueLeavesTheTaps) {
  double work[1] = {};
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Bad {
    double freq, ripple;
    int order, type;
  };
  const Bad bad[] = {{0.0, 0, 4, 0},  {0.5, 0, 4, 0},   {-0.1, 0, 4, 0}, {nan, 0, 4, 0},
                     {0.1, 0, 0, 0},  {0.1, 0, 13, 0},  {0.1, 0, -1, 0}, {0.1, 0, 4, 2},
                     {0.1, 0, 4, -1}, {0.1, 0.0, 4, 1}, {0.1, -1, 4, 1}, {0.1, 29.01, 4, 1},
                     {0.1, nan, 4, 1}};
  for (const Bad& b : bad) {
    Taps taps(26, 5.0);
    EXPECT_LT(iirDesignLowpass(b.freq, b.ripple, b.order, taps.data(), b.type, work), 0);
    EXPECT_LT(iirDesignHighpass(b.freq, b.ripple, b.order, taps.data(), b.type, work), 0);
    EXPECT_EQ(taps, Taps(26, 5.0)) << b.freq << " " << b.ripple << " " << b.order << " " << b.type;
  }
}

TEST(IirDesign, ButterworthIgnoresTheRippleAndTheLargestRippleIsAllowed) {
  double work[1] = {}, plain[26] = {}, odd[26] = {};
  EXPECT_EQ(iirDesignLowpass(0.1, 0.0, 12, plain, kButterworth, work), 0);
  EXPECT_EQ(iirDesignLowpass(0.1, -7.0, 12, odd, kButterworth, work), 0);
  EXPECT_EQ(Taps(plain, plain + 26), Taps(odd, odd + 26));
  EXPECT_EQ(iirDesignLowpass(0.1, 29.0, 12, odd, kChebyshev1, work), 0);
}

TEST(IirDesign, NullIsRefused) {
  double work[1] = {}, taps[26] = {};
  EXPECT_EQ(iirDesignLowpass(0.1, 0.0, 4, nullptr, 0, work), -8);
  EXPECT_EQ(iirDesignLowpass(0.1, 0.0, 4, taps, 0, nullptr), -8);
  EXPECT_EQ(iirDesignHighpass(0.1, 0.0, 4, nullptr, 0, work), -8);
  EXPECT_EQ(iirDesignHighpass(0.1, 0.0, 4, taps, 0, nullptr), -8);
}

TEST(IirDesign, WritesOnlyTheTapsOfItsOrder) {
  double work[1] = {};
  for (int order = 1; order <= kIirMaxOrder; ++order) {
    testing_support::Guarded<double> taps(Taps(static_cast<size_t>(2 * (order + 1)), 1.0), 0);
    EXPECT_EQ(iirDesignLowpass(0.1, 0.0, order, taps.data(), kButterworth, work), 0);
    EXPECT_TRUE(taps.guardsStand()) << order;
    EXPECT_EQ(taps.values()[static_cast<size_t>(order + 1)], 1.0) << order;
  }
}

}  // namespace
}  // namespace orvantesco
