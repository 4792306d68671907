#if defined(__x86_64__)

#include "fx/kernels/LevelTable.h"
#include "fx/kernels/PackSse2.h"

namespace orvantesco::kernels {

constinit const KernelTable sse2Table = makeTable<sse2::Level>();

}  // namespace orvantesco::kernels

#endif
