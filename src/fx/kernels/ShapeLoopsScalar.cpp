// The reference that the other levels must agree with, and what machines without vectors run.

#include "fx/kernels/PackScalar.h"
#include "fx/kernels/ShapeLoopsBody.h"

namespace orvantesco::kernels {

constinit const ShapeLoops shapeLoopsScalar = makeShapeLoops<scalar::Pack<double, 4>>();

}  // namespace orvantesco::kernels
