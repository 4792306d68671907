// This file alone is compiled for AVX2; nothing of it runs before the processor was asked.
#if defined(__x86_64__)

#include "fx/kernels/IirBody.h"
#include "fx/kernels/LevelTable.h"
#include "fx/kernels/LevelTables.h"
#include "fx/kernels/PackAvx2.h"

namespace orvantesco::kernels {

namespace {

struct Avx2Level {
  using Doubles = avx2::Doubles;
  using Floats = avx2::Floats;
  using Filters = IirBody<avx2::Doubles>;
};

}  // namespace

constinit const KernelTable avx2Table = makeTable<Avx2Level>();

}  // namespace orvantesco::kernels

#endif
