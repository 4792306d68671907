#include <cmath>
#include <numbers>

#include "fx/kernels/Iir.h"

namespace orvantesco {

namespace {

using Real = long double;

constexpr int kWorkBytes = 16800;
constexpr Real kPi = std::numbers::pi_v<Real>;
constexpr double kMaxRippleDb = 29.0;

enum class Band { kLowpass, kHighpass };

/// The corner through the bilinear transform: K = tan(pi f), and K^2 - 1 without cancellation,
/// which is -cos(2 pi f) / cos^2(pi f). What the angles lack to the nearest axis is exact.
struct Corner {
  explicit Corner(double freq) noexcept {
    const Real f = freq;
    k = freq < 0.25 ? std::tan(kPi * f) : 1.0L / std::tan(kPi * (0.5L - f));
    squareMinusOne = std::sin(2.0L * kPi * (f - 0.25L)) * (1.0L + k * k);
  }
  Real k = 0.0L;
  Real squareMinusOne = 0.0L;
};

/// The analogue prototype with its edge at 1 rad/s: poles at -sinhMu sin(t) +- j coshMu cos(t).
/// Butterworth is the circle of radius 1.
struct Prototype {
  Prototype(int type, double rippleDb, int order) noexcept {
    if (type == kButterworth) return;
    chebyshev = true;
    const Real nepers = static_cast<Real>(rippleDb) * std::numbers::ln10_v<Real> / 10.0L;
    const Real mu = std::asinh(1.0L / std::sqrt(std::expm1(nepers))) / order;
    sinhMu = std::sinh(mu);
    if (order % 2 == 0) passbandGain = std::exp(-0.5L * nepers);
  }
  bool chebyshev = false;
  Real sinhMu = 1.0L;
  Real passbandGain = 1.0L;
};

/// Multiplies the polynomial of the given degree by 1 + p1 z^-1 + p2 z^-2, in place.
void multiply(Real* polynomial, int degree, Real p1, Real p2) noexcept {
  for (int k = degree + 2; k >= 0; --k) {
    Real sum = polynomial[k];
    if (k >= 1) sum += p1 * polynomial[k - 1];
    if (k >= 2) sum += p2 * polynomial[k - 2];
    polynomial[k] = sum;
  }
}

/// One design in the making: the denominator's polynomial and the gain of the numerator, whose
/// zeros all stand at z = -1 (low-pass) or z = 1 (high-pass).
class Design {
 public:
  Design(Band bandOfDesign, const Corner& designCorner, const Prototype& designPrototype) noexcept
      : band(bandOfDesign), corner(designCorner), prototype(designPrototype) {}

  void run(int order) noexcept {
    gain = prototype.passbandGain;
    for (int i = 0; i < order / 2; ++i) addPolePair(kPi * (2 * i + 1) / (2 * order));
    if (order % 2 == 1) addRealPole();
  }

  void write(int order, double* taps) const noexcept {
    Real binomial = 1.0L;
    for (int k = 0; k <= order; ++k) {
      const bool negative = band == Band::kHighpass && k % 2 == 1;
      taps[k] = static_cast<double>(negative ? -gain * binomial : gain * binomial);
      taps[order + 1 + k] = static_cast<double>(denominator[k]);
      binomial = binomial * (order - k) / (k + 1);
    }
  }

 private:
  /// (p^2 + 2 sigma p + rho), p = K (1 + z^-1) / (1 - z^-1) or its reciprocal, cleared of
  /// fractions: (u + 2 sigma K + v) + 2 (v - u) z^-1 + (u - 2 sigma K + v) z^-2.
  void addPolePair(Real angle) noexcept {
    const Real sine = std::sin(angle);
    const Real cosine = std::cos(angle);
    const Real sinhSquare = prototype.sinhMu * prototype.sinhMu;
    const Real rho = prototype.chebyshev ? sinhSquare + cosine * cosine : 1.0L;
    const Real rhoMinusOne = prototype.chebyshev ? sinhSquare - sine * sine : 0.0L;
    const Real damping = 2.0L * prototype.sinhMu * sine * corner.k;
    const Real square = corner.k * corner.k;
    const bool low = band == Band::kLowpass;
    const Real sum = low ? 1.0L + rho * square : rho + square;
    const Real difference =
        low ? rho * corner.squareMinusOne + rhoMinusOne : corner.squareMinusOne - rhoMinusOne;
    const Real lead = sum + damping;
    gain *= (low ? rho * square : rho) / lead;
    append(2.0L * difference / lead, (sum - damping) / lead);
  }

  /// The odd order's pole at -sinhMu.
  void addRealPole() noexcept {
    const Real sigma = prototype.sinhMu;
    const bool low = band == Band::kLowpass;
    const Real lead = low ? 1.0L + sigma * corner.k : sigma + corner.k;
    const Real kMinusOne = corner.squareMinusOne / (corner.k + 1.0L);
    const Real difference = low ? sigma * kMinusOne + (sigma - 1.0L) : kMinusOne - (sigma - 1.0L);
    gain *= (low ? sigma * corner.k : sigma) / lead;
    append(difference / lead, 0.0L);
  }

  void append(Real p1, Real p2) noexcept {
    multiply(denominator, degree, p1, p2);
    degree += 2;
  }

  Band band;
  const Corner& corner;
  const Prototype& prototype;
  Real denominator[kIirMaxOrder + 1] = {1.0L};
  int degree = 0;
  Real gain = 1.0L;
};

struct Request {
  double freq = 0.0;
  double rippleDb = 0.0;
  int order = 0;
  int type = kButterworth;
};

int check(const Request& request) noexcept {
  if (!(request.freq > 0.0 && request.freq < 0.5)) return kErrorDesignCorner;
  if (request.order < 1 || request.order > kIirMaxOrder) return kErrorDesignOrder;
  if (request.type == kButterworth) return kStatusOk;
  if (request.type != kChebyshev1) return kErrorDesignType;
  const bool rippleFits = request.rippleDb > 0.0 && request.rippleDb <= kMaxRippleDb;
  return rippleFits ? kStatusOk : kErrorDesignRipple;
}

int designInto(double* taps, const void* buffer, Band band, const Request& request) noexcept {
  if (taps == nullptr || buffer == nullptr) return kErrorNull;
  if (const int error = check(request)) return error;
  const Corner corner(request.freq);
  const Prototype prototype(request.type, request.rippleDb, request.order);
  Design design(band, corner, prototype);
  design.run(request.order);
  design.write(request.order, taps);
  return kStatusOk;
}

}  // namespace

int iirDesignBufferSize(int order, int* size) noexcept {
  if (size == nullptr) return kErrorNull;
  if (order < 1 || order > kIirMaxOrder) return kErrorDesignOrder;
  *size = kWorkBytes;
  return kStatusOk;
}

int iirDesignLowpass(double freq, double ripple, int order, double* taps, int type,
                     void* buffer) noexcept {
  return designInto(taps, buffer, Band::kLowpass, {freq, ripple, order, type});
}

int iirDesignHighpass(double freq, double ripple, int order, double* taps, int type,
                      void* buffer) noexcept {
  return designInto(taps, buffer, Band::kHighpass, {freq, ripple, order, type});
}

}  // namespace orvantesco
