#include "fx/FxScale.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "fx/FilterMode.h"
#include "fx/QLMSVF.h"
#include "fx/ShaperType.h"

namespace orvantesco {

namespace {

/// Control values of a selection, in the order of its labels.
template <std::size_t N>
using Choices = std::array<double, N>;

constexpr Choices<8> kShapeCurves{kShaperSaturate,    kShaperTube,       kShaperRectify,
                                  kShaperSine1,       kShaperSine2,      kShaperSine3,
                                  kShaperAsymmetric1, kShaperAsymmetric2};
constexpr Choices<5> kShaperFilterModes{kFilterOff, kLowpassFilter, kHighpassFilter,
                                        kBandpassFilter, kAllpassFilter};
constexpr Choices<4> kSvfModes{kSvfLowpass, kSvfHighpass, kSvfBandpass, kSvfSteepBandpass};
constexpr Choices<2> kSteepModes{kSteepLowpassFilter, kSteepHighpassFilter};
constexpr Choices<4> kMultiModes{kLowpassFilter, kHighpassFilter, kBandpassFilter, kAllpassFilter};

/// x spread evenly over a list of `count` entries, rounded half away from zero.
double entryOf(double x, std::size_t count) noexcept {
  const auto last = static_cast<double>(count - 1);
  return std::fmin(std::fmax(std::round(last * x), 0.0), last);
}

template <std::size_t N>
FxScaled choose(const Choices<N>& choices, double x) noexcept {
  const double entry = entryOf(x, N);
  return {entry, choices[static_cast<std::size_t>(entry)]};
}

/// A number that is shown as it is sent.
FxScaled sentAsShown(double value) noexcept { return {value, value}; }

/// To whole numbers, half away from zero. A little below 0 it is 0, which a read-out would show as
/// "-0".
double whole(double value) noexcept { return std::round(value) + 0.0; }

FxScaled shiftDecade(double x) noexcept {
  return sentAsShown(std::pow(10.0, 1.0 + std::fmin(std::fmax(std::trunc(2.0 * x), 0.0), 2.0)));
}

FxScaled threshold(double x) noexcept {
  const double db = -50.0 * x * x;
  return {db, std::pow(10.0, db / 20.0)};
}

}  // namespace

// One row for each rule: long, but flat. NOLINTNEXTLINE(readability-function-size)
FxScaled scaleFxParam(FxScale scale, double x) noexcept {
  const double bipolar = 2.0 * x - 1.0;
  switch (scale) {
    case FxScale::percent:
      return {100.0 * x, x};
    case FxScale::bipolarPercent:
      return {100.0 * bipolar, bipolar};
    case FxScale::frequency:
      return {50.0 * std::pow(400.0, x), x};
    case FxScale::shiftFrequency:
      return {bipolar, x};
    case FxScale::shiftDecade:
      return shiftDecade(x);
    case FxScale::ringFrequency:
      return {x * x * x * x * 4999.9 + 0.1, x};
    case FxScale::squaredPercent:
      return {100.0 * x, x * x};
    case FxScale::phaserStages:
      return sentAsShown(entryOf(x, 8) + 1.0);
    case FxScale::semitones:
      return {whole(12.0 * bipolar), bipolar};
    case FxScale::bufferMs:
      return sentAsShown(99.0 * x * x + 1.0);
    case FxScale::shapeMode:
      return choose(kShapeCurves, x);
    case FxScale::gain24Db:
      return {24.0 * x, x};
    case FxScale::shapeQ:
      return {100.0 * x - 0.1, x};
    case FxScale::shaperFilterMode:
      return choose(kShaperFilterModes, x);
    case FxScale::svfMode:
      return choose(kSvfModes, x);
    case FxScale::steepMode:
      return choose(kSteepModes, x);
    case FxScale::multiMode:
      return choose(kMultiModes, x);
    case FxScale::filterSlope:
      return {3.0 * x, x};
    case FxScale::peakGainDb:
      return {whole(24.0 * bipolar), x};
    case FxScale::phaseFilterPoles:
      return {std::round(4.0 * x + 3.0), x};
    case FxScale::combFrequency:
      return {std::pow(10.0, 4.0 * x), x};
    case FxScale::vowelSet:
      return {std::round(3.0 * x + 1.0), x};
    case FxScale::thresholdDb:
      return threshold(x);
    case FxScale::ratio:
      return sentAsShown(9.0 * x * x * x + 1.0);
    case FxScale::attackMs:
      return sentAsShown(199.0 * x * x + 1.0);
    case FxScale::releaseMs:
      return sentAsShown(980.0 * x + 20.0);
    case FxScale::pairMode:
      return sentAsShown(entryOf(x, 6));
    case FxScale::sideSlope:
      return sentAsShown(entryOf(x, 4));
  }
  return {x, x};
}

bool isBipolarScale(FxScale scale) noexcept {
  switch (scale) {
    case FxScale::bipolarPercent:
    case FxScale::shiftFrequency:
    case FxScale::semitones:
    case FxScale::peakGainDb:
      return true;
    default:
      return false;
  }
}

const char* formatOfScale(FxScale scale) noexcept {
  switch (scale) {
    case FxScale::shiftDecade:
    case FxScale::phaserStages:
    case FxScale::semitones:
    case FxScale::peakGainDb:
    case FxScale::phaseFilterPoles:
    case FxScale::vowelSet:
      return "%.0f";
    default:
      return "%.2f";
  }
}

}  // namespace orvantesco
