// This file alone is compiled for AVX2; nothing of it runs before the processor was asked.
#if defined(__x86_64__)

#include "fx/kernels/LevelTable.h"
#include "fx/kernels/PackAvx2.h"

namespace orvantesco::kernels {

constinit const KernelTable avx2Table = makeTable<avx2::Level>();

}  // namespace orvantesco::kernels

#endif
