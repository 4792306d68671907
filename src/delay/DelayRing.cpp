#include "delay/DelayRing.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "delay/CleanCopy.h"
#include "fx/Kernels.h"

namespace orvantesco {

DelayRing::~DelayRing() { vecFree(memory); }

void DelayRing::allocate(int samples) {
  const int wanted = std::max(samples, 2 * kGuard);
  double* fresh = allocDoubles(wanted + kGuard);
  if (fresh == nullptr) throw std::bad_alloc();
  vecFree(memory);
  memory = fresh;
  ringLength = wanted;
  reset();
}

void DelayRing::reset() noexcept {
  position = 0;
  readableEnd = 0;
  quiet = true;
}

void DelayRing::write(const double* source, int n) noexcept {
  assert(n <= kGuard);
  const int first = std::min(n, ringLength - position);
  const bool endIsQuiet = cleanCopy(source, memory + position, first);
  const bool startIsQuiet = cleanCopy(source + first, memory, n - first);
  quiet = quiet && endIsQuiet && startIsQuiet;
  position += n;
  if (position >= ringLength) {
    position -= ringLength;
    readableEnd = ringLength + kGuard;
  }
  if (!full()) {
    readableEnd = position;
  } else if (position < 2 * kGuard) {
    std::copy_n(memory, kGuard, memory + ringLength);
  }
}

int DelayRing::wrapFar(int index) const noexcept {
  const int rest = index % ringLength;
  return rest < 0 ? rest + ringLength : rest;
}

const double* DelayRing::fillSpan(int first, int n, double* scratch) const noexcept {
  for (int filled = 0; filled < n;) {
    const int from = wrap(first + filled);
    const int piece = std::min(n - filled, ringLength - from);
    const int written = std::clamp(readableEnd - from, 0, piece);
    std::copy_n(memory + from, written, scratch + filled);
    std::fill_n(scratch + filled + written, piece - written, 0.0);
    filled += piece;
  }
  return scratch;
}

}  // namespace orvantesco
