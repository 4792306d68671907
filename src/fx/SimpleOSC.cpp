#include "fx/SimpleOSC.h"

#include <cmath>

namespace orvantesco {

void SimpleOSC::setRate(double rateHz) noexcept {
  if (!std::isfinite(rateHz)) return;
  rate = rateHz;
  rateStored();
  ratio = rateHz / reference;
  halfRatio = ratio / 2.0;
  update();
}

}  // namespace orvantesco
