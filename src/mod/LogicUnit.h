#pragma once

#include <array>

#include "fx/Smoother.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// One of the four logic units: combines two modulation sources into a new one. Audio thread only.
class LogicUnit {
 public:
  /// Operations on a and b, the two operands, element by element; A and B are their magnitudes.
  enum class Type {
    Add,
    Multiply,  ///< a without a second source
    AbsMin,    ///< the smaller magnitude with the sign of a; 0 where a is 0
    AbsMax,    ///< the larger magnitude with the sign of a; 0 where a is 0
    Min,
    Max,
    Gate,    ///< a where A >= B, else 0
    Higher,  ///< 1 where a > b, else 0
    Lower    ///< 1 where a < b, else 0
  };
  static constexpr int kTypes = 9;

  /// A source and what it is multiplied with; a source of null counts as zeros.
  struct Operand {
    const double* source = nullptr;  ///< 32 values
    double depth = 0.0;
  };

  LogicUnit() = default;
  LogicUnit(const LogicUnit&) = delete;
  LogicUnit& operator=(const LogicUnit&) = delete;

  void setType(Type operation) noexcept { type = operation; }
  void setOperand(int number, const Operand& operand) noexcept {
    operands[static_cast<std::size_t>(number)] = operand;
  }
  void setSmooth(double ms) noexcept;  ///< time of the smoother behind the operation
  void setDepth(double share) noexcept { depth = share; }
  /// Adds a source times its depth to the depth, element by element.
  void setDepthModulation(const Operand& modulation) noexcept { depthModulation = modulation; }
  void rateChanged() noexcept;
  void restart() noexcept { smoother.snap(0.0); }

  /// Computes the next vector of 32, within -1..1. `out` may be one of the unit's own sources: the
  /// old vector is read before the new one is written.
  void process(double* out) noexcept;

 private:
  using Vector = std::array<double, kVectorLength>;

  void combine(Vector& a, Vector& b) const noexcept;
  void applyDepth(Vector& vector) const noexcept;

  Type type = Type::Add;
  std::array<Operand, 2> operands;
  double depth = 0.0;
  Operand depthModulation;
  double smoothMs = -1.0;
  Smoother smoother;
};

}  // namespace orvantesco
