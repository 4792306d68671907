#pragma once

#include <atomic>

#include "fx/VectorLength.h"

namespace orvantesco {

struct IirState;

namespace kernels {

template <class Signature>
struct Entry;

/// One pointer of a table. Relaxed order is enough: what it points to is code, and all choices
/// give the same results, so a thread may even meet a table half rewritten.
template <class Result, class... Arguments>
struct Entry<Result(Arguments...)> {
  using Function = Result (*)(Arguments...) noexcept;
  std::atomic<Function> function;

  constexpr Entry(Function initial) noexcept : function(initial) {}  // NOLINT: a plain pointer
  [[gnu::always_inline]] Function get() const noexcept {
    return function.load(std::memory_order_relaxed);
  }
  void set(const Entry& other) noexcept { function.store(other.get(), std::memory_order_relaxed); }
};

/// One loop, built for vectors of any length and once more for the audio vector of 32, whose
/// length is as a rule known where the kernel is called.
template <class Signature>
struct Loop {
  Entry<Signature> anyLength;
  Entry<Signature> audioVector;

  [[gnu::always_inline]] auto of(int n) const noexcept {
    return n == kVectorLength ? audioVector.get() : anyLength.get();
  }
  void set(const Loop& other) noexcept {
    anyLength.set(other.anyLength);
    audioVector.set(other.audioVector);
  }
};

/// The loops of one processor level, in the order of KernelList.h. Arguments have been checked
/// when one of them is called; sources may be the destination itself.
struct KernelTable {
  using Unary = Loop<void(const double* src, double* dst, int n)>;
  using Binary = Loop<void(const double* a, const double* b, double* dst, int n)>;
  using WithConst = Loop<void(const double* src, double val, double* dst, int n)>;
  using WithTwo = Loop<void(const double* src, double level, double value, double* dst, int n)>;
  using UnaryF = Loop<void(const float* src, float* dst, int n)>;
  using BinaryF = Loop<void(const float* a, const float* b, float* dst, int n)>;
  using WithConstF = Loop<void(const float* src, float val, float* dst, int n)>;

  Loop<void(double val, double* dst, int n)> fill;
  Unary copy;
  Unary move;
  Unary absolute;
  Loop<int(double* srcDst, int n)> squareRoot;

  Binary add;
  Binary subtract;  ///< b - a
  Binary multiply;
  Binary addProduct;
  Binary smaller;  ///< a where it compares below b, else b
  Binary larger;   ///< a where it compares above b, else b
  Loop<int(const double* src, double* srcDst, int n)> divide;

  WithConst addConst;
  WithConst subtractFromConst;
  WithConst scale;         ///< the plain product
  WithConst scaleOrClear;  ///< 1 copies, 0 clears, whatever src holds
  WithConst addScaled;
  WithConst clampBelow;
  WithConst clampAbove;
  WithTwo thresholdLow;
  WithTwo thresholdHigh;
  Loop<void(double* srcDst, int n, double low, double lowValue, double high, double highValue)>
      thresholdBoth;

  Loop<double(const double* src, int n)> maxAbs;
  Loop<double(const double* src, int n)> sum;
  Loop<bool(const double* src, int n, double limit)> staysWithin;

  Loop<void(float val, float* dst, int n)> fillFloat;
  UnaryF copyFloat;
  WithConstF addConstFloat;
  BinaryF multiplyFloat;
  WithConstF scaleOrClearFloat;
  WithConstF addScaledFloat;
  WithConstF constDivFloat;
  Loop<float(const float* src, int n)> sumFloat;

  Entry<void(const double* src, double* dst, int n, IirState& state)> iirFilter;
  Entry<void(double* a, IirState& stateA, double* b, IirState& stateB, int n)> iirFilterPair;
  Entry<void(IirState& state, const double* src)> iirSetDelayLine;
  Entry<void(const IirState& state, double* dst)> iirGetDelayLine;
};

/// The loops in force. Until the first call into the library each entry chooses the level, which
/// rewrites the table, and goes on to what then stands there. One load and one call from here:
/// with a pointer to a table in between, the sum of two vectors would take a tenth longer.
[[gnu::visibility("hidden")]] extern constinit KernelTable active;

}  // namespace kernels
}  // namespace orvantesco
