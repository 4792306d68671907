#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantesco {

/// A four-character identifier as one number, first character in the highest byte: "OVsC".
constexpr std::uint32_t fourCharacterId(std::string_view text) noexcept {
  std::uint32_t id = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    id = id << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  }
  return id;
}

/// What an effect tells the framework about itself when it is built.
struct PlugInfo {
  int parameterCount = 0;
  /// Layouts as "inputs-outputs", blank separated; side-chain inputs count as inputs.
  std::string channelList = "2-2";
  int presetCount = 1;
  std::string effectName;
  std::string productName;
  std::string manufacturerName;
  int version = 0;             ///< major, minor and patch in bytes 2, 1 and 0
  std::string uniqueId;        ///< four characters
  std::string manufacturerId;  ///< four characters
  int latency = 0;             ///< samples, until `SetLatency` says otherwise
  int sideChainInputs = 0;
  bool doesMidi = false;
  bool doesStateChunks = false;
  bool isInstrument = false;
};

/// The most inputs and outputs that any layout of a list has.
struct ChannelCounts {
  int inputs = 0;
  int outputs = 0;
};
ChannelCounts largestLayout(std::string_view layouts);

}  // namespace orvantesco
