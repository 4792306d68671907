#include "fx/kernels/Level.h"

#include "fx/kernels/LevelTable.h"

namespace orvantesco::kernels {

constinit std::atomic<const KernelTable*> chosenTable{nullptr};

namespace {

/// Null where the build has no such level.
const KernelTable* tableOf(Level level) noexcept {
#if defined(__x86_64__)
  if (level == Level::kAvx2) return &avx2Table;
  if (level == Level::kSse2) return &sse2Table;
#endif
  return level == Level::kScalar ? &scalarTable : nullptr;
}

bool processorHas(Level level) noexcept {
#if defined(__x86_64__)
  if (level == Level::kAvx2) return __builtin_cpu_supports("avx2") != 0;
#endif
  return level <= Level::kSse2;  // every x86-64 has SSE2
}

Level best() noexcept {
  if (supports(Level::kAvx2)) return Level::kAvx2;
  return supports(Level::kSse2) ? Level::kSse2 : Level::kScalar;
}

}  // namespace

bool supports(Level level) noexcept { return tableOf(level) != nullptr && processorHas(level); }

const KernelTable& chooseTable() noexcept {
  // Two threads may meet here; the first one's choice holds, and a test's choice is kept.
  const KernelTable* expected = nullptr;
  const KernelTable* choice = tableOf(best());
  return chosenTable.compare_exchange_strong(expected, choice) ? *choice : *expected;
}

Level levelInForce() noexcept {
  const KernelTable* inForce = &table();
  for (const Level level : {Level::kAvx2, Level::kSse2}) {
    if (inForce == tableOf(level)) return level;
  }
  return Level::kScalar;
}

bool forceLevel(Level level) noexcept {
  if (!supports(level)) return false;
  chosenTable.store(tableOf(level));
  return true;
}

void forgetLevel() noexcept { chosenTable.store(nullptr); }

const char* nameOf(Level level) noexcept {
  switch (level) {
    case Level::kAvx2:
      return "AVX2";
    case Level::kSse2:
      return "SSE2";
    case Level::kScalar:
      break;
  }
  return "scalar";
}

}  // namespace orvantesco::kernels
