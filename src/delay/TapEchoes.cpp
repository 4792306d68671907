#include "delay/TapEchoes.h"

#include <algorithm>

#include "delay/TapLanes.h"
#include "fx/VectorLength.h"

namespace orvantesco {

namespace {

/// Where the echoes of one tap are found. Filled before it is read.
/// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
struct Found {
  EchoRow rows[TapEchoes::kMost];
  double copies[TapEchoes::kMost][kVectorLength];  ///< of what the ring holds in two pieces
  int count;
};

/// The echoes that sound; the full swell ends in one of gain 0.
int countSounding(const TapEchoes& echoes, double delay) noexcept {
  int count = echoes.count;
  const auto isSilent = [&](const TapEcho& echo) {
    return delay - echo.back <= 0.0 || echo.gain == 0.0;
  };
  while (count > 0 && isSilent(echoes.list[static_cast<std::size_t>(count - 1)])) --count;
  return count;
}

/// The echoes of one tap lie close together: most often in one written piece of the ring, so that
/// all of them are found from the place of the first, which lies farthest back.
bool findInOnePiece(const DelayRing& ring, const TapEchoes& echoes, double delay,
                    Found& found) noexcept {
  const auto count = static_cast<std::size_t>(found.count);
  const int farthest = static_cast<int>(delay - echoes.list[0].back);
  const int nearest = static_cast<int>(delay - echoes.list[count - 1].back);
  const int first = ring.wrap(ring.writePosition() - farthest - kVectorLength);
  if (!ring.holds(first, farthest - nearest + kVectorLength)) return false;
  const double* const base = ring.data() + first + farthest;
  for (std::size_t k = 0; k < count; ++k) {
    const TapEcho& echo = echoes.list[k];
    found.rows[k] = {base - static_cast<int>(delay - echo.back), echo.gain};
  }
  return true;
}

void findOneByOne(const DelayRing& ring, const TapEchoes& echoes, double delay,
                  Found& found) noexcept {
  const double longest = ring.length() - kVectorLength;
  for (std::size_t k = 0; k < static_cast<std::size_t>(found.count); ++k) {
    const TapEcho& echo = echoes.list[k];
    const int back = static_cast<int>(std::min(delay - echo.back, longest));
    found.rows[k] = {ring.spanBehind(back, kVectorLength, found.copies[k]), echo.gain};
  }
}

}  // namespace

void addEchoes(const DelayRing& ring, const TapEchoes& echoes, double delay,
               double* samples) noexcept {
  // As above. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
  Found found;
  found.count = countSounding(echoes, delay);
  if (found.count == 0) return;
  const double longest = ring.length() - kVectorLength;
  const bool isWithin = delay - echoes.list[0].back <= longest;
  if (!isWithin || !findInOnePiece(ring, echoes, delay, found)) {
    findOneByOne(ring, echoes, delay, found);
  }
  tapLanesFor(TapEchoes::kMost).addRows(found.rows, found.count, samples);
}

}  // namespace orvantesco
