#include <cstddef>
#include <cstdint>

#include "fuzz/StateChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvantesco::checkStateBytes({reinterpret_cast<const char*>(data), size});
  return 0;
}
