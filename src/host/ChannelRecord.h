#pragma once

#include "fx/Shared.h"

namespace orvantesco {

/// Channels first, first + 1, ... first + count - 1.
struct ChannelRange {
  int first = 0;
  int count = 0;
};

/// One audio channel of the plug-in. Audio thread.
struct ChannelRecord {
  Shared<bool> connected{false};  ///< read by control threads too
  double* buffer = nullptr;       ///< the current block: the host's where connected, else a scratch
};

/// One block of audio as a host hands it over. Audio thread.
struct AudioBlock {
  double* const* inputs = nullptr;  ///< the main inputs
  int inputCount = 0;               ///< 1 or 2
  double* sideChain = nullptr;      ///< null where the host has none connected
  double* const* outputs = nullptr;
  int outputCount = 0;
  int frames = 0;
  int firstFrame = 0;   ///< frame of the host's block at which this one begins, for the transport
  bool bypass = false;  ///< pass the main inputs on instead of processing them
};

}  // namespace orvantesco
