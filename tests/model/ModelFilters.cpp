#include "model/ModelFilters.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace orvantesco::model {

void Section::setTaps(const std::array<double, 6>& taps) {
  b0 = taps[0] / taps[3];
  b1 = taps[1] / taps[3];
  b2 = taps[2] / taps[3];
  a1 = taps[4] / taps[3];
  a2 = taps[5] / taps[3];
}

double Section::tick(double x) {
  const double y = b0 * x + s1;
  s1 = b1 * x - a1 * y + s2;
  s2 = b2 * x - a2 * y;
  return y;
}

ButterworthLowpass::ButterworthLowpass(int order, double corner) {
  using Complex = std::complex<long double>;
  const long double pi = std::numbers::pi_v<long double>;
  const long double radius = std::tan(pi * static_cast<long double>(corner));
  for (int k = 0; k < order / 2; ++k) {
    const long double angle = pi * static_cast<long double>(2 * k + 1 + order) / (2.0L * order);
    const Complex analog = std::polar(radius, angle);
    const Complex pole = (1.0L + analog) / (1.0L - analog);
    const long double a1 = -2.0L * pole.real();
    const long double a2 = std::norm(pole);
    const long double b = (1.0L + a1 + a2) / 4.0L;  // both zeros at half the rate, gain 1 at 0 Hz
    Section section;
    section.setTaps({static_cast<double>(b), static_cast<double>(2.0L * b), static_cast<double>(b),
                     1.0, static_cast<double>(a1), static_cast<double>(a2)});
    sections.push_back(section);
  }
}

double ButterworthLowpass::tick(double x) {
  for (Section& section : sections) x = section.tick(x);
  return x;
}

EchoFilter::EchoFilter(Kind which, double sampleRate) : kind(which) {
  glide.setTime(1.0, sampleRate);
}

void EchoFilter::setCorner(double fraction) { target = std::clamp(fraction, 0.0002, 0.5); }

void EchoFilter::reset() {
  for (Section& section : sections) section.clear();
  dirty = true;
}

void EchoFilter::process(Block& samples) {
  calls = (calls + 1) % 2;
  if (calls == 0 || dirty) design(glide.tick(target));
  dirty = false;
  for (double& x : samples)
    for (Section& section : sections) x = section.tick(x);
}

void EchoFilter::design(double fraction) {
  // Above this share of the rate the sections would turn unstable.
  const double corner = std::clamp(fraction, 0.0002, 20000.0 / 44100.0);
  const auto omega = static_cast<float>(2.0 * std::numbers::pi * corner);
  const double alpha = static_cast<float>(static_cast<double>(std::sin(omega)) / 1.45);
  const double c = std::cos(omega);
  const double b = kind == Kind::lowpass ? (1.0 - c) / 2.0 : (1.0 + c) / 2.0;
  const double b1 = kind == Kind::lowpass ? 1.0 - c : -(1.0 + c);
  for (Section& section : sections) section.setTaps({b, b1, b, 1.0 + alpha, -2.0 * c, 1.0 - alpha});
}

}  // namespace orvantesco::model
