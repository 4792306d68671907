#include "fx/LPHP_ST.h"

#include <algorithm>

namespace orvantesco {

LPHP_ST::LPHP_ST() : left(false), right(true) {}

void LPHP_ST::reset() noexcept {
  DSPShell::reset();
  left.reset();
  right.reset();
}

void LPHP_ST::setParam(int index, double value) noexcept {
  left.setParam(index, value);
  right.setParam(index, value);
}

void LPHP_ST::rateChanged() noexcept {
  DSPShell::rateChanged();
  left.rateChanged();
  right.rateChanged();
}

void LPHP_ST::clearMemories() noexcept {
  DSPShell::clearMemories();
  left.clearMemories();
  right.clearMemories();
}

void LPHP_ST::onStateCleared() noexcept {
  left.clearState();
  right.clearState();
}

void LPHP_ST::prepare() noexcept {
  DSPShell::prepare();
  left.prepare();
  right.prepare();
}

void LPHP_ST::processBlock() noexcept {
  if (output != input) std::copy_n(input, blockSize, output);
  if (output2 != input2) std::copy_n(input2, blockSize, output2);
  left.process(output, nullptr);
  right.process(output2, nullptr);
}

}  // namespace orvantesco
