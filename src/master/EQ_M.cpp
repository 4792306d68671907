#include "master/EQ_M.h"

#include <algorithm>
#include <cmath>

#include "master/EqChain.h"

namespace orvantesco {

namespace {

constexpr double kLowShelfHz = 500.0;
constexpr double kHighShelfHz = 3000.0;

}  // namespace

EQ_M::EQ_M(int eqForm, bool isRight)
    : DSPShell(isRight),
      form(static_cast<Form>(std::clamp<int>(eqForm, kFixEq, kShelfEq))),
      low(EqBand::Shape::lowShelf, kLowShelfHz),
      midA(EqBand::Shape::peak, 0.0),
      midB(EqBand::Shape::peak, 0.0),
      high(EqBand::Shape::highShelf, kHighShelfHz) {}

template <class Operation>
void EQ_M::forEachBand(Operation operation) noexcept {
  for (EqBand* band : {&low, &midA, &midB, &high}) operation(*band);
}

EQ_M::Control EQ_M::controlAt(int index) noexcept {
  if (index < 0 || index > 3) return {};
  if (form == kFixEq) {
    const Control controls[] = {{&low, true}, {&midA, false}, {&midA, true}, {&high, true}};
    return controls[index];
  }
  const bool isFirst = index < 2;
  const bool isGain = index % 2 == 0;
  if (form == kTwoBandEq) return {isFirst ? &midA : &midB, isGain};
  return {isFirst ? &low : &high, isGain};
}

void EQ_M::setParam(int index, double value) noexcept {
  const Control control = controlAt(index);
  if (control.band == nullptr || !std::isfinite(value)) return;
  if (control.isGain) {
    control.band->setGain(value);
  } else {
    control.band->setFrequency(value);
  }
}

void EQ_M::reset() noexcept {
  DSPShell::reset();
  forEachBand([](EqBand& band) { band.reset(); });
}

void EQ_M::rateChanged() noexcept {
  DSPShell::rateChanged();
  forEachBand([](EqBand& band) { band.rateChanged(); });
}

void EQ_M::clearMemories() noexcept {
  DSPShell::clearMemories();
  forEachBand([](EqBand& band) { band.clearMemories(); });
}

void EQ_M::processBlock() noexcept {
  DSPShell::processBlock();  // the bands work in place
  processPair(*this, *this, output, output);
}

void EQ_M::processPair(EQ_M& left, EQ_M& right, double* leftVector, double* rightVector) noexcept {
  if (left.form == kFixEq) {
    EqChain<3> chain;
    chain.take(0, left.midA, right.midA);
    chain.take(1, left.low, right.low);
    chain.take(2, left.high, right.high);
    chain.run(leftVector, rightVector);
    return;
  }
  const bool isShelves = left.form == kShelfEq;
  EqChain<2> chain;
  chain.take(0, isShelves ? left.low : left.midA, isShelves ? right.low : right.midA);
  chain.take(1, isShelves ? left.high : left.midB, isShelves ? right.high : right.midB);
  chain.run(leftVector, rightVector);
}

}  // namespace orvantesco
