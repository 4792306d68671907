#include "fx/DirectFilter.h"

#include <new>

#include "fx/kernels/IirState.h"

namespace orvantesco {

DirectFilter::DirectFilter() {
  int bytes = 0;
  iirBiquadStateSize(1, &bytes);  // a direct form needs what one section needs
  storage.reset(allocBytes(bytes));
  if (!storage) throw std::bad_alloc();
}

// The initialiser writes to the storage only when it accepts the taps, so on a refusal the old
// handle stays good.
bool DirectFilter::design(const DirectDesign& design) noexcept {
  double taps[kDirectTapCount];
  if (!writeDirectTaps(design, taps)) return false;
  double memory[kIirMaxOrder] = {};
  iirGetDelayLine(state, memory);
  IirState* next = nullptr;
  if (iirInitDirect(&next, taps, design.order, memory, storage.get()) != kStatusOk) return false;
  state = next;
  return true;
}

void DirectFilter::process(const double* in, double* out, int n) noexcept {
  if (state == nullptr) {
    if (out != in) vecCopy(in, out, n);
    return;
  }
  iirFilter(in, out, n, state);
  flushDenormal();
}

void DirectFilter::processPair(Channel first, Channel second, int n) noexcept {
  DirectFilter& a = first.filter;
  DirectFilter& b = second.filter;
  if (a.state == nullptr || b.state == nullptr) {
    a.process(first.buffer, first.buffer, n);
    b.process(second.buffer, second.buffer, n);
    return;
  }
  iirFilterPair(first.buffer, a.state, second.buffer, b.state, n);
  a.flushDenormal();
  b.flushDenormal();
}

// What lies below the rounding of 1e-15 vanishes. The first element of the memory is the one that
// the others drain into, so flushing it is enough.
void DirectFilter::flushDenormal() noexcept {
  double& head = state->direct.s[0];
  head += 1e-15;
  head -= 1e-15;
}

}  // namespace orvantesco
