#include "core/MasterEffectScale.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "fx/EffectCatalogue.h"

namespace orvantesco {

namespace {

constexpr double kLn10Over20 = 0.1151292546497;

// The slots have the same drive and filters, and call the slopes by the same names.
constexpr int kDrivePairType = 56;
constexpr int kDrivePairMode = 3;

using Scale = MasterFxValue (*)(double x);

/// One knob: how it is labelled and how it is scaled.
struct Knob {
  MasterFxStyle style;
  Scale scale = nullptr;
};

MasterFxValue shownInPercent(double x) { return {100.0 * x, x}; }

MasterFxValue same(double value) { return {value, value}; }

/// 50 Hz to 20 kHz, the curve that all filters of the effects share.
MasterFxValue frequency(double x) { return {50.0 * std::pow(400.0, x), x}; }

double bandDb(double x) { return (100.0 * x - 50.0) * 0.36; }

/// A shelf's gain. The filter squares it, so it gets the root.
MasterFxValue shelfGain(double x) {
  const double db = bandDb(x);
  return {db, std::exp(db * 0.5 * kLn10Over20)};
}

MasterFxValue peakGain(double x) { return {bandDb(x), x}; }

MasterFxValue orvantSize(double x) { return {100.0 * x, (x + 0.3) * 4.0}; }
MasterFxValue orvantDecay(double x) { return {100.0 * x, std::sqrt(0.999 * x) + 0.0005}; }

MasterFxValue orvantDamp(double x) {
  const double native = 1.0 - 0.768621786840241 * x;
  return {frequency(native).shown, native};
}

MasterFxValue hallSize(double x) { return same(x * x * 29.0 + 1.0); }
MasterFxValue roomSize(double x) { return same(x * x * 3.0 + 1.0); }

/// In samples at 44100 Hz: the effect itself follows the rate.
MasterFxValue preDelay(double ms) { return {ms, ms * 44.1}; }
MasterFxValue hallPreDelay(double x) { return preDelay(500.0 * x); }
MasterFxValue roomPreDelay(double x) { return preDelay(200.0 * x); }

/// 2 to the power of y, to about 4e-6: a polynomial for the fraction, exact for the whole part.
double powerOfTwo(double y) {
  const int whole = static_cast<int>(y);
  const double r = y - whole;
  const double fraction = (((r * 0.0136991 + 0.0517387) * r + 0.2415636) * r + 0.6929986) * r + 1.0;
  return std::ldexp(fraction, whole);
}

/// The lower part of the filters' travel, three fifths of it: 50 Hz to 2 kHz.
MasterFxValue reverbHiPass(double x) {
  constexpr double kLog2Of400 = 8.643856189774724;
  const double native = 0.61568910657988 * x;
  return {50.0 * powerOfTwo(native * kLog2Of400), native};
}

MasterFxValue hallDamp(double x) { return {100.0 * x, std::pow(x, 0.1)}; }
MasterFxValue roomDamp(double x) { return {100.0 * x, 0.9 * std::pow(x, 0.1)}; }

MasterFxValue fixedPeakHz(double x) { return same(4500.0 * x + 500.0); }
MasterFxValue peakHz(double x) { return same(19950.0 * x + 50.0); }
MasterFxValue lowShelfHz(double x) { return same(950.0 * x + 50.0); }
MasterFxValue highShelfHz(double x) { return same(7250.0 * x + 250.0); }
MasterFxValue driveMode(double x) { return same(std::round(5.0 * x)); }

using Row = std::array<Knob, kMasterFxKnobs>;

constexpr std::array<Row, kMasterFxMenuEntries - 1> kKnobs{{
    {{{{"ORVANT SIZE", 1, " %"}, orvantSize},
      {{"ORVANT DECAY", 2, " %"}, orvantDecay},
      {{"ORVANT MODULATION", 2, " %"}, shownInPercent},
      {{"ORVANT DAMP FREQ", 0, " Hz"}, orvantDamp}}},
    {{{{"HALL SIZE", 1, " sec"}, hallSize},
      {{"HALL PREDELAY", 0, " msec"}, hallPreDelay},
      {{"HALL HP FREQ", 0, " Hz"}, reverbHiPass},
      {{"HALL DAMP", 2, " %"}, hallDamp}}},
    {{{{"ROOM SIZE", 1, " sec"}, roomSize},
      {{"ROOM PREDELAY", 0, " msec"}, roomPreDelay},
      {{"HALL HP FREQ", 0, " Hz"}, reverbHiPass},
      {{"ROOM DAMP", 2, " %"}, roomDamp}}},
    {{{{"LOSHELF GAIN", 1, " db"}, shelfGain},
      {{"PEAK FREQ", 1, " Hz"}, fixedPeakHz},
      {{"PEAK GAIN", 1, " db"}, peakGain},
      {{"HISHELF GAIN", 1, " db"}, shelfGain}}},
    {{{{"PEAK GAIN 1", 1, " db"}, peakGain},
      {{"PEAK FREQ 1", 1, " Hz"}, peakHz},
      {{"PEAK GAIN 2", 1, " db"}, peakGain},
      {{"PEAK FREQ 2", 1, " Hz"}, peakHz}}},
    {{{{"LOSHELF GAIN", 1, " db"}, shelfGain},
      {{"LOSHELF FREQ", 1, " Hz"}, lowShelfHz},
      {{"HISHELF GAIN", 1, " db"}, shelfGain},
      {{"HISHELF FREQ", 1, " Hz"}, highShelfHz}}},
    {{{{"HIPASS FREQ", 1, " Hz"}, frequency},
      {{"LOPASS FREQ", 1, " Hz"}, frequency},
      {{"GAIN", 1, " %"}, shownInPercent},
      {{"MODE", 0, ""}, driveMode}}},
}};

const Knob* knobAt(int menuPosition, int knob) noexcept {
  const bool known = menuPosition > kMasterOff && menuPosition < kMasterFxMenuEntries &&
                     knob >= 0 && knob < kMasterFxKnobs;
  if (!known) return nullptr;
  return &kKnobs[static_cast<std::size_t>(menuPosition - 1)][static_cast<std::size_t>(knob)];
}

}  // namespace

MasterFxValue masterFxScale(int menuPosition, int knob, double x) noexcept {
  const Knob* known = knobAt(menuPosition, knob);
  return known != nullptr ? known->scale(x) : shownInPercent(x);
}

MasterFxStyle masterFxStyle(int menuPosition, int knob) noexcept {
  const Knob* known = knobAt(menuPosition, knob);
  return known != nullptr ? known->style : MasterFxStyle{};
}

std::string_view masterFxLabel(int menuPosition, int knob, double shown) noexcept {
  const Knob* known = knobAt(menuPosition, knob);
  if (known == nullptr || known->scale != driveMode) return {};
  return fxParamLabel(kDrivePairType, kDrivePairMode, shown);
}

}  // namespace orvantesco
