#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzedEffect.h"
#include "fuzz/StateChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  orvantesco::checkStateBytes(bytes);
  if (orvantesco::isPlayed(bytes)) orvantesco::checkStatePlays(bytes);
  return 0;
}
