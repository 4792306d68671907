#include "fx/kernels/ElementwiseCheck.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Elementwise;

using Op = Elementwise<float>;
using In = const float*;

const Op kOperations[] = {
    {"vecZeroF", 0, [](In, In, float, float* d, int n) { return vecZeroF(d, n); },
     [](float, float, float, float) { return 0.0f; }},
    {"vecCopyF", 1, [](In a, In, float, float* d, int n) { return vecCopyF(a, d, n); },
     [](float a, float, float, float) { return a; }},
    {"vecAddConstInPlaceF", 0,
     [](In, In, float v, float* d, int n) { return vecAddConstInPlaceF(v, d, n); },
     [](float, float, float v, float d) { return v == 0 ? d : d + v; }},
    {"vecMulF", 2, [](In a, In b, float, float* d, int n) { return vecMulF(a, b, d, n); },
     [](float a, float b, float, float) { return a * b; }},
    {"vecMulConstF", 1, [](In a, In, float v, float* d, int n) { return vecMulConstF(a, v, d, n); },
     [](float a, float, float v, float) { return v == 0 ? 0.0f : a * v; }},
    {"vecAddProductConstF", 1,
     [](In a, In, float v, float* d, int n) { return vecAddProductConstF(a, v, d, n); },
     [](float a, float, float v, float d) { return v == 0 ? d : d + a * v; }},
    {"vecConstDivF", 1, [](In a, In, float v, float* d, int n) { return vecConstDivF(a, v, d, n); },
     [](float a, float, float v, float) { return v / a; }},
};

class FloatKernels : public AtEachLevel {};

TEST_P(FloatKernels, AreExactForEachElement) {
  for (const Op& operation : kOperations) {
    testing_support::expectModel(operation);
    testing_support::expectRefusals(operation);
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, FloatKernels, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
