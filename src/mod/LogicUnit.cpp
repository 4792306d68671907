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

/// The sign of a, 0 for 0, times what is picked of the magnitudes.
template <class Pick>
void pickMagnitude(Vector& a, Vector& b, Pick pick) noexcept {
  Vector magnitude;
  vecAbs(a.data(), magnitude.data(), kVectorLength);
  vecAbsInPlace(b.data(), kVectorLength);
  pick(magnitude.data(), b.data(), kVectorLength);
  vecThresholdBothInPlace(a.data(), kVectorLength, 0.0, -1.0, 0.0, 1.0);
  vecMulInPlace(b.data(), a.data(), kVectorLength);
}

template <class Operation>
void forEach(Vector& a, const Vector& b, Operation operation) noexcept {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] = operation(a[i], b[i]);
}

/// Within -1..1; what is no number is silence, which a unit that reads itself gets over.
double heldOrSilent(double value) noexcept {
  return std::isfinite(value) ? std::clamp(value, -1.0, 1.0) : 0.0;
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
      pickMagnitude(a, b, vecMinEveryInPlace);
      break;
    case Type::AbsMax:
      pickMagnitude(a, b, vecMaxEveryInPlace);
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
  if (vecStaysWithin(a.data(), kVectorLength, 1.0)) {
    vecCopy(a.data(), out, kVectorLength);
    return;
  }
  for (double value : a) *out++ = heldOrSilent(value);
}

}  // namespace orvantesco
