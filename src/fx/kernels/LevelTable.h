#pragma once

#include "fx/kernels/IirBody.h"
#include "fx/kernels/KernelTable.h"
#include "fx/kernels/ReductionBody.h"
#include "fx/kernels/VectorBody.h"

namespace orvantesco::kernels {

extern const KernelTable scalarTable;
extern const KernelTable sse2Table;
extern const KernelTable avx2Table;

/// The table of a level that names its packs `Doubles` and `Floats`. One row for each kernel.
template <class Level>
constexpr KernelTable makeTable() noexcept {  // NOLINT(readability-function-size)
  using D = VectorBody<typename Level::Doubles>;
  using F = VectorBody<typename Level::Floats>;
  using FigureD = ReductionBody<typename Level::Doubles>;
  using FigureF = ReductionBody<typename Level::Floats>;
  using Iir = IirBody<typename Level::Doubles>;

  KernelTable t;
  t.fill = D::fill;
  t.copy = D::copy;
  t.move = D::move;
  t.absolute = D::absolute;
  t.squareRoot = D::squareRoot;
  t.add = D::add;
  t.subtract = D::subtract;
  t.multiply = D::multiply;
  t.addProduct = D::addProduct;
  t.smaller = D::smaller;
  t.larger = D::larger;
  t.divide = D::divide;
  t.addConst = D::addConst;
  t.subtractFromConst = D::subtractFromConst;
  t.scale = D::scale;
  t.scaleOrClear = D::scaleOrClear;
  t.addScaled = D::addScaled;
  t.clampBelow = D::clampBelow;
  t.clampAbove = D::clampAbove;
  t.thresholdLow = D::thresholdLow;
  t.thresholdHigh = D::thresholdHigh;
  t.thresholdBoth = D::thresholdBoth;
  t.maxAbs = FigureD::maxAbs;
  t.sum = FigureD::sum;
  t.staysWithin = FigureD::staysWithin;
  t.fillFloat = F::fill;
  t.copyFloat = F::copy;
  t.addConstFloat = F::addConst;
  t.multiplyFloat = F::multiply;
  t.scaleOrClearFloat = F::scaleOrClear;
  t.addScaledFloat = F::addScaled;
  t.constDivFloat = F::constDiv;
  t.sumFloat = FigureF::sum;
  t.iirFilter = Iir::filter;
  t.iirFilterPair = Iir::filterPair;
  t.iirSetDelayLine = Iir::setDelayLine;
  return t;
}

}  // namespace orvantesco::kernels
