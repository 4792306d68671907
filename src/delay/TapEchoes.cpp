#include "delay/TapEchoes.h"

#include <algorithm>
#include <span>

#include "delay/TapLanes.h"
#include "fx/VectorLength.h"

namespace orvantesco {

namespace {

/// Room for the echoes that do not stand in the ring in one piece.
using Copies = double[TapEchoes::kMost][kVectorLength];

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
                    std::span<EchoRow> rows) noexcept {
  const int farthest = static_cast<int>(delay - echoes.list[0].back);
  const int nearest = static_cast<int>(delay - echoes.list[rows.size() - 1].back);
  const int first = ring.wrap(ring.writePosition() - farthest - kVectorLength);
  if (!ring.holds(first, farthest - nearest + kVectorLength)) return false;
  const double* const base = ring.data() + first + farthest;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const TapEcho& echo = echoes.list[k];
    rows[k] = {base - static_cast<int>(delay - echo.back), echo.gain};
  }
  return true;
}

void findOneByOne(const DelayRing& ring, const TapEchoes& echoes, double delay,
                  std::span<EchoRow> rows, Copies& copies) noexcept {
  const double longest = ring.length() - kVectorLength;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const TapEcho& echo = echoes.list[k];
    const int back = static_cast<int>(std::min(delay - echo.back, longest));
    rows[k] = {ring.spanBehind(back, kVectorLength, copies[k]), echo.gain};
  }
}

}  // namespace

void addEchoes(const DelayRing& ring, const TapEchoes& echoes, double delay,
               double* samples) noexcept {
  const int count = countSounding(echoes, delay);
  if (count == 0) return;
  // Filled before they are read. NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)
  EchoRow room[TapEchoes::kMost];
  Copies copies;
  // NOLINTEND(cppcoreguidelines-pro-type-member-init)
  const std::span<EchoRow> rows(room, static_cast<std::size_t>(count));
  const double longest = ring.length() - kVectorLength;
  const bool isWithin = delay - echoes.list[0].back <= longest;
  if (!isWithin || !findInOnePiece(ring, echoes, delay, rows)) {
    findOneByOne(ring, echoes, delay, rows, copies);
  }
  tapLanesFor(TapEchoes::kMost).addRows(room, count, samples);
}

}  // namespace orvantesco
