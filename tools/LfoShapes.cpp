#include "LfoShapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "mod/WaveRecord.h"

namespace orvantesco {

namespace {

constexpr int kLength = WaveRecord::kLength;
constexpr double kPi = std::numbers::pi;

/// Part of the cycle, 0 up to but not including 1: for what repeats.
double part(int entry) { return static_cast<double>(entry) / kLength; }

/// Part of the way, 0 at the first entry and 1 at the last: for what runs from end to end.
double way(int entry) { return static_cast<double>(entry) / (kLength - 1); }

double sine(int entry, int cycles = 1) { return std::sin(2.0 * kPi * cycles * part(entry)); }

/// Number of the step, 0..count-1.
int stepOf(int entry, int count) { return entry * count / kLength; }

/// A value for each step, -1 for the first and +1 for the last.
double stairs(int entry, int count) { return 2.0 * stepOf(entry, count) / (count - 1) - 1.0; }

/// 0 to 1 with level ends.
double smoothStep(double x) { return x * x * (3.0 - 2.0 * x); }

template <class Wave>
double peakOf(Wave wave) {
  double peak = 0.0;
  for (int i = 0; i < kLength; ++i) peak = std::max(peak, std::fabs(wave(i)));
  return peak;
}

/// A sine with its n-th harmonic at half its level on it: n ripples on one slow swing.
template <int n>
double rippledSine(int entry) {
  static const auto wave = [](int i) { return sine(i) + 0.5 * sine(i, n); };
  static const double peak = peakOf(wave);
  return wave(entry) / peak;
}

/// +1 for one n-th of the cycle, then -1.
template <int n>
double pulse(int entry) {
  return entry * n < kLength ? 1.0 : -1.0;
}

double sawSine(int entry) { return std::cos(kPi * way(entry)); }

double cubicSaw(int entry) {
  const double x = 1.0 - 2.0 * way(entry);
  return x * x * x;
}

double steppedSine(int entry) {
  constexpr int kSteps = 12;
  const auto wave = [](int step) { return std::sin(2.0 * kPi * (step + 0.5) / kSteps); };
  return std::clamp(wave(stepOf(entry, kSteps)) / wave(kSteps / 4), -1.0, 1.0);
}

double ramp(int entry) { return 2.0 * way(entry) - 1.0; }

double triangle(int entry) { return 1.0 - 4.0 * std::fabs(part(entry) - 0.5); }

/// A ramp in the first half; in the second a pulse of a quarter behind a quarter of rest.
double rampPulse(int entry) {
  constexpr int kHalf = kLength / 2;
  if (entry < kHalf) return 2.0 * entry / (kHalf - 1) - 1.0;
  return entry < kHalf + kHalf / 2 ? -1.0 : 1.0;
}

double exponentialFall(int entry) {
  constexpr double kSteepness = 5.0;
  const double end = std::exp(-kSteepness);
  return 1.97 * (std::exp(-kSteepness * way(entry)) - end) / (1.0 - end) - 1.0;
}

/// Four tones of a phrase, each reached by a slide from the one before and then held.
double slide(int entry) {
  constexpr std::array<double, 4> kTones{-1.0, 1.0, -1.0 / 3.0, 1.0 / 3.0};
  const auto tone = static_cast<std::size_t>(stepOf(entry, 4));
  const double before = kTones[(tone + 3) % 4];
  const double sliding = std::min(1.0, 2.0 * (4.0 * part(entry) - static_cast<double>(tone)));
  return before + (kTones[tone] - before) * smoothStep(sliding);
}

/// The swing of a ride cymbal: a stroke on one, an accent on two, and the last triplet behind it.
double ride(int entry) {
  struct Stroke {
    double start, level;
  };
  constexpr std::array<Stroke, 3> kStrokes{{{0.0, 0.7}, {0.5, 1.0}, {5.0 / 6.0, 0.5}}};
  Stroke last = kStrokes[0];
  for (const Stroke& stroke : kStrokes) {
    if (part(entry) >= stroke.start) last = stroke;
  }
  return 2.0 * last.level * std::exp(-7.0 * (part(entry) - last.start)) - 1.0;
}

/// The rings of a drop that has fallen into still water.
double pool(int entry) {
  static const auto wave = [](int i) { return std::exp(-4.0 * part(i)) * sine(i, 6); };
  static const double peak = peakOf(wave);
  return wave(entry) / peak;
}

/// One hump of a sine, then rest.
double sinePulse(int entry) {
  return entry < kLength / 2 ? 2.0 * std::sin(2.0 * kPi * part(entry)) - 1.0 : -1.0;
}

/// A still of what sample and hold does. The levels are those of a fixed small generator.
double sampleAndHold(int entry) {
  unsigned state = 7;
  for (int step = 0; step <= stepOf(entry, 16); ++step) state = (state * 75 + 74) % 65537;
  return 2.0 * state / 65536.0 - 1.0;
}

double trapezoid(int entry) { return std::clamp(2.0 * triangle(entry), -1.0, 1.0); }

double cubedSine(int entry) { return std::pow(sine(entry), 3.0); }

double arches(int entry) { return 2.0 * std::fabs(sine(entry)) - 1.0; }

double foldedSine(int entry) { return std::sin(1.5 * kPi * sine(entry)); }

/// Two stairs up, one down.
double zigzagStairs(int entry) {
  constexpr std::array<double, 8> kStairs{0, 2, 1, 3, 2, 4, 3, 5};
  return kStairs[static_cast<std::size_t>(stepOf(entry, 8))] / 2.5 - 1.0;
}

double chirp(int entry) { return std::sin(8.0 * kPi * part(entry) * part(entry)); }

constexpr LfoShape kShapes[] = {
    // Offered, in the order of the menu.
    {0, "SIN1", [](int entry) { return sine(entry); }},
    {1, "SIN2", rippledSine<2>},
    {2, "SIN3", rippledSine<3>},
    {3, "SIN4", rippledSine<4>},
    {4, "SIN5", rippledSine<5>},
    {5, "SIN6", rippledSine<6>},
    {6, "SIN7", rippledSine<7>},
    {7, "SIN8", rippledSine<8>},
    {9, "SAWSIN", sawSine},
    {10, "SAW2", cubicSaw},
    {11, "STEPSIN", steppedSine},
    {12, "RAMP", ramp},
    {13, "TRIANGLE", triangle},
    {14, "RAMPPULSE", rampPulse},
    {15, "EXPFALL", exponentialFall},
    {33, "SLIDE", slide},
    {32, "THE RIDE", ride},
    {16, "POOL", pool},
    {17, "HALFPULSE", pulse<2>},
    {34, "1/3 PULSE", pulse<3>},
    {35, "1/4 PULSE", pulse<4>},
    {36, "1/8 PULSE", pulse<8>},
    {37, "1/16 PULSE", pulse<16>},
    {18, "SINPULSE", sinePulse},
    {19, "STAIR3", [](int entry) { return stairs(entry, 3); }},
    {20, "STEP8", [](int entry) { return stairs(entry, 8); }},
    {38, "S&H", sampleAndHold},
    // In the table, but in no menu.
    {8, "TRAPEZOID", trapezoid},
    {21, "WAVE1", cubedSine},
    {22, "WAVE2", arches},
    {26, "WAVE6", foldedSine},
    {29, "WAVE9", zigzagStairs},
    {30, "WAVE10", chirp},
};

}  // namespace

std::span<const LfoShape> lfoShapes() { return kShapes; }

}  // namespace orvantesco
