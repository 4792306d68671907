#include "core/BulkGate.h"

namespace orvantesco {

bool BulkGate::isMine() const noexcept {
  return (isRestoring || isLoading) && worker.load() == std::this_thread::get_id();
}

BulkGate::Operation::Operation(BulkGate& shut, Work work)
    : gate(shut), flag(work == Work::restore ? shut.isRestoring : shut.isLoading) {
  gate.worker.store(std::this_thread::get_id());
  flag.store(true);
  while (gate.audioInside.load()) std::this_thread::yield();
}

BulkGate::Operation::~Operation() {
  gate.worker.store({});
  flag.store(false);
}

}  // namespace orvantesco
