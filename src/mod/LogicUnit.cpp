#include "mod/LogicUnit.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"

namespace orvantesco {

namespace {

using Vector = std::array<double, kVectorLength>;

Vector scaled(const LogicUnit::Operand& operand) noexcept {
  Vector vector;
  if (operand.source == nullptr) {
    vector.fill(0.0);
  } else {
    vecMulConst(operand.source, operand.depth, vector.data(), kVectorLength);
  }
  return vector;
}

double signOf(double x) noexcept { return static_cast<double>((x > 0.0) - (x < 0.0)); }

template <class Operation>
void forEach(Vector& a, const Vector& b, Operation operation) noexcept {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] = operation(a[i], b[i]);
}

}  // namespace

void LogicUnit::setSmooth(double ms) noexcept {
  if (ms == smoothMs) return;
  smoothMs = ms;
  smoother.setTime(ms);
}

void LogicUnit::rateChanged() noexcept { smoother.rateChanged(); }

void LogicUnit::combine(Vector& a, Vector& b) const noexcept {
  switch (type) {
    case Type::Add:
      vecAddInPlace(b.data(), a.data(), kVectorLength);
      break;
    case Type::Multiply:
      if (operands[1].source != nullptr) vecMulInPlace(b.data(), a.data(), kVectorLength);
      break;
    case Type::AbsMin:
      forEach(a, b,
              [](double x, double y) { return signOf(x) * std::min(std::fabs(x), std::fabs(y)); });
      break;
    case Type::AbsMax:
      forEach(a, b,
              [](double x, double y) { return signOf(x) * std::max(std::fabs(x), std::fabs(y)); });
      break;
    case Type::Min:
      vecMinEveryInPlace(b.data(), a.data(), kVectorLength);
      break;
    case Type::Max:
      vecMaxEveryInPlace(b.data(), a.data(), kVectorLength);
      break;
    case Type::Gate:
      forEach(a, b, [](double x, double y) { return std::fabs(x) >= std::fabs(y) ? x : 0.0; });
      break;
    case Type::Higher:
      forEach(a, b, [](double x, double y) { return x > y ? 1.0 : 0.0; });
      break;
    case Type::Lower:
      forEach(a, b, [](double x, double y) { return x < y ? 1.0 : 0.0; });
      break;
  }
}

void LogicUnit::applyDepth(Vector& vector) const noexcept {
  if (depthModulation.source == nullptr) {
    vecMulConstInPlace(depth, vector.data(), kVectorLength);
    return;
  }
  Vector depths = scaled(depthModulation);
  vecAddConstInPlace(depth, depths.data(), kVectorLength);
  vecMulInPlace(depths.data(), vector.data(), kVectorLength);
}

void LogicUnit::process(double* out) noexcept {
  Vector a = scaled(operands[0]);
  Vector b = scaled(operands[1]);
  combine(a, b);
  if (smoothMs > 0.0) {
    smoother.tickVector(a.data());
  } else {
    smoother.snap(a.back());
  }
  applyDepth(a);
  // In this order of arguments a value that is no number comes out as 1: a unit that reads itself
  // must get over it.
  for (int i = 0; i < kVectorLength; ++i) {
    out[i] = std::max(-1.0, std::min(1.0, a[static_cast<std::size_t>(i)]));
  }
}

}  // namespace orvantesco
