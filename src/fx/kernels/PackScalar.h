#pragma once

#include <cmath>

// The lanes of a pack as plain numbers: the reference that every other level must agree with, and
// the level of machines without vectors. See PackSse2.h and PackAvx2.h for the others.

namespace orvantesco::kernels::scalar {

/// N numbers of type T that are worked on together. A mask holds 1 or 0 in each lane.
template <class T, int N>
struct Pack {
  using Value = T;
  static constexpr int kLanes = N;
  T lane[N];

  template <class F>
  [[gnu::always_inline]] static Pack make(F element) noexcept {
    Pack result;  // NOLINT(cppcoreguidelines-pro-type-member-init): the loop fills it
    for (int i = 0; i < N; ++i) result.lane[i] = element(i);
    return result;
  }
  static Pack load(const T* p) noexcept {
    return make([=](int i) { return p[i]; });
  }
  static Pack loadPart(const T* p, int count) noexcept {
    return make([=](int i) { return i < count ? p[i] : T(0); });
  }
  static Pack all(T x) noexcept {
    return make([=](int) { return x; });
  }
  void store(T* p) const noexcept {
    for (int i = 0; i < N; ++i) p[i] = lane[i];
  }
  T first() const noexcept { return lane[0]; }

  friend Pack operator+(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] + b.lane[i]; });
  }
  friend Pack operator-(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] - b.lane[i]; });
  }
  friend Pack operator*(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] * b.lane[i]; });
  }
  friend Pack operator/(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] / b.lane[i]; });
  }

  static Pack larger(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] > b.lane[i] ? a.lane[i] : b.lane[i]; });
  }
  static Pack smaller(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] < b.lane[i] ? a.lane[i] : b.lane[i]; });
  }
  static Pack absolute(Pack a) noexcept {
    return make([&](int i) { return std::fabs(a.lane[i]); });
  }
  static Pack squareRoot(Pack a) noexcept {
    return make([&](int i) { return std::sqrt(a.lane[i]); });
  }
  static Pack below(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] < b.lane[i] ? T(1) : T(0); });
  }
  static Pack atMost(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] <= b.lane[i] ? T(1) : T(0); });
  }
  static Pack equal(Pack a, Pack b) noexcept {
    return make([&](int i) { return a.lane[i] == b.lane[i] ? T(1) : T(0); });
  }
  static Pack either(Pack m, Pack k) noexcept { return larger(m, k); }
  static Pack both(Pack m, Pack k) noexcept { return smaller(m, k); }
  static Pack select(Pack mask, Pack a, Pack b) noexcept {
    return make([&](int i) { return mask.lane[i] != T(0) ? a.lane[i] : b.lane[i]; });
  }
  static bool any(Pack mask) noexcept {
    bool found = false;
    for (int i = 0; i < N; ++i) found = found || mask.lane[i] != T(0);
    return found;
  }
  static bool every(Pack mask) noexcept {
    bool whole = true;
    for (int i = 0; i < N; ++i) whole = whole && mask.lane[i] != T(0);
    return whole;
  }

  /// The sum of the lanes: halves onto each other until one is left.
  static T sum(Pack a) noexcept {
    for (int half = N / 2; half > 0; half /= 2) {
      for (int i = 0; i < half; ++i) a.lane[i] = a.lane[i] + a.lane[i + half];
    }
    return a.lane[0];
  }
  static T largest(Pack a) noexcept {
    for (int i = 1; i < N; ++i) a.lane[0] = a.lane[i] > a.lane[0] ? a.lane[i] : a.lane[0];
    return a.lane[0];
  }
};

}  // namespace orvantesco::kernels::scalar
