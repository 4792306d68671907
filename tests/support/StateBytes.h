#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "params/ParamBank.h"
#include "presets/StateChunk.h"

namespace orvantesco {

/// A state block as another program would lay it out, byte by byte, of any version.
struct StateBytes {
  int version = 0x10200;
  int colourSet = 0;
  int page = 2;
  double attenuation = 1.0;
  std::string name;
  std::string folder;
  int item = -1;
  std::string folderPath;
  int touched = -1;
  std::array<int, 8> taps{};
  std::array<int, 4> stepFx{};
  std::array<std::array<int, 4>, 2> stepMod{};
  int dryLock = 0;
  std::vector<double> values;

  std::vector<std::uint8_t> bytes() const {
    std::vector<std::uint8_t> all;
    put32(all, version);
    if (version > 0x1015B) put32(all, colourSet);
    if (version < 0x833) return all;
    put32(all, page);
    if (version >= 0x10101) put64(all, attenuation);
    putText(all, name);
    putText(all, folder);
    put32(all, item);
    putText(all, folderPath);
    put32(all, touched);
    for (const int mask : taps) put32(all, mask);
    for (const int mask : stepFx) put32(all, mask);
    for (std::size_t slot = 0; slot < 4; ++slot) {
      put32(all, stepMod[0][slot]);
      put32(all, stepMod[1][slot]);
    }
    all.push_back(static_cast<std::uint8_t>(dryLock));
    for (const double value : values) put64(all, value);
    return all;
  }

  StateChunk chunk() const { return chunkOf(bytes()); }

  static StateChunk chunkOf(const std::vector<std::uint8_t>& bytes) {
    StateChunk chunk;
    chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
    return chunk;
  }

  static std::vector<std::uint8_t> bytesOf(const StateChunk& chunk) {
    return {chunk.data(), chunk.data() + chunk.size()};
  }

 private:
  static void put(std::vector<std::uint8_t>& all, std::uint64_t word, int count) {
    for (int i = 0; i < count; ++i) all.push_back(static_cast<std::uint8_t>(word >> (8 * i)));
  }
  static void put32(std::vector<std::uint8_t>& all, int value) {
    put(all, static_cast<std::uint32_t>(value), 4);
  }
  static void put64(std::vector<std::uint8_t>& all, double value) {
    put(all, std::bit_cast<std::uint64_t>(value), 8);
  }
  static void putText(std::vector<std::uint8_t>& all, const std::string& text) {
    put32(all, static_cast<int>(text.size()));
    all.insert(all.end(), text.begin(), text.end());
  }
};

/// Where two blocks differ, for a person: parameters by index, the rest by byte. Empty for equal.
inline std::string differences(const std::vector<std::uint8_t>& a,
                               const std::vector<std::uint8_t>& b) {
  if (a.size() != b.size()) {
    return std::to_string(a.size()) + " bytes against " + std::to_string(b.size());
  }
  constexpr std::size_t valueBytes = 8 * static_cast<std::size_t>(kNumParams);
  const std::size_t head = a.size() > valueBytes ? a.size() - valueBytes : a.size();
  std::string text;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    const bool isValue = i >= head;
    text += isValue ? "#" + std::to_string((i - head) / 8) : "byte " + std::to_string(i);
    text += " ";
    if (isValue) i = head + (i - head) / 8 * 8 + 7;
  }
  return text;
}

/// The records of a fresh effect. Building them takes longer than all that is asked of them.
inline const ParamBank& freshBank() {
  static const auto built = [] {
    auto bank = std::make_unique<ParamBank>();
    bank->buildParameterBank();
    return bank;
  }();
  return *built;
}

/// The defaults of all parameters.
inline std::vector<double> defaultValues() {
  const ParamBank& bank = freshBank();
  std::vector<double> values;
  for (int i = 0; i < kNumParams; ++i) values.push_back(bank.getParam(i)->defaultValue());
  return values;
}

/// Any state that an effect can be in, drawn from a generator.
inline StateBytes randomState(std::mt19937& draw) {
  const ParamBank& bank = freshBank();
  const auto below = [&draw](int count) {
    return static_cast<int>(draw() % static_cast<unsigned>(count));
  };
  StateBytes state;
  state.colourSet = below(11);
  state.page = below(18);
  state.attenuation = below(1001) / 1000.0;
  state.name = "Preset " + std::to_string(below(1000));
  state.folder = "U:Folder";
  state.item = below(20);
  state.folderPath = "/User Presets/Folder " + std::to_string(below(10)) + "/";
  state.touched = below(kNumParams + 1) - 1;
  for (int& mask : state.taps) mask = below(65536);
  for (int& mask : state.stepFx) mask = below(65536);
  for (auto& row : state.stepMod) {
    for (int& mask : row) mask = below(65536);
  }
  state.dryLock = below(2);
  for (int i = 0; i < kNumParams; ++i) {
    const IParam& param = *bank.getParam(i);
    state.values.push_back(below(3) == 0 ? param.defaultValue()
                                         : param.fromNormalized(below(10001) / 10000.0));
  }
  const auto value = [&state](int index) -> double& {
    return state.values[static_cast<std::size_t>(index)];
  };
  for (int n = 0; n < 4; ++n) {
    // Two rows never drive one parameter; a rate in notes is one of eight.
    if (value(kTapFxParam1 + n) == value(kTapFxParam2 + n)) value(kTapFxParam2 + n) = 0.0;
    if (value(kLfoSync + n) != 0.0) value(kLfoRate + n) = below(8);
    // No stage offers all the effects that a record can name.
    value(kFxTypePre + n) = below(23);
    value(kFxTypeFeedback + n) = below(15);
    value(kFxTypePost + n) = below(23);
  }
  return state;
}

}  // namespace orvantesco
