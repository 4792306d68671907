#include "fx/kernels/LevelTable.h"
#include "fx/kernels/PackScalar.h"

namespace orvantesco::kernels {

constinit const KernelTable scalarTable = makeTable<scalar::Level>();

}  // namespace orvantesco::kernels
