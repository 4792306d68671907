#include "master/EQ_M.h"

#include <algorithm>
#include <cmath>

#include "fx/RateValues.h"

namespace orvantesco {

namespace {

constexpr double kLowShelfHz = 500.0;
constexpr double kHighShelfHz = 3000.0;

}  // namespace

EQ_M::Band::Band(bool isRight, int mode, double hz) : filter(isRight, mode, 1) {
  filter.setFrequencyIsNormalised(false);
  if (mode == kPeakFilter) filter.setMaxDrive(kMaxDriveDb);
  setFrequency(hz);
}

void EQ_M::Band::setFrequency(double hz) noexcept {
  frequencyHz = hz;
  filter.setCutoff(hz * inverseSampleRate);
}

EQ_M::EQ_M(int eqForm, bool isRight)
    : DSPShell(isRight),
      form(static_cast<Form>(std::clamp<int>(eqForm, kFixEq, kShelfEq))),
      low(isRight, kLowShelfFilter, kLowShelfHz),
      midA(isRight, kPeakFilter, 0.0),
      midB(isRight, kPeakFilter, 0.0),
      high(isRight, kHighShelfFilter, kHighShelfHz) {}

template <class Operation>
void EQ_M::forEachFilter(Operation operation) noexcept {
  for (Band* band : {&low, &midA, &midB, &high}) operation(*band);
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
    control.band->filter.setGain(value);
  } else {
    control.band->setFrequency(value);
  }
}

void EQ_M::reset() noexcept {
  DSPShell::reset();
  forEachFilter([](Band& band) { band.filter.reset(); });
}

void EQ_M::rateChanged() noexcept {
  DSPShell::rateChanged();
  forEachFilter([](Band& band) {
    band.filter.rateChanged();
    band.setFrequency(band.frequencyHz);
  });
}

void EQ_M::clearMemories() noexcept {
  DSPShell::clearMemories();
  forEachFilter([](Band& band) { band.filter.clearMemories(); });
}

void EQ_M::processBlock() noexcept {
  DSPShell::processBlock();  // the filters work in place
  (form == kShelfEq ? low : midA).filter.process(output, nullptr);
  if (form == kFixEq) low.filter.process(output, nullptr);
  (form == kTwoBandEq ? midB : high).filter.process(output, nullptr);
}

}  // namespace orvantesco
