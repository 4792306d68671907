#include "fx/IppFixBiquad.h"

#include <algorithm>

#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kRippleDb = 0.5;
constexpr double kFirstCorner = 0.49;

DirectDesign designOf(int fixedDesign) noexcept {
  switch (fixedDesign) {
    case kFixedButterworthHighpass:
      return {kButterworth, FilterBand::highpass};
    case kFixedChebyshevLowpass:
      return {kChebyshev1, FilterBand::lowpass};
    case kFixedChebyshevHighpass:
      return {kChebyshev1, FilterBand::highpass};
    default:
      return {kButterworth, FilterBand::lowpass};
  }
}

}  // namespace

IppFixBiquad::IppFixBiquad() { redesign(kFixedButterworthLowpass, order, kFirstCorner); }

bool IppFixBiquad::redesign(int fixedDesign, int newOrder, double frequency) noexcept {
  DirectDesign design = designOf(fixedDesign);
  design.order = std::clamp(newOrder, 1, kIirMaxOrder);
  design.corner = frequency;
  design.rippleDb = kRippleDb;
  if (!filter.design(design)) return false;
  if (design.order != order) filter.clear();
  order = design.order;
  return true;
}

void IppFixBiquad::reset() noexcept {
  QLMFilter::reset();
  filter.clear();
}

void IppFixBiquad::clearMemories() noexcept {
  QLMFilter::clearMemories();
  filter.clear();
}

void IppFixBiquad::dropRunaway(double* buffer, int n) noexcept {
  if (isSaneSpan(buffer, n)) return;
  clearMemories();
  std::fill_n(buffer, n, 0.0);
}

void IppFixBiquad::filterInPlace(double* buffer, int n) noexcept {
  if (n < 1) return;
  filter.process(buffer, buffer, n);
  dropRunaway(buffer, n);
}

void IppFixBiquad::filterPairInPlace(IppFixBiquad& left, double* leftBuffer, IppFixBiquad& right,
                                     double* rightBuffer) noexcept {
  DirectFilter::processPair({left.filter, leftBuffer}, {right.filter, rightBuffer}, kVectorLength);
  left.dropRunaway(leftBuffer, kVectorLength);
  right.dropRunaway(rightBuffer, kVectorLength);
}

}  // namespace orvantesco
