#include "master/EQ_ST.h"

#include "fx/Kernels.h"

namespace orvantesco {

EQ_ST::EQ_ST(int eqForm) : left(eqForm), right(eqForm, true) {}

void EQ_ST::setParam(int index, double value) noexcept {
  left.setParam(index, value);
  right.setParam(index, value);
}

void EQ_ST::reset() noexcept {
  DSPShell::reset();
  left.reset();
  right.reset();
}

void EQ_ST::rateChanged() noexcept {
  DSPShell::rateChanged();
  left.rateChanged();
  right.rateChanged();
}

void EQ_ST::clearMemories() noexcept {
  DSPShell::clearMemories();
  left.clearMemories();
  right.clearMemories();
}

void EQ_ST::processBlock() noexcept {
  vecMove(input, output, blockSize);
  vecMove(input2, output2, blockSize);
  EQ_M::processPair(left, right, output, output2);
}

}  // namespace orvantesco
