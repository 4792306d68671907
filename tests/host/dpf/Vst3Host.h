#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/dpf/Vst3Change.h"
#include "src/travesty/audio_processor.h"
#include "src/travesty/component.h"
#include "src/travesty/edit_controller.h"
#include "src/travesty/factory.h"

namespace orvantesco {

/// One block as a host hands it over. A bus without channels is a bus that the host does not give.
struct Vst3Block {
  std::array<std::vector<float>, 2> in;
  std::vector<float> side;
  std::array<std::vector<float>, 2> out;
  std::vector<Vst3Change> changes;
  v3_process_context* context = nullptr;
  bool hearsOutputs = true;  ///< gives a list for what the plug-in has to tell

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
  void setProcessing(bool processing);
  void activateSideChain(bool active);
  void process(Vst3Block& block);

  /// A block that the caller has laid out as the format has it, to be timed.
  void processUncounted(v3_process_data& data);

  /// What calls of the audio thread asked of the heap and of locks; 0 where that is not counted.
  int heapAndLocks = 0;

  /// The state as the plug-in writes it into a stream that takes at most so many bytes at once.
  std::string state(std::int32_t atOnce = 1 << 30);

  /// Hands over a state from a stream that gives so many bytes at once, in turn.
  bool setState(const std::string& bytes, const std::vector<std::int32_t>& atOnce = {1 << 30});

  /// How often the plug-in asked from here on that the host look at it anew.
  void countRestarts();
  int restarts = 0;

  std::uint32_t latency();
  std::uint32_t tail();
  std::int32_t parameterCount();
  v3_param_info parameter(std::int32_t index);
  double normalized(v3_param_id id);
  v3_result setNormalized(v3_param_id id, double normalized);
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
  template <class Call>
  v3_result onAudioThread(Call call);

  bool isActive = false;
  struct Handler;
  std::unique_ptr<Handler> handler;
};

/// What sessions know a parameter by: its index behind the latency, which the wrapper adds.
constexpr v3_param_id vst3IdOf(int index) { return static_cast<v3_param_id>(index + 1); }

/// A text in the format's 16-bit characters as plain ASCII.
std::string asciiOf(const std::int16_t* text);

/// The class of the bundle's plug-in as 32 hexadecimal digits, byte by byte.
std::string vst3ClassOfBundle();

/// The stream of a session that holds nothing but the text of the state.
std::string vst3StreamOf(const std::string& stateText);

/// The text of the state within a session's stream.
std::string vst3StateTextIn(const std::string& stream);

}  // namespace orvantesco
