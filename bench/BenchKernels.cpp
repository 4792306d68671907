// The vector operations over one audio vector at each processor level, with plain loops beside
// them for comparison. Figures are per call over 32 elements.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "fx/Kernels.h"
#include "fx/kernels/Level.h"

namespace orvantesco {
namespace {

using kernels::Level;

struct Vectors {
  alignas(64) double a[kVectorLength];
  alignas(64) double b[kVectorLength];
  alignas(64) double d[kVectorLength];
  alignas(64) float aF[kVectorLength];
  alignas(64) float bF[kVectorLength];
  alignas(64) float dF[kVectorLength];
  double result;
  float resultF;

  /// b holds 1 and -1, so that what is multiplied in place over and over stays what it is.
  Vectors() : result(0.0), resultF(0.0f) {
    for (int i = 0; i < kVectorLength; ++i) {
      a[i] = std::sin(0.7 * i + 0.1);
      b[i] = i % 3 == 0 ? -1.0 : 1.0;
      d[i] = 1.0 + 0.25 * std::cos(1.3 * i);
      aF[i] = static_cast<float>(a[i]);
      bF[i] = static_cast<float>(b[i]);
      dF[i] = static_cast<float>(d[i]);
    }
  }
};

/// Used in turn: a signal path does not work on the vector that it wrote a nanosecond before.
Vectors vectors[4];

template <class Call>
void timeCalls(benchmark::State& state, Call call) {
  for (Vectors& each : vectors) each = Vectors();
  while (state.KeepRunningBatch(4)) {
    call(vectors[0]);
    benchmark::ClobberMemory();
    call(vectors[1]);
    benchmark::ClobberMemory();
    call(vectors[2]);
    benchmark::ClobberMemory();
    call(vectors[3]);
    benchmark::ClobberMemory();
  }
}

/// Times one operation. The operation is a type, so that its entry inlines as in a signal block.
template <class Operation>
void addKernel(const std::string& name, Operation operation) {
  for (const Level level : {Level::kScalar, Level::kSse2, Level::kAvx2}) {
    const std::string title = name + "/" + kernels::nameOf(level);
    benchmark::RegisterBenchmark(title.c_str(), [=](benchmark::State& state) {
      if (!kernels::forceLevel(level)) return state.SkipWithError("not on this processor");
      timeCalls(state, operation);
      kernels::forgetLevel();
    });
  }
}

/// A loop as a block would write it without kernels, kept from being vectorised.
template <class Element>
void addLoop(const std::string& name, Element element) {
  benchmark::RegisterBenchmark((name + "/loop").c_str(), [=](benchmark::State& state) {
    timeCalls(state, [=](Vectors& v) {
      for (int i = 0; i < kVectorLength; ++i) {
        element(v, i);
        asm volatile("");
      }
    });
  });
}

constexpr int kN = kVectorLength;

void registerFills() {
  addKernel("vecZero", [](Vectors& v) { vecZero(v.d, kN); });
  addKernel("vecZeroF", [](Vectors& v) { vecZeroF(v.dF, kN); });
  addKernel("vecSet", [](Vectors& v) { vecSet(0.5, v.d, kN); });
  addKernel("vecCopy", [](Vectors& v) { vecCopy(v.a, v.d, kN); });
  addLoop("vecCopy", [](Vectors& v, int i) { v.d[i] = v.a[i]; });
  addKernel("vecCopyF", [](Vectors& v) { vecCopyF(v.aF, v.dF, kN); });
  addKernel("vecMove", [](Vectors& v) { vecMove(v.a, v.d, kN); });
}

void registerSums() {
  addKernel("vecAdd", [](Vectors& v) { vecAdd(v.a, v.b, v.d, kN); });
  addLoop("vecAdd", [](Vectors& v, int i) { v.d[i] = v.a[i] + v.b[i]; });
  addKernel("vecAddInPlace", [](Vectors& v) { vecAddInPlace(v.a, v.d, kN); });
  addKernel("vecAddConst", [](Vectors& v) { vecAddConst(v.a, 0.3, v.d, kN); });
  addKernel("vecAddConstInPlace", [](Vectors& v) { vecAddConstInPlace(1e-15, v.d, kN); });
  addKernel("vecAddConstInPlaceF", [](Vectors& v) { vecAddConstInPlaceF(1e-9f, v.dF, kN); });
  addKernel("vecSub", [](Vectors& v) { vecSub(v.a, v.b, v.d, kN); });
  addKernel("vecSubInPlace", [](Vectors& v) { vecSubInPlace(v.a, v.d, kN); });
  addKernel("vecSubConst", [](Vectors& v) { vecSubConst(v.a, 0.3, v.d, kN); });
  addKernel("vecSubConstInPlace", [](Vectors& v) { vecSubConstInPlace(1e-15, v.d, kN); });
  addKernel("vecSubFromConstInPlace", [](Vectors& v) { vecSubFromConstInPlace(1.0, v.d, kN); });
}

void registerProducts() {
  addKernel("vecMul", [](Vectors& v) { vecMul(v.a, v.b, v.d, kN); });
  addLoop("vecMul", [](Vectors& v, int i) { v.d[i] = v.a[i] * v.b[i]; });
  addKernel("vecMulF", [](Vectors& v) { vecMulF(v.aF, v.bF, v.dF, kN); });
  addKernel("vecMulInPlace", [](Vectors& v) { vecMulInPlace(v.b, v.d, kN); });
  addKernel("vecMulConst", [](Vectors& v) { vecMulConst(v.a, 0.3, v.d, kN); });
  addKernel("vecMulConstF", [](Vectors& v) { vecMulConstF(v.aF, 0.3f, v.dF, kN); });
  addKernel("vecMulConstInPlace", [](Vectors& v) { vecMulConstInPlace(-1.0, v.d, kN); });
  addKernel("vecAddProduct", [](Vectors& v) { vecAddProduct(v.a, v.b, v.d, kN); });
  addLoop("vecAddProduct", [](Vectors& v, int i) { v.d[i] += v.a[i] * v.b[i]; });
  addKernel("vecAddProductConst", [](Vectors& v) { vecAddProductConst(v.a, 0.3, v.d, kN); });
  addKernel("vecAddProductConstF", [](Vectors& v) { vecAddProductConstF(v.aF, 0.3f, v.dF, kN); });
  addKernel("vecDivInPlace", [](Vectors& v) { vecDivInPlace(v.b, v.d, kN); });
  addLoop("vecDivInPlace", [](Vectors& v, int i) { v.d[i] = v.d[i] / v.b[i]; });
  addKernel("vecDivConstInPlace", [](Vectors& v) { vecDivConstInPlace(-1.0, v.d, kN); });
  addKernel("vecConstDivF", [](Vectors& v) { vecConstDivF(v.bF, 0.3f, v.dF, kN); });
  addKernel("vecSquare", [](Vectors& v) { vecSquare(v.a, v.d, kN); });
  addKernel("vecSquareInPlace", [](Vectors& v) { vecSquareInPlace(v.b, kN); });
  addKernel("vecSqrtInPlace", [](Vectors& v) { vecSqrtInPlace(v.d, kN); });
}

void registerBounds() {
  addKernel("vecAbs", [](Vectors& v) { vecAbs(v.a, v.d, kN); });
  addKernel("vecAbsInPlace", [](Vectors& v) { vecAbsInPlace(v.a, kN); });
  addKernel("vecClampBelowInPlace", [](Vectors& v) { vecClampBelowInPlace(v.d, kN, 0.9); });
  addLoop("vecClampBelowInPlace", [](Vectors& v, int i) { v.d[i] = v.d[i] < 0.9 ? 0.9 : v.d[i]; });
  addKernel("vecClampAboveInPlace", [](Vectors& v) { vecClampAboveInPlace(v.d, kN, 1.1); });
  addKernel("vecThresholdLowInPlace",
            [](Vectors& v) { vecThresholdLowInPlace(v.d, kN, 0.9, 0.0); });
  addKernel("vecThresholdHighInPlace",
            [](Vectors& v) { vecThresholdHighInPlace(v.d, kN, 1.1, 2.0); });
  addKernel("vecThresholdBothInPlace",
            [](Vectors& v) { vecThresholdBothInPlace(v.d, kN, 0.9, 0.0, 1.1, 2.0); });
  addKernel("vecMinEveryInPlace", [](Vectors& v) { vecMinEveryInPlace(v.a, v.d, kN); });
  addKernel("vecMaxEveryInPlace", [](Vectors& v) { vecMaxEveryInPlace(v.a, v.d, kN); });
  addKernel("vecMaxAbs", [](Vectors& v) { vecMaxAbs(v.a, kN, &v.result); });
  addLoop("vecMaxAbs",
          [](Vectors& v, int i) { v.result = std::fmax(v.result, std::fabs(v.a[i])); });
  addKernel("vecMean", [](Vectors& v) { vecMean(v.a, kN, &v.result); });
  addKernel("vecSumF", [](Vectors& v) { vecSumF(v.aF, kN, &v.resultF, 0); });
  addKernel("vecStaysWithin", [](Vectors& v) { v.result = vecStaysWithin(v.a, kN, 1e8); });
}

[[maybe_unused]] const bool registered = [] {
  registerFills();
  registerSums();
  registerProducts();
  registerBounds();
  return true;
}();

}  // namespace
}  // namespace orvantesco
