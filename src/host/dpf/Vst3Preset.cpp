#include "host/dpf/Vst3Preset.h"

#include <array>
#include <cstdint>

#include "host/PlugInfo.h"
#include "host/binding/PluginIdentity.h"
#include "host/dpf/DpfState.h"

namespace orvantesco {
namespace {

constexpr std::uint32_t formatVersion = 1;

template <class Number>
std::string littleEndian(Number number) {
  std::string bytes;
  for (std::size_t i = 0; i < sizeof(number); ++i) {
    bytes += static_cast<char>(number >> (8 * i) & 255U);
  }
  return bytes;
}

std::string hexadecimal(const std::string& bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (const char letter : bytes) {
    const auto byte = static_cast<unsigned char>(letter);
    text += {digits[byte >> 4U], digits[byte & 15U]};
  }
  return text;
}

}  // namespace

/// The wrapper makes it of four numbers: two of its own and two of the plug-in.
std::string vst3ClassId() {
  std::string bytes;
  for (const char* id : {"DPF ", "clas", PluginIdentity::uniqueId}) {
    bytes += littleEndian(fourCharacterId(id));
  }
  return hexadecimal(bytes + littleEndian(std::uint32_t{0}));
}

/// Words that end in a zero, and one byte behind the last.
std::string vst3ComponentState(const std::string& stateText) {
  std::string stream;
  for (const std::string& word : {std::string("__dpf_state_begin__"), std::string(kDpfStateKey),
                                  stateText, std::string("__dpf_state_end__")}) {
    stream += word + '\0';
  }
  return stream + '\xfe';
}

std::string vst3PresetFile(const std::string& stateText) {
  const std::string state = vst3ComponentState(stateText);
  const std::string classId = vst3ClassId();
  const std::uint64_t stateBegin = 4 + sizeof(formatVersion) + classId.size() + 8;
  const std::uint64_t listBegin = stateBegin + state.size();
  return "VST3" + littleEndian(formatVersion) + classId + littleEndian(listBegin) + state + "List" +
         littleEndian(std::uint32_t{1}) + "Comp" + littleEndian(stateBegin) +
         littleEndian(std::uint64_t{state.size()});
}

std::string vst3PresetFileName(const FactoryState& preset) {
  return std::string(preset.folder) + " - " + std::string(preset.name) + ".vstpreset";
}

}  // namespace orvantesco
