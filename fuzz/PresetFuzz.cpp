#include <cstddef>
#include <cstdint>

#include "fuzz/PresetChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvantesco::checkPresetBytes({reinterpret_cast<const char*>(data), size});
  return 0;
}
