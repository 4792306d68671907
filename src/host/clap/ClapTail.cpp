#include "host/clap/ClapTail.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvantesco {
namespace {

constexpr std::uint32_t kEndless = std::numeric_limits<std::int32_t>::max();

std::uint32_t framesIn(std::uint64_t counted) noexcept {
  return static_cast<std::uint32_t>(counted);
}

bool isQuiet(const double* samples, int frames) noexcept {
  return std::all_of(samples, samples + frames,
                     [](double sample) { return std::abs(sample) < ClapTail::silence; });
}

bool areQuiet(double* const* channels, int channelCount, int frames) noexcept {
  return std::all_of(channels, channels + channelCount,
                     [frames](const double* channel) { return isQuiet(channel, frames); });
}

}  // namespace

void ClapTail::prepare(double rateHz) noexcept {
  rate = rateHz;
  settings.fetch_add(1, std::memory_order_relaxed);
  forget();
}

std::uint32_t ClapTail::frames() noexcept {
  const std::uint64_t now = settings.load(std::memory_order_relaxed);
  const std::uint64_t known = counted;
  if (known >> 32 == now) return framesIn(known);
  const double echoes = bypassed ? 0.0 : std::ceil(effect.tailSeconds() * rate);
  const double tail = echoes + effect.latency;
  const std::uint32_t found = tail < kEndless ? static_cast<std::uint32_t>(tail) : kEndless;
  counted = now << 32 | found;
  return found;
}

bool ClapTail::hasNews() noexcept {
  const std::uint32_t now = framesIn(counted);
  return std::exchange(lastNews, now) != now;
}

void ClapTail::count(std::int64_t& quietFrames, bool quiet, int frameCount) noexcept {
  quietFrames = quiet ? quietFrames + frameCount : 0;
}

void ClapTail::hear(const AudioBlock& block) noexcept {
  const bool quiet = areQuiet(block.inputs, block.inputCount, block.frames) &&
                     (block.sideChain == nullptr || isQuiet(block.sideChain, block.frames));
  count(quietInput, quiet, block.frames);
}

void ClapTail::lookBehindSilence(const AudioBlock& block) noexcept {
  count(quietOutput, areQuiet(block.outputs, block.outputCount, block.frames), block.frames);
}

clap_process_status ClapTail::status() noexcept {
  const bool settled = !moved;
  moved = false;
  if (quietInput == 0 || !settled) return CLAP_PROCESS_CONTINUE;
  const std::uint32_t tail = frames();
  if (tail == kEndless) return CLAP_PROCESS_CONTINUE;
  if (quietInput <= tail) return CLAP_PROCESS_TAIL;
  // Noise of an effect's own goes on for as long as anybody listens.
  return quietOutput > tail ? CLAP_PROCESS_SLEEP : CLAP_PROCESS_CONTINUE;
}

}  // namespace orvantesco
