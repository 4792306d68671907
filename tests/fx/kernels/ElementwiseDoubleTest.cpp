#include "fx/kernels/ElementwiseCheck.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Elementwise;

using Op = Elementwise<double>;
using In = const double*;

const Op kFills[] = {
    {"vecZero", 0, [](In, In, double, double* d, int n) { return vecZero(d, n); },
     [](double, double, double, double) { return 0.0; }},
    {"vecSet", 0, [](In, In, double v, double* d, int n) { return vecSet(v, d, n); },
     [](double, double, double v, double) { return v; }},
    {"vecCopy", 1, [](In a, In, double, double* d, int n) { return vecCopy(a, d, n); },
     [](double a, double, double, double) { return a; }},
    {"vecMove", 1, [](In a, In, double, double* d, int n) { return vecMove(a, d, n); },
     [](double a, double, double, double) { return a; }},
};

const Op kSums[] = {
    {"vecAdd", 2, [](In a, In b, double, double* d, int n) { return vecAdd(a, b, d, n); },
     [](double a, double b, double, double) { return a + b; }},
    {"vecAddInPlace", 1, [](In a, In, double, double* d, int n) { return vecAddInPlace(a, d, n); },
     [](double a, double, double, double d) { return d + a; }},
    {"vecAddConst", 1, [](In a, In, double v, double* d, int n) { return vecAddConst(a, v, d, n); },
     [](double a, double, double v, double) { return v == 0 ? a : a + v; }},
    {"vecAddConstInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecAddConstInPlace(v, d, n); },
     [](double, double, double v, double d) { return v == 0 ? d : d + v; }},
    {"vecSub", 2, [](In a, In b, double, double* d, int n) { return vecSub(a, b, d, n); },
     [](double a, double b, double, double) { return b - a; }},
    {"vecSubInPlace", 1, [](In a, In, double, double* d, int n) { return vecSubInPlace(a, d, n); },
     [](double a, double, double, double d) { return d - a; }},
    {"vecSubConst", 1, [](In a, In, double v, double* d, int n) { return vecSubConst(a, v, d, n); },
     [](double a, double, double v, double) { return v == 0 ? a : a - v; }},
    {"vecSubConstInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecSubConstInPlace(v, d, n); },
     [](double, double, double v, double d) { return v == 0 ? d : d - v; }},
    {"vecSubFromConstInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecSubFromConstInPlace(v, d, n); },
     [](double, double, double v, double d) { return v - d; }},
};

const Op kProducts[] = {
    {"vecMul", 2, [](In a, In b, double, double* d, int n) { return vecMul(a, b, d, n); },
     [](double a, double b, double, double) { return a * b; }},
    {"vecMulInPlace", 1, [](In a, In, double, double* d, int n) { return vecMulInPlace(a, d, n); },
     [](double a, double, double, double d) { return d * a; }},
    {"vecMulConst", 1, [](In a, In, double v, double* d, int n) { return vecMulConst(a, v, d, n); },
     [](double a, double, double v, double) { return v == 0 ? 0.0 : a * v; }},
    {"vecMulConstInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecMulConstInPlace(v, d, n); },
     [](double, double, double v, double d) { return v == 0 ? 0.0 : d * v; }},
    {"vecAddProduct", 2,
     [](In a, In b, double, double* d, int n) { return vecAddProduct(a, b, d, n); },
     [](double a, double b, double, double d) { return d + a * b; }},
    {"vecAddProductConst", 1,
     [](In a, In, double v, double* d, int n) { return vecAddProductConst(a, v, d, n); },
     [](double a, double, double v, double d) { return v == 0 ? d : d + a * v; }},
    {"vecDivInPlace", 1, [](In a, In, double, double* d, int n) { return vecDivInPlace(a, d, n); },
     [](double a, double, double, double d) { return d / a; }},
    {"vecDivConstInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecDivConstInPlace(v == 0 ? 3 : v, d, n); },
     [](double, double, double v, double d) { return d * (1.0 / (v == 0 ? 3 : v)); }},
    {"vecSquare", 1, [](In a, In, double, double* d, int n) { return vecSquare(a, d, n); },
     [](double a, double, double, double) { return a * a; }},
    {"vecSquareInPlace", 0, [](In, In, double, double* d, int n) { return vecSquareInPlace(d, n); },
     [](double, double, double, double d) { return d * d; }},
    {"vecSqrtInPlace", 0, [](In, In, double, double* d, int n) { return vecSqrtInPlace(d, n); },
     [](double, double, double, double d) { return std::sqrt(d); }},
};

const Op kBounds[] = {
    {"vecAbs", 1, [](In a, In, double, double* d, int n) { return vecAbs(a, d, n); },
     [](double a, double, double, double) { return std::fabs(a); }},
    {"vecAbsInPlace", 0, [](In, In, double, double* d, int n) { return vecAbsInPlace(d, n); },
     [](double, double, double, double d) { return std::fabs(d); }},
    {"vecClampBelowInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecClampBelowInPlace(d, n, v); },
     [](double, double, double v, double d) { return d < v ? v : d; }},
    {"vecClampAboveInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecClampAboveInPlace(d, n, v); },
     [](double, double, double v, double d) { return d > v ? v : d; }},
    {"vecThresholdLowInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecThresholdLowInPlace(d, n, v, 9); },
     [](double, double, double v, double d) { return d < v ? 9 : d; }},
    {"vecThresholdHighInPlace", 0,
     [](In, In, double v, double* d, int n) { return vecThresholdHighInPlace(d, n, v, 9); },
     [](double, double, double v, double d) { return d > v ? 9 : d; }},
    {"vecThresholdBothInPlace", 0,
     [](In, In, double v, double* d, int n) {
       return vecThresholdBothInPlace(d, n, -0.25, v, 0.25, 7);
     },
     [](double, double, double v, double d) { return d < -0.25  ? v
                                                     : d > 0.25 ? 7
                                                                : d; }},
    {"vecMinEveryInPlace", 1,
     [](In a, In, double, double* d, int n) { return vecMinEveryInPlace(a, d, n); },
     [](double a, double, double, double d) { return a < d ? a : d; }},
    {"vecMaxEveryInPlace", 1,
     [](In a, In, double, double* d, int n) { return vecMaxEveryInPlace(a, d, n); },
     [](double a, double, double, double d) { return a > d ? a : d; }},
};

class DoubleKernels : public AtEachLevel {
 protected:
  template <class Group>
  static void expectAll(const Group& group) {
    for (const Op& operation : group) {
      testing_support::expectModel(operation);
      testing_support::expectRefusals(operation);
    }
  }
};

TEST_P(DoubleKernels, FillsAndCopiesAreExact) { expectAll(kFills); }
TEST_P(DoubleKernels, SumsAreThoseOfTheElements) { expectAll(kSums); }
TEST_P(DoubleKernels, ProductsAreThoseOfTheElements) { expectAll(kProducts); }
TEST_P(DoubleKernels, BoundsReplaceOnlyWhatLiesBeyondThem) { expectAll(kBounds); }

INSTANTIATE_TEST_SUITE_P(Levels, DoubleKernels, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
