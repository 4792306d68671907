#include "fx/kernels/Level.h"

#include <atomic>

#include "fx/kernels/KernelList.h"
#include "fx/kernels/LevelTables.h"

namespace orvantesco::kernels {

namespace {

void choose() noexcept;

/// What stands in a table before the level is chosen: chooses it and goes on to the real loop.
template <auto entry>
struct FirstCall;

template <class Result, class... Arguments, Loop<Result(Arguments...)> KernelTable::*entry>
struct FirstCall<entry> {
  static Result anyLength(Arguments... arguments) noexcept {
    choose();
    return (active.*entry).anyLength.get()(arguments...);
  }
  static Result audioVector(Arguments... arguments) noexcept {
    choose();
    return (active.*entry).audioVector.get()(arguments...);
  }
};

template <class Result, class... Arguments, Entry<Result(Arguments...)> KernelTable::*entry>
struct FirstCall<entry> {
  static Result run(Arguments... arguments) noexcept {
    choose();
    return (active.*entry).get()(arguments...);
  }
};

constexpr KernelTable makeFirstCallTable() noexcept {
#define ORVANTESCO_ENTRY(entry, Body, Pack, loop) \
  .entry = {FirstCall<&KernelTable::entry>::anyLength, FirstCall<&KernelTable::entry>::audioVector},
#define ORVANTESCO_ENTRY_FILTER(entry) .entry = FirstCall<&KernelTable::entry>::run,
  return {ORVANTESCO_KERNEL_LOOPS(ORVANTESCO_ENTRY)
              ORVANTESCO_KERNEL_FILTERS(ORVANTESCO_ENTRY_FILTER)};
#undef ORVANTESCO_ENTRY
#undef ORVANTESCO_ENTRY_FILTER
}

constinit const KernelTable firstCallTable = makeFirstCallTable();

void activate(const KernelTable& table) noexcept {
#define ORVANTESCO_ENTRY(entry, ...) active.entry.set(table.entry);
  ORVANTESCO_KERNEL_LOOPS(ORVANTESCO_ENTRY)
  ORVANTESCO_KERNEL_FILTERS(ORVANTESCO_ENTRY)
#undef ORVANTESCO_ENTRY
}

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

/// Two threads may meet here; both write the same table.
void choose() noexcept { activate(*tableOf(best())); }

bool isActive(const KernelTable& table) noexcept { return active.add.of(0) == table.add.of(0); }

}  // namespace

constinit KernelTable active = makeFirstCallTable();

bool supports(Level level) noexcept { return tableOf(level) != nullptr && processorHas(level); }

bool isChosen() noexcept { return !isActive(firstCallTable); }

Level levelInForce() noexcept {
  if (!isChosen()) choose();
  for (const Level level : {Level::kAvx2, Level::kSse2}) {
    const KernelTable* table = tableOf(level);
    if (table != nullptr && isActive(*table)) return level;
  }
  return Level::kScalar;
}

bool forceLevel(Level level) noexcept {
  if (!supports(level)) return false;
  activate(*tableOf(level));
  return true;
}

void forgetLevel() noexcept { activate(firstCallTable); }

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
