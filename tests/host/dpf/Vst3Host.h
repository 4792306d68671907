#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "src/travesty/audio_processor.h"
#include "src/travesty/component.h"
#include "src/travesty/edit_controller.h"
#include "src/travesty/factory.h"

namespace orvantesco {

/// A new value of a parameter at a frame of a block.
struct Vst3Change {
  v3_param_id id = 0;
  std::int32_t frame = 0;
  double normalized = 0.0;
};

/// One block as a host hands it over. A bus without channels is a bus that the host does not give.
struct Vst3Block {
  std::array<std::vector<float>, 2> in;
  std::vector<float> side;
  std::array<std::vector<float>, 2> out;
  std::vector<Vst3Change> changes;
  v3_process_context* context = nullptr;

  explicit Vst3Block(std::size_t frames);
};

/// A VST3 host of our own: loads the bundle that was built through its C interface and drives one
/// instance. It only offers what a test needs, and follows the order of calls of the format.
class Vst3Host {
 public:
  Vst3Host();
  ~Vst3Host();
  Vst3Host(const Vst3Host&) = delete;
  Vst3Host& operator=(const Vst3Host&) = delete;

  void activate(double rateHz, int longestBlock);
  void deactivate();
  void activateSideChain(bool active);
  void process(Vst3Block& block);

  /// The state as the plug-in writes it into a stream that takes at most so many bytes at once.
  std::string state(std::int32_t atOnce = 1 << 30);
  bool setState(const std::string& bytes, std::int32_t atOnce = 1 << 30);

  /// How often the plug-in asked from here on that the host look at it anew.
  void countRestarts();
  int restarts = 0;

  std::uint32_t latency();
  std::int32_t parameterCount();
  v3_param_info parameter(std::int32_t index);
  double normalized(v3_param_id id);
  double plain(v3_param_id id, double normalized);
  std::string text(v3_param_id id, double normalized);
  std::int32_t busCount(std::int32_t direction);
  v3_bus_info bus(std::int32_t direction, std::int32_t index);

  /// Latencies that the plug-in has told while it ran, normalised.
  std::vector<double> toldLatencies;

 private:
  v3_component** component = nullptr;
  v3_audio_processor** processor = nullptr;
  v3_edit_controller** controller = nullptr;
  bool isActive = false;
  struct Handler;
  std::unique_ptr<Handler> handler;
};

/// A text in the format's 16-bit characters as plain ASCII.
std::string asciiOf(const std::int16_t* text);

/// The class of the bundle's plug-in as 32 hexadecimal digits, byte by byte.
std::string vst3ClassOfBundle();

/// The stream of a session that holds nothing but the text of the state.
std::string vst3StreamOf(const std::string& stateText);

}  // namespace orvantesco
