#include "host/clap/ClapHostPort.h"

namespace orvantesco {

void ClapHostPort::latencyChanged(int samples) noexcept {
  const bool isNews = samples != latency;
  latency = samples;
  if (isNews && !latencyMayChange) host.requestRestart();
}

void ClapHostPort::beginParamChange(int paramIdx) {
  if (push({HostChange::Kind::begin, paramIdx, 0.0})) gestures.begin(paramIdx);
}

void ClapHostPort::informParamChange(int paramIdx, double normalized) {
  if (!push({HostChange::Kind::value, paramIdx, normalized})) postDuty(kRescanValues);
}

void ClapHostPort::endParamChange(int paramIdx) {
  if (gestures.end(paramIdx)) push({HostChange::Kind::end, paramIdx, 0.0});
}

void ClapHostPort::followParamChange(int paramIdx) noexcept {
  if (followed.note(paramIdx)) askToFetch();
}

/// False where there is no room.
bool ClapHostPort::push(const HostChange& change) noexcept {
  const bool isTaken = changes.push(change);
  askToFetch();
  return isTaken;
}

void ClapHostPort::askToFetch() const noexcept {
  if (visitor.load(std::memory_order_relaxed) != std::this_thread::get_id()) host.requestFlush();
}

void ClapHostPort::postDuty(unsigned bits) noexcept {
  const unsigned before = duties.fetch_or(bits, std::memory_order_relaxed);
  if ((before & bits) != bits) host.requestCallback();
}

}  // namespace orvantesco
