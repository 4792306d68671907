#include "core/EffectPosition.h"

namespace orvantesco {

EffectPosition::~EffectPosition() {
  delete incoming.load();
  freeRetired();
  delete running;
}

void EffectPosition::handOver(std::unique_ptr<EffectInstances> instances) {
  // What the audio thread did not get to take was never run: it can go at once.
  delete incoming.exchange(instances.release(), std::memory_order_acq_rel);
  freeRetired();
}

void EffectPosition::freeRetired() {
  EffectInstances* set = retired.exchange(nullptr, std::memory_order_acquire);
  while (set != nullptr) {
    const std::unique_ptr<EffectInstances> owned(set);
    set = owned->nextRetired;
  }
}

bool EffectPosition::takeIncoming() noexcept {
  if (incoming.load(std::memory_order_relaxed) == nullptr) return false;
  EffectInstances* next = incoming.exchange(nullptr, std::memory_order_acq_rel);
  if (next == nullptr) return false;
  if (running != nullptr) {
    running->nextRetired = retired.load(std::memory_order_relaxed);
    while (!retired.compare_exchange_weak(running->nextRetired, running, std::memory_order_release,
                                          std::memory_order_relaxed)) {
    }
  }
  running = next;
  return true;
}

}  // namespace orvantesco
