#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace orvantesco::testing_support {

/// What each knob of each effect says and does, typed independently of the catalogue.
struct ShownAndControl {
  double shown;
  double control;
};
using Rule = std::function<ShownAndControl(double)>;

struct KnobCell {
  std::string name;
  std::string unit;
  Rule rule;
};

struct EffectRow {
  std::vector<int> ids;
  std::vector<KnobCell> knobs;
};

inline ShownAndControl P(double x) { return {x * 100, x}; }
inline ShownAndControl B(double x) { return {(2 * x - 1) * 100, 2 * x - 1}; }
inline ShownAndControl F(double x) { return {50 * std::exp(x * std::log(400.0)), x}; }

inline Rule same(const std::function<double(double)>& rule) {
  return [rule](double x) { return ShownAndControl{rule(x), rule(x)}; };
}
inline Rule shownOnly(const std::function<double(double)>& rule) {
  return [rule](double x) { return ShownAndControl{rule(x), x}; };
}
/// A selection: the entry is the nearest, halves away from zero.
inline Rule pick(const std::vector<double>& controls) {
  return [controls](double x) {
    const double entry = std::floor(static_cast<double>(controls.size() - 1) * x + 0.5);
    return ShownAndControl{entry, controls[static_cast<size_t>(entry)]};
  };
}
inline double away(double v) { return v < 0 ? -std::floor(-v + 0.5) : std::floor(v + 0.5); }

