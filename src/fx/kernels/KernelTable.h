#pragma once

#include <atomic>

namespace orvantesco {

struct IirState;

namespace kernels {

/// The loops of one processor level. Arguments have been checked when one of these is called;
/// sources may be the destination itself.
struct KernelTable {
  using Unary = void (*)(const double* src, double* dst, int n) noexcept;
  using Binary = void (*)(const double* a, const double* b, double* dst, int n) noexcept;
  using WithConst = void (*)(const double* src, double val, double* dst, int n) noexcept;
  using WithTwo = void (*)(const double* src, double p, double q, double* dst, int n) noexcept;

  void (*fill)(double val, double* dst, int n) noexcept = nullptr;
  Unary copy = nullptr;
  Unary move = nullptr;
  Unary absolute = nullptr;
  int (*squareRoot)(double* srcDst, int n) noexcept = nullptr;

  Binary add = nullptr;
  Binary subtract = nullptr;  ///< b - a
  Binary multiply = nullptr;
  Binary addProduct = nullptr;
  Binary smaller = nullptr;  ///< a where it compares below b, else b
  Binary larger = nullptr;   ///< a where it compares above b, else b
  int (*divide)(const double* src, double* srcDst, int n) noexcept = nullptr;

  WithConst addConst = nullptr;
  WithConst subtractFromConst = nullptr;
  WithConst scale = nullptr;         ///< the plain product
  WithConst scaleOrClear = nullptr;  ///< 1 copies, 0 clears, whatever src holds
  WithConst addScaled = nullptr;
  WithConst clampBelow = nullptr;
  WithConst clampAbove = nullptr;
  WithTwo thresholdLow = nullptr;  ///< p is the level, q the value
  WithTwo thresholdHigh = nullptr;
  void (*thresholdBoth)(double* srcDst, int n, const double* bounds) noexcept = nullptr;

  double (*maxAbs)(const double* src, int n) noexcept = nullptr;
  double (*sum)(const double* src, int n) noexcept = nullptr;
  bool (*staysWithin)(const double* src, int n, double limit) noexcept = nullptr;

  void (*fillFloat)(float val, float* dst, int n) noexcept = nullptr;
  void (*copyFloat)(const float* src, float* dst, int n) noexcept = nullptr;
  void (*addConstFloat)(const float* src, float val, float* dst, int n) noexcept = nullptr;
  void (*multiplyFloat)(const float* a, const float* b, float* dst, int n) noexcept = nullptr;
  void (*scaleOrClearFloat)(const float* src, float val, float* dst, int n) noexcept = nullptr;
  void (*addScaledFloat)(const float* src, float val, float* dst, int n) noexcept = nullptr;
  void (*constDivFloat)(const float* src, float val, float* dst, int n) noexcept = nullptr;
  float (*sumFloat)(const float* src, int n) noexcept = nullptr;

  void (*iirFilter)(const double* src, double* dst, int n, IirState& state) noexcept = nullptr;
  void (*iirFilterPair)(double* a, IirState& stateA, double* b, IirState& stateB,
                        int n) noexcept = nullptr;
  void (*iirSetDelayLine)(IirState& state, const double* src) noexcept = nullptr;
};

/// The table in force; null until the first call into the library.
extern std::atomic<const KernelTable*> chosenTable;

/// Chooses the best level that this processor has and returns its table.
const KernelTable& chooseTable() noexcept;

[[gnu::always_inline]] inline const KernelTable& table() noexcept {
  // Relaxed order is enough: the tables are constants, there is nothing else to see.
  const KernelTable* chosen = chosenTable.load(std::memory_order_relaxed);
  return __builtin_expect(chosen != nullptr, true) ? *chosen : chooseTable();
}

}  // namespace kernels
}  // namespace orvantesco
