#pragma once

#include <cstdint>

#include "src/travesty/audio_processor.h"

namespace orvantesco {

/// A new value of a parameter at a frame of a block.
struct Vst3Change {
  v3_param_id id = 0;
  std::int32_t frame = 0;
  double normalized = 0.0;
};

}  // namespace orvantesco
