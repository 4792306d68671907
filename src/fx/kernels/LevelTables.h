#pragma once

#include "fx/kernels/KernelTable.h"

namespace orvantesco::kernels {

/// The constant tables of the levels; those of other processors than the build's do not exist.
extern const KernelTable scalarTable;
extern const KernelTable sse2Table;
extern const KernelTable avx2Table;

}  // namespace orvantesco::kernels
