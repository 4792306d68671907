// This file alone is compiled for AVX2; nothing of it runs before the processor was asked.
#if defined(__x86_64__)

#include "fx/kernels/PackAvx2.h"
#include "fx/kernels/ShapeLoopsBody.h"

namespace orvantesco::kernels {

constinit const ShapeLoops shapeLoopsAvx2 = makeShapeLoops<avx2::Doubles>();

}  // namespace orvantesco::kernels

#endif
