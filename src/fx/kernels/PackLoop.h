#pragma once

#include <utility>

// How a loop over a vector is cut into packs of lanes. Everything is a template of a level's pack,
// so that no two levels ever share a symbol: code built for AVX2 must not be linked into the
// baseline.

namespace orvantesco::kernels {

/// A pack of one lane, for the elements behind the last whole pack.
template <class P>
struct One {
  using Value = typename P::Value;
  static constexpr int kLanes = 1;
  Value x;

  static One load(const Value* p) noexcept { return {*p}; }
  void store(Value* p) const noexcept { *p = x; }
  static One all(Value value) noexcept { return {value}; }
  friend One operator+(One a, One b) noexcept { return {a.x + b.x}; }
  friend One operator-(One a, One b) noexcept { return {a.x - b.x}; }
  friend One operator*(One a, One b) noexcept { return {a.x * b.x}; }
  friend One operator/(One a, One b) noexcept { return {a.x / b.x}; }
  static One larger(One a, One b) noexcept { return a.x > b.x ? a : b; }
  static One smaller(One a, One b) noexcept { return a.x < b.x ? a : b; }
  static One absolute(One a) noexcept { return {__builtin_fabs(a.x)}; }
  static bool below(One a, One b) noexcept { return a.x < b.x; }
  static bool atMost(One a, One b) noexcept { return a.x <= b.x; }
  static bool equal(One a, One b) noexcept { return a.x == b.x; }
  static One select(bool mask, One a, One b) noexcept { return mask ? a : b; }
  static One squareRoot(One a) noexcept { return {P::squareRoot(P::all(a.x)).first()}; }
};

/// For loops whose length is not known before they run.
constexpr int kAnyLength = 0;

/// Tells a loop body the type to work in: a pack of P's lanes, or One<P>.
template <class P>
struct In {};

/// Calls step(0), step(1), ... step(count - 1), unrolled.
template <int count, class Step>
[[gnu::always_inline]] inline void unrolled(Step step) noexcept {
  [&]<int... i>(std::integer_sequence<int, i...>) __attribute__((always_inline)) { (step(i), ...); }
  (std::make_integer_sequence<int, count>{});
}

/// Calls step(In<pack>, i) for the first element i of each whole pack, then step(In<One>, i) for
/// each single one behind. A length known when this is built, whole packs, runs straight.
template <class P, int length, class Step>
[[gnu::always_inline]] inline void eachPack(int n, Step step) noexcept {
  if constexpr (length != kAnyLength) {
    static_assert(length % P::kLanes == 0);
    unrolled<length / P::kLanes>([&](int pack) __attribute__((always_inline)) {
      step(In<P>{}, pack * P::kLanes);
    });
  } else {
    int i = 0;
    for (; i + P::kLanes <= n; i += P::kLanes) step(In<P>{}, i);
    for (; i < n; ++i) step(In<One<P>>{}, i);
  }
}

/// dst[i] = operation(sources[i] ...).
template <class P, int length, class Operation, class... Source>
[[gnu::always_inline]] inline void map(typename P::Value* dst, int n, Operation operation,
                                       const Source*... sources) noexcept {
  eachPack<P, length>(
      n, [&]<class V>(In<V>, int i)
             __attribute__((always_inline)) { operation(V::load(sources + i)...).store(dst + i); });
}

}  // namespace orvantesco::kernels
