#include "fx/IirFilter.h"

#include <algorithm>
#include <new>

#include "fx/kernels/IirState.h"

namespace orvantesco {

namespace {

constexpr int kTapsPerSection = 6;
constexpr double kLeastLead = 1e-20;

void writeTaps(const BiquadSection& section, double* taps) noexcept {
  taps[0] = section.b0 == 0.0 ? kLeastLead : section.b0;
  taps[1] = section.b1;
  taps[2] = section.b2;
  taps[3] = section.a0;
  taps[4] = section.a1;
  taps[5] = section.a2;
}

}  // namespace

IirFilter::IirFilter() {
  int bytes = 0;
  iirBiquadStateSize(kMaxSections, &bytes);
  storage.reset(allocBytes(bytes));
  if (!storage) throw std::bad_alloc();
}

// The initialisers write to the storage only when they accept the taps, so on a refusal the old
// handle stays good.
bool IirFilter::designCascade(const BiquadSection* sections, int count) noexcept {
  if (count < 1 || count > kMaxSections) return false;
  double taps[kMaxSections * kTapsPerSection];
  for (int i = 0; i < count; ++i) writeTaps(sections[i], taps + i * kTapsPerSection);
  double memory[kMaxMemory];
  copyMemory(memory);
  IirState* next = nullptr;
  if (iirInitBiquads(&next, taps, count, memory, storage.get()) != kStatusOk) return false;
  state = next;
  return true;
}

bool IirFilter::designDirect(const DirectDesign& design) noexcept {
  double taps[kDirectTapCount];
  if (!writeDirectTaps(design, taps)) return false;
  double memory[kMaxMemory];
  copyMemory(memory);
  IirState* next = nullptr;
  if (iirInitDirect(&next, taps, design.order, memory, storage.get()) != kStatusOk) return false;
  state = next;
  return true;
}

void IirFilter::copyMemory(double* dst) const noexcept {
  std::fill_n(dst, kMaxMemory, 0.0);
  iirGetDelayLine(state, dst);
}

void IirFilter::process(const double* in, double* out, int n) noexcept {
  if (state == nullptr) {
    if (out != in) vecCopy(in, out, n);
    return;
  }
  iirFilter(in, out, n, state);
  flushDenormal();
}

void IirFilter::processPair(IirFilter& first, double* firstInOut, IirFilter& second,
                            double* secondInOut, int n) noexcept {
  if (first.state == nullptr || second.state == nullptr) {
    first.process(firstInOut, firstInOut, n);
    second.process(secondInOut, secondInOut, n);
    return;
  }
  iirFilterPair(firstInOut, first.state, secondInOut, second.state, n);
  first.flushDenormal();
  second.flushDenormal();
}

// What lies below the rounding of 1e-15 vanishes. The first element of the memory is the one that
// the others drain into, so flushing it is enough.
void IirFilter::flushDenormal() noexcept {
  double& head = state->order > 0 ? state->direct.s[0] : state->group.s1[0];
  head += 1e-15;
  head -= 1e-15;
}

}  // namespace orvantesco
