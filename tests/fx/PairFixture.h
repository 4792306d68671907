#pragma once

#include <memory>

#include "fx/DSPShell.h"
#include "fx/PairModel.h"

namespace orvantesco::testing_support {

/// A filter pair of any class, with the modulation vectors that a recipe gives it.
class ModulatedPair {
 public:
  /// `lowControl` is the control that moves the low-pass; a drive, if any, is control 2.
  ModulatedPair(std::unique_ptr<DSPShell> pairBlock, const PairRecipe& pairRecipe, int lowControl)
      : block(std::move(pairBlock)), recipe(pairRecipe) {
    if (recipe.highModulation) connect(0, high);
    if (recipe.lowModulation) connect(lowControl, low);
    if (recipe.driveModulation) connect(2, drive);
  }

  void process(double* in, double* out) {
    if (recipe.highModulation) high[0] = recipe.highModulation(vector);
    if (recipe.lowModulation) low[0] = recipe.lowModulation(vector);
    for (int i = 0; i < 32 && recipe.driveModulation; ++i) {
      drive[i] = recipe.driveModulation(32 * vector + i);
    }
    ++vector;
    block->process(in, out);
  }

  DSPShell* operator->() { return block.get(); }

 private:
  void connect(int control, const double* source) {
    block->setModSource(control, source);
    block->setModDepth(control, &depth);
  }

  std::unique_ptr<DSPShell> block;
  PairRecipe recipe;
  double high[32] = {}, low[32] = {}, drive[32] = {};
  double depth = 1.0;
  int vector = 0;
};

}  // namespace orvantesco::testing_support
