#include "fx/kernels/IirScalar.h"
#include "fx/kernels/LevelTable.h"
#include "fx/kernels/LevelTables.h"
#include "fx/kernels/PackScalar.h"

namespace orvantesco::kernels {

namespace {

struct ScalarLevel {
  using Doubles = scalar::Pack<double, 4>;
  using Floats = scalar::Pack<float, 8>;
  using Filters = scalar::Filters;
};

}  // namespace

constinit const KernelTable scalarTable = makeTable<ScalarLevel>();

}  // namespace orvantesco::kernels
