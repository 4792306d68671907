#include "host/binding/DryHistory.h"

#include <algorithm>

namespace orvantesco {

namespace {

void copyOrClear(const double* in, double* out, int frames) noexcept {
  if (in == nullptr) {
    std::fill_n(out, frames, 0.0);
  } else {
    std::copy_n(in, frames, out);
  }
}

}  // namespace

void DryHistory::delayed(const double* in, double* out, int frames, int delay) const noexcept {
  const int late = std::clamp(delay, 0, length);
  const int fromHistory = std::min(frames, late);
  const int from = (next - late + length) % length;
  const int beforeTheEnd = std::min(fromHistory, length - from);
  std::copy_n(held.begin() + from, beforeTheEnd, out);
  std::copy_n(held.begin(), fromHistory - beforeTheEnd, out + beforeTheEnd);
  copyOrClear(in, out + fromHistory, frames - fromHistory);
}

void DryHistory::remember(const double* in, int frames) noexcept {
  const int taken = std::min(frames, length);
  const double* const last = in == nullptr ? nullptr : in + (frames - taken);
  const int beforeTheEnd = std::min(taken, length - next);
  copyOrClear(last, held.data() + next, beforeTheEnd);
  copyOrClear(last == nullptr ? nullptr : last + beforeTheEnd, held.data(), taken - beforeTheEnd);
  next = (next + taken) % length;
}

}  // namespace orvantesco
