#include "host/clap/ClapHostPort.h"

namespace orvantesco {

void ClapHostPort::latencyChanged(int samples) noexcept {
  const bool isNews = samples != latency;
  latency = samples;
  if (isNews && !latencyMayChange) host.requestRestart();
}

void ClapHostPort::beginParamChange(int paramIdx) {
  push({HostChange::Kind::begin, paramIdx, 0.0});
}

void ClapHostPort::informParamChange(int paramIdx, double normalized) {
  push({HostChange::Kind::value, paramIdx, normalized});
}

void ClapHostPort::endParamChange(int paramIdx) { push({HostChange::Kind::end, paramIdx, 0.0}); }

void ClapHostPort::followParamChange(int paramIdx) noexcept {
  if (followed.note(paramIdx)) askToFetch();
}

void ClapHostPort::push(const HostChange& change) noexcept {
  if (!changes.push(change)) postDuty(kRescanValues);
  askToFetch();
}

void ClapHostPort::askToFetch() const noexcept {
  if (visitor.load(std::memory_order_relaxed) != std::this_thread::get_id()) host.requestFlush();
}

void ClapHostPort::postDuty(unsigned bits) noexcept {
  const unsigned before = duties.fetch_or(bits, std::memory_order_relaxed);
  if ((before & bits) != bits) host.requestCallback();
}

}  // namespace orvantesco
