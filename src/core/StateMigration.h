#pragma once

#include <array>

#include "fx/Shared.h"

namespace orvantesco {

/// What the dispatch has to know while the state of an older version is being restored.
struct StateMigration {
  Shared<int> version{0};                   ///< of that state, 0 when there is nothing to do
  std::array<Shared<bool>, 4> wasTapped{};  ///< slots whose delay mode was "TAPPED"
};

}  // namespace orvantesco
