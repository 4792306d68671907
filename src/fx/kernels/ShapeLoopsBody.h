#pragma once

#include "fx/kernels/PackLoop.h"
#include "fx/kernels/PackMath.h"
#include "fx/kernels/ShapeLoops.h"

namespace orvantesco::kernels {

/// The loops of ShapeLoops.h over packs P of four doubles.
template <class P>
struct ShapeLoopsBody {
  static void tanh(const double* src, double* dst) noexcept {
    each([=](int i) { hyperbolicTangent(P::load(src + i)).store(dst + i); });
  }
  static void sine(const double* src, double factor, double* dst) noexcept {
    each([=](int i) {
      sineOfTurns(P::all(factor) * heldWithin(P::load(src + i), -1.0, 1.0)).store(dst + i);
    });
  }
  static void cosine(const double* src, double factor, double* dst) noexcept {
    each([=](int i) {
      cosineOfTurns(P::all(factor) * heldWithin(P::load(src + i), -1.0, 1.0)).store(dst + i);
    });
  }

  static void saturate(const CurveInput& in, CurveMemory& memory, double* dst) noexcept {
    Delayed x(memory.x);
    Delayed t(memory.t);
    each([&](int i) {
      const P driven = P::load(in.signal + i) * P::load(in.gain + i);
      x.put(i, driven);
      t.put(i, P::squareRoot(driven * driven + P::all(1.0)));
    });
    each([&](int i) {
      const P slope = (x.now(i) + x.before(i)) / (t.before(i) + t.now(i));
      (slope * P::load(in.trim + i)).store(dst + i);
    });
    memory = {x.last(), t.last()};
  }

  static void softClip(const CurveInput& in, CurveMemory& memory, bool isHeld,
                       double* dst) noexcept {
    Delayed x(memory.x);
    Delayed t(memory.t);
    each([&](int i) {
      const P signal = P::load(in.signal + i);
      x.put(i, signal);
      t.put(i, integralOfSoftClip(P::absolute(signal), P::load(in.gain + i)));
    });
    const P end = P::all(isHeld ? 1.0 : kUnheld);
    each([&](int i) {
      const P slope = slopeOfSoftClip(x, t, P::load(in.gain + i), i) * P::load(in.trim + i);
      P::larger(P::all(0.0) - end, P::smaller(end, slope)).store(dst + i);
    });
    memory = {x.last(), t.last()};
  }

  static void fold(const CurveInput& in, double* dst) noexcept {
    const P first = P::all(in.threshold[0]);
    each([=](int i) {
      const P x = P::load(in.signal + i) * P::load(in.gain + i);
      const P t = P::load(in.threshold + i);
      const P depth = P::absolute(t);
      const P sawtooth = fractionOf((x - t) * t) * (P::all(4.0) * depth);
      const P triangle = P::absolute(sawtooth - (depth + depth)) - depth;
      const P folded = x + (triangle - x);
      P::select(P::atMost(first, P::absolute(x)), folded, x).store(dst + i);
    });
  }

  static void tube(const CurveInput& in, double* dst) noexcept {
    each([=](int i) {
      const P t = hyperbolicTangent(P::load(in.signal + i));
      const P c = heldWithin(t * P::load(in.gain + i), -0.66438299, 1.0257316);
      const P bent = t * (P::all(0.38944033) * c - P::all(0.21108556)) - P::all(0.79618573);
      (P::all(-1.6185656) * t * bent).store(dst + i);
    });
  }

 private:
  static constexpr double kUnheld = 1e300;
  static constexpr double kNearby = 0.01;

  /// A vector and the sample before it.
  class Delayed {
   public:
    explicit Delayed(double before) noexcept { values[kFirst - 1] = before; }
    void put(int i, P pack) noexcept { pack.store(values + kFirst + i); }
    P now(int i) const noexcept { return P::load(values + kFirst + i); }
    P before(int i) const noexcept { return P::load(values + kFirst + i - 1); }
    double last() const noexcept { return values[kFirst + kVectorLength - 1]; }

   private:
    static constexpr int kFirst = P::kLanes;  // keeps the packs aligned
    alignas(
        32) double values[kFirst + kVectorLength];  // NOLINT: every value is put before it is read
  };

  template <class Step>
  [[gnu::always_inline]] static void each(Step step) noexcept {
    for (int i = 0; i < kVectorLength; i += P::kLanes) step(i);
  }

  [[gnu::always_inline]] static P heldWithin(P x, double low, double high) noexcept {
    return P::larger(P::all(low), P::smaller(P::all(high), x));
  }

  [[gnu::always_inline]] static P integralOfSoftClip(P magnitude, P gain) noexcept {
    const P a = magnitude * gain;
    const P scale = (gain + P::all(1.0)) / (gain * gain);
    return (a - logarithm(P::all(1.0) + a)) * scale;
  }

  [[gnu::always_inline]] static P slopeOfSoftClip(const Delayed& x, const Delayed& t, P gain,
                                                  int i) noexcept {
    const P step = x.now(i) - x.before(i);
    const P mean = (x.now(i) + x.before(i)) * P::all(0.5);
    const auto isFar = P::below(P::all(kNearby), P::absolute(step));
    const P rise = P::select(isFar, t.now(i) - t.before(i), mean * (gain + P::all(1.0)));
    const P run = P::select(isFar, step, P::absolute(mean) * gain + P::all(1.0));
    return rise / run;
  }

  /// |x| without its whole part. Beyond 2^51 no double worth the name has a fraction.
  [[gnu::always_inline]] static P fractionOf(P x) noexcept {
    const P magnitude = P::absolute(x);
    const P nearest = (magnitude + P::all(kRoundingShift)) - P::all(kRoundingShift);
    const P whole = P::select(P::below(magnitude, nearest), nearest - P::all(1.0), nearest);
    const auto isSmall = P::below(magnitude, P::all(2251799813685248.0));
    return magnitude - P::select(isSmall, whole, magnitude);
  }
};

template <class P>
constexpr ShapeLoops makeShapeLoops() noexcept {
  using Body = ShapeLoopsBody<P>;
  return {Body::tanh,     Body::sine, Body::cosine, Body::saturate,
          Body::softClip, Body::fold, Body::tube};
}

}  // namespace orvantesco::kernels
