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
  std::copy_n(held.end() - late, fromHistory, out);
  copyOrClear(in, out + fromHistory, frames - fromHistory);
}

void DryHistory::remember(const double* in, int frames) noexcept {
  const int taken = std::min(frames, length);
  std::copy(held.begin() + taken, held.end(), held.begin());
  copyOrClear(in == nullptr ? in : in + (frames - taken), held.data() + (length - taken), taken);
}

}  // namespace orvantesco
