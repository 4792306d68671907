#pragma once

#include <lv2/core/lv2.h>
#include <lv2/worker/worker.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvantesco {

/// A position as a host of this format sends it: with the block in which something changes.
struct Lv2Position {
  double quarterNotes = 0.0;
  double tempo = 120.0;
  float beatsPerBar = 4.0F;
  int beatUnit = 4;
};

struct Lv2Block {
  std::array<std::vector<float>, 2> in;
  std::vector<float> side;  ///< empty: the port is not connected
  std::array<std::vector<float>, 2> out;

  explicit Lv2Block(std::size_t frames);
};

/// An LV2 host of our own: loads the bundle's library and drives one instance at 48000 Hz.
class Lv2Host {
 public:
  Lv2Host();
  ~Lv2Host();
  Lv2Host(const Lv2Host&) = delete;
  Lv2Host& operator=(const Lv2Host&) = delete;

  /// Null for a block in which the transport runs on as it did.
  void process(Lv2Block& block, const Lv2Position* position = nullptr);

  /// The same for channels that lie anywhere: left, right and side chain (null for none), and two
  /// outputs.
  void process(float* const* in, float* const* out, std::uint32_t frames,
               const Lv2Position* position = nullptr);

  /// False where the plug-in refuses it.
  bool restore(const std::string& stateText);
  std::string save();

  int latency() const { return static_cast<int>(latencyPort); }

  /// Connects the ports to values that lie in no order; `controls` is still what sets them.
  void connectControlsApart();

  std::vector<float> controls;  ///< by the index of the parameter; the last one is "Enabled"

 private:
  void connectControls();

  const LV2_Descriptor* plugin = nullptr;
  LV2_Handle instance = nullptr;
  float latencyPort = 0.0F;
  std::vector<float> controlsApart;  ///< the last one first
  std::vector<std::uint64_t> eventsIn, eventsOut;
};

}  // namespace orvantesco
