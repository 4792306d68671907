#include "host/LatencyBuffer.h"

#include <algorithm>
#include <utility>

namespace orvantesco {

LatencyBuffer::LatencyBuffer(int channels)
    : rings(static_cast<std::size_t>(std::max(channels, 0))) {
  for (Ring& ring : rings) ring.held.reserve(reservedFrames);
}

void LatencyBuffer::resize(int latencySamples) {
  for (Ring& ring : rings) ring.held.resize(static_cast<std::size_t>(std::max(latencySamples, 0)));
  clear();
}

void LatencyBuffer::clear() noexcept {
  for (Ring& ring : rings) {
    std::fill(ring.held.begin(), ring.held.end(), 0.0);
    ring.next = 0;
  }
}

void LatencyBuffer::process(int channel, const double* in, double* out, int frames) noexcept {
  Ring& ring = rings[static_cast<std::size_t>(channel)];
  if (ring.held.empty()) {
    std::copy_n(in, frames, out);
    return;
  }
  for (int i = 0; i < frames; ++i) {
    out[i] = std::exchange(ring.held[ring.next], in[i]);
    if (++ring.next == ring.held.size()) ring.next = 0;
  }
}

}  // namespace orvantesco