inline std::vector<EffectRow> expectedEffectRows() {
  const Rule semitone = [](double x) { return ShownAndControl{away(12 * (2 * x - 1)), 2 * x - 1}; };
  const Rule buffer = same([](double x) { return x * x * 99 + 1; });
  const Rule gain24 = shownOnly([](double x) { return 24 * x; });
  const Rule shaperMode = pick({26, 0, 3, 6, 20});
  const Rule multiMode = pick({0, 3, 6, 20});
  const Rule slope4 = same([](double x) { return std::floor(3 * x + 0.5); });
  return {
      {{1},
       {{"FREQ SHIFT", " Hz", shownOnly([](double x) { return 2 * x - 1; })},
        {"FREQSHIFT SCALE", " x", same([](double x) {
           return x < 0.5 ? 10.0 : x < 1.0 ? 100.0 : 1000.0;
         })},
        {"FRQ SHIFT FB", " %", P},
        {"FRQ SHIFT SPREAD", " %", B},
        {"FREQSHIFT MIX", " %", P}}},
      {{2},
       {{"RINGMOD FREQ", " Hz", shownOnly([](double x) { return std::pow(x, 4) * 4999.9 + 0.1; })},
        {"RINGMOD SHAPE", " %", P},
        {"RINGMOD WIDTH", " %", P},
        {"RINGMOD SPREAD", " %", B},
        {"RINGMOD MIX", " %",
         [](double x) {
           return ShownAndControl{100 * x, x * x};
         }}}},
      {{3},
       {{"PHASE BASE", " %", P},
        {"PHASE DEPTH", " %", P},
        {"PHASE STAGES", "", same([](double x) { return std::floor(7 * x + 0.5) + 1; })},
        {"PHASE SPREAD", " %", B},
        {"PHASE FEEDBACK", " %", P}}},
      {{4},
       {{"PITCH COARSE", " ST", semitone},
        {"PITCH FINE", " CNT", B},
        {"PITCH BUF SIZE", " ms", buffer},
        {"PITCH SPREAD", " %", B},
        {"PITCH SHIFT MIX", " %", P}}},
      {{5},
       {{"PITCH1 COARSE ", " ST", semitone},
        {"PITCH2 COARSE", " ST", semitone},
        {"PITCH BUF SIZE", " ms", buffer},
        {"PITCH DETUNE", " %", P},
        {"PITCH SHIFT MIX", " %", P}}},
      {{6},
       {{"SHAPE MODE", "", pick({14, 7, 16, 9, 10, 11, 12, 13})},
        {"GAIN", " dB", gain24},
        {"FILTER FREQ", " Hz", F},
        {"FILTER Q", " %", shownOnly([](double x) { return 100 * x - 0.1; })},
        {"SHAPE FILTER SPREAD", " %", B}}},
      {{14, 16, 18, 20},
       {{"SHAPE AMOUNT ", " %", P},
        {"SHAPER FILTER FREQ", " HZ", F},
        {"FILTER RES", " %", P},
        {"SHAPE FILTER SPREAD", " %", B},
        {"SHAPE MIX ", " %", P}}},
      {{15, 17, 19, 21},
       {{"SHAPE AMOUNT ", " %", P},
        {"SHAPER FILTER FREQ", " HZ", F},
        {"FILTER MODE", "", shaperMode},
        {"SHAPE FILTER SPREAD", " %", B},
        {"SHAPE MIX ", " %", P}}},
      {{23},
       {{"LOFI AMOUNT ", " %", P},
        {"LOFI FILTER FREQ", " HZ", F},
        {"LOFI RES", " %", P},
        {"LOFI FILTER SPREAD", " %", B},
        {"LOFI MIX ", " %", P}}},
      {{24},
       {{"LOFI AMOUNT ", " %", P},
        {"LOFI FILTER FREQ", " HZ", F},
        {"FILTER MODE", "", shaperMode},
        {"LOFI FILTER SPREAD", " %", B},
        {"LOFI MIX ", " %", P}}},
      {{22},
       {{"LOFI DRIVE ", "", P},
        {"LOFI NOISE", " %", P},
        {"LOFI DOWNSAMPLE", " %", P},
        {"LOFI BITCRUSH", " %", P},
        {"LOFI MIX ", " %", P}}},
      {{29},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER Q", " %", P},
        {"FILTER SPREAD", " %", B},
        {"FILTER MODE", "", pick({0, 3, 6, 7})},
        {"FILTER MIX", " %", P}}},
      {{30},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER Q", " %", P},
        {"FILTER SPREAD", " %", B},
        {"FILTER MODE", "", pick({16, 19})},
        {"FILTER MIX", " %", P}}},
      {{31},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER Q", " %", P},
        {"FILTER SPREAD", " %", B},
        {"FILTER MODE", "", multiMode},
        {"FILTER MIX", " %", P}}},
      {{32},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER SLOPE", "", shownOnly([](double x) { return 3 * x; })},
        {"FILTER SPREAD", " %", B},
        {"FILTER MODE", "", multiMode},
        {"FILTER MIX", " %", P}}},
      {{33},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER Q", " %", P},
        {"FILTER SPREAD", " %", B},
        {"PEAK GAIN", " dB", shownOnly([](double x) { return away(24 * (2 * x - 1)); })},
        {"DIM", " %", P}}},
      {{34},
       {{"PHASEBP FILTER FREQ", " HZ", F},
        {"FILTER Q", " %", P},
        {"FILTER SPREAD", " %", B},
        {"FILTER POLES", "", shownOnly([](double x) { return std::floor(4 * x + 3.5); })},
        {"FRQ SHIFT SPREAD", " %", P}}},
      {{35},
       {{"COMB FRQ", " Hz", shownOnly([](double x) { return std::exp(4 * x * std::log(10.0)); })},
        {"COMB FEEDBACK", " %", P},
        {"COMB HIPASS", " Hz", F},
        {"COMB LOPASS", " Hz", F},
        {"COMB SPREAD", " %", B}}},
      {{36},
       {{"VOWEL POS", " %", P},
        {"VOWEL SET", "", shownOnly([](double x) { return std::floor(3 * x + 1.5); })},
        {"VOWEL SPREAD", " %", B},
        {"VOWEL GAIN", " dB", gain24},
        {"VOWEL DIM", " %", P}}},
      {{37},
       {{"COMP THRESHOLD", " dB",
         [](double x) {
           return ShownAndControl{-50 * x * x, std::exp(-50 * x * x * std::log(10.0) / 20)};
         }},
        {"COMP RATIO", " : 1", same([](double x) { return x * x * x * 9 + 1; })},
        {"COMP ATTACK", " ms", same([](double x) { return x * x * 199 + 1; })},
        {"COMP RELEASE", " ms", same([](double x) { return x * 980 + 20; })},
        {"COMP GAIN", " dB", gain24}}},
      {{56},
       {{"FILTER FREQ", " HZ", F},
        {"FILTER FREQ", " HZ", F},
        {"GAIN", " %", P},
        {"FILTER MODE", "", same([](double x) { return std::floor(5 * x + 0.5); })},
        {"FILTER MIX", " %", P}}},
      {{57},
       {{"HP FREQ", " HZ", F},
        {"HP SLOPE", "", slope4},
        {"LP FREQ", " HZ", F},
        {"LP SLOPE", "", slope4},
        {"FILTER MIX", " %", P}}},
  };
}

}  // namespace orvantesco::testing_support
