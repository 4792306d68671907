#pragma once

#include "fx/kernels/KernelList.h"
#include "fx/kernels/KernelTable.h"
#include "fx/kernels/ReductionBody.h"
#include "fx/kernels/VectorBody.h"

namespace orvantesco::kernels {

/// The table of a level that names its packs, `Doubles` and `Floats`, and its `Filters`.
template <class Level>
constexpr KernelTable makeTable() noexcept {
#define ORVANTESCO_ENTRY(entry, Body, Pack, loop)         \
  .entry = {Body<typename Level::Pack, kAnyLength>::loop, \
            Body<typename Level::Pack, kVectorLength>::loop},
#define ORVANTESCO_ENTRY_FILTER(entry) .entry = Level::Filters::entry,
  return {ORVANTESCO_KERNEL_LOOPS(ORVANTESCO_ENTRY)
              ORVANTESCO_KERNEL_FILTERS(ORVANTESCO_ENTRY_FILTER)};
#undef ORVANTESCO_ENTRY
#undef ORVANTESCO_ENTRY_FILTER
}

}  // namespace orvantesco::kernels
