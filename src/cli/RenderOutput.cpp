#include "cli/RenderOutput.h"

#include <algorithm>

namespace orvantesco::cli {

void RenderOutput::take(const double* left, const double* right, int frames) {
  const std::int64_t before = writesLatency ? 0 : -nextFrame;
  const int skipped = static_cast<int>(std::clamp<std::int64_t>(before, 0, frames));
  for (int i = skipped; i < frames; ++i) {
    measured.take(left[i], right[i]);
    if (nextFrame + i >= tailStart) watch.take(left[i], right[i]);
  }
  nextFrame += frames;
  if (skipped < frames) file.write(left + skipped, right + skipped, frames - skipped);
}

}  // namespace orvantesco::cli
