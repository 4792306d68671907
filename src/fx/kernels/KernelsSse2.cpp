#if defined(__x86_64__)

#include "fx/kernels/IirBody.h"
#include "fx/kernels/LevelTable.h"
#include "fx/kernels/LevelTables.h"
#include "fx/kernels/PackSse2.h"

namespace orvantesco::kernels {

namespace {

struct Sse2Level {
  using Doubles = sse2::Doubles;
  using Floats = sse2::Floats;
  using Filters = IirBody<sse2::Doubles>;
};

}  // namespace

constinit const KernelTable sse2Table = makeTable<Sse2Level>();

}  // namespace orvantesco::kernels

#endif
