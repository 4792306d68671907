#pragma once

#include "host/EditorPort.h"

namespace orvantesco::cli {

/// Stands for an editor in which the user has just chosen an entry of one effect type selector:
/// only then does the engine take another effect.
class GestureEditor : public EditorPort {
 public:
  /// The selector of a position (0..11) holds a choice that has not been taken, -1 for none.
  void commit(int position) noexcept { committed = position; }

  bool hasCommittedGesture(int position) noexcept override { return position == committed; }
  void lowerCommitFlag(int position) noexcept override {
    if (position == committed) committed = -1;
  }

 private:
  int committed = -1;
};

}  // namespace orvantesco::cli
