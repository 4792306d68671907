#include "fx/BiquadCascade.h"

#include <algorithm>

namespace orvantesco {

namespace {

constexpr int kSamplesAtOnce = 4;

/// What one event, an impulse or a value in the memory, leaves behind: the outputs of four steps
/// and the memory after each number of steps.
struct Trace {
  double y[kSamplesAtOnce] = {};
  double p[kSamplesAtOnce + 1] = {};
  double q[kSamplesAtOnce + 1] = {};
};

/// The section with a0 = 1, its taps rounded as a plain recursion would have them.
BiquadSection normalised(const BiquadSection& section) noexcept {
  const double a0 = section.a0;
  return {section.b0 / a0, section.b1 / a0, section.b2 / a0, 1.0, section.a1 / a0, section.a2 / a0};
}

/// The recursion as it stands, in extended precision, so that what is solved ahead is rounded
/// once.
Trace traceOf(const BiquadSection& section, double impulse, double memory) noexcept {
  const long double b0 = section.b0;
  const long double b1 = section.b1;
  const long double b2 = section.b2;
  const long double a1 = section.a1;
  const long double a2 = section.a2;
  long double x = impulse;
  long double p = memory;
  long double q = 0.0L;
  Trace trace;
  for (int i = 0; i < kSamplesAtOnce; ++i) {
    const long double y = b0 * x + p;
    p = q + b1 * x - a1 * y;
    q = b2 * x - a2 * y;
    x = 0.0L;
    trace.y[i] = static_cast<double>(y);
    trace.p[i + 1] = static_cast<double>(p);
    trace.q[i + 1] = static_cast<double>(q);
  }
  return trace;
}

}  // namespace

/// The same event, `delay` steps later (0..3).
BiquadCascade::Rows BiquadCascade::delayed(const double* y, Lanes memory, int delay) noexcept {
  const auto output = [&](int i) { return i < delay ? 0.0 : y[i - delay]; };
  return {Lanes{output(0), output(1)}, Lanes{output(2), output(3)}, memory};
}

BiquadCascade::Section BiquadCascade::solved(const BiquadSection& section) noexcept {
  const BiquadSection taps = normalised(section);
  const Trace input = traceOf(taps, 1.0, 0.0);
  const Trace memory = traceOf(taps, 0.0, 1.0);
  const auto after = [](const Trace& trace, int delay) {
    const int steps = kSamplesAtOnce - delay;
    return delayed(trace.y, Lanes{trace.p[steps], trace.q[steps]}, delay);
  };
  Section result;
  for (int at = 0; at < kSamplesAtOnce; ++at) result.fromInput[at] = after(input, at);
  result.fromP = after(memory, 0);
  result.fromQ = after(memory, 1);  // q becomes p one step later, and nothing else
  return result;
}

void BiquadCascade::design(const BiquadSection* sections, int distinct, int count) noexcept {
  distinctCount = std::clamp(distinct, 1, kMaxDistinct);
  sectionCount = std::clamp(count, 1, kMaxSections);
  for (int i = 0; i < distinctCount; ++i) distinctSections[i] = solved(sections[i]);
}

void BiquadCascade::clear() noexcept { std::fill_n(memories, kMaxSections, Lanes{}); }

Lanes BiquadCascade::run(const Section& section, Lanes memory, const double* in,
                         double* out) noexcept {
  const Section s = section;
  for (int i = 0; i < kVectorLength; i += kSamplesAtOnce) {
    const Lanes x0 = bothLanes(in[i]);
    const Lanes x1 = bothLanes(in[i + 1]);
    const Lanes x2 = bothLanes(in[i + 2]);
    const Lanes x3 = bothLanes(in[i + 3]);
    const Lanes p = bothLanes(memory[0]);
    const Lanes q = bothLanes(memory[1]);
    const auto fromMemory = [&](Lanes Rows::*row) __attribute__((always_inline)) {
      return s.fromQ.*row * q + s.fromP.*row * p;
    };
    const auto fromEarly = [&](Lanes Rows::*row) __attribute__((always_inline)) {
      return s.fromInput[0].*row * x0 + s.fromInput[1].*row * x1;
    };
    const auto fromLate = [&](Lanes Rows::*row) __attribute__((always_inline)) {
      return s.fromInput[2].*row * x2 + s.fromInput[3].*row * x3;
    };
    const auto all = [&](Lanes Rows::*row) __attribute__((always_inline)) {
      return (fromEarly(row) + fromLate(row)) + fromMemory(row);
    };
    storeLanes(fromEarly(&Rows::first) + fromMemory(&Rows::first), out + i);
    storeLanes(all(&Rows::second), out + i + 2);
    memory = all(&Rows::memory);
  }
  return memory;
}

void BiquadCascade::process(const double* in, double* out) noexcept {
  if (sectionCount == 0 && out != in) std::copy_n(in, kVectorLength, out);
  const double* from = in;
  const Lanes offset = bothLanes(1e-15);
  for (int i = 0, which = 0; i < sectionCount; ++i) {
    const Lanes memory = run(distinctSections[which], memories[i], from, out);
    // What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
    memories[i] = (memory + offset) - offset;
    from = out;
    which = which + 1 < distinctCount ? which + 1 : 0;
  }
}

}  // namespace orvantesco
