#include "host/dpf/Vst3Host.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "host/dpf/Vst3Objects.h"
#include "realtime/AudioThreadGuard.h"

namespace orvantesco {
namespace {

/// Loaded once and never dropped: other instances of the process may still run in it. What the
/// plug-in writes to the preset library stays in the build folder.
v3_plugin_factory** factory() {
  static v3_plugin_factory** const loaded = [] {
    ::setenv("XDG_DATA_HOME", ORVANTESCO_TEST_DATA, 1);
    void* const library = ::dlopen(ORVANTESCO_VST3, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(::dlerror());
    const auto enter = reinterpret_cast<bool (*)(void*)>(::dlsym(library, "ModuleEntry"));
    const auto give = reinterpret_cast<const void* (*)()>(::dlsym(library, "GetPluginFactory"));
    if (enter == nullptr || give == nullptr || !enter(library)) {
      throw std::runtime_error("the bundle has no entry");
    }
    return static_cast<v3_plugin_factory**>(const_cast<void*>(give()));
  }();
  return loaded;
}

void must(v3_result result) {
  if (result != V3_OK) throw std::runtime_error("the plug-in refused a call");
}

v3_audio_bus_buffers busOf(std::vector<float*>& channels) {
  v3_audio_bus_buffers bus{};
  bus.num_channels = static_cast<std::int32_t>(channels.size());
  bus.channel_buffers_32 = channels.data();
  return bus;
}

}  // namespace

/// What a plug-in tells its host with. It counts requests to look at the plug-in anew.
struct Vst3Host::Handler {
  struct Table : v3_funknown {
    v3_component_handler calls;
  };
  const Table* table = nullptr;
  int* restarts = nullptr;

  static v3_result V3_API beginOrEnd(void*, v3_param_id) { return V3_OK; }
  static v3_result V3_API perform(void*, v3_param_id, double) { return V3_OK; }
  static v3_result V3_API restart(void* self, std::int32_t) {
    ++*static_cast<Handler*>(self)->restarts;
    return V3_OK;
  }
  static const Table& tableOfAll() {
    static const Table made = [] {
      auto calls = vst3Uncounted<Table>();
      calls.calls = {beginOrEnd, perform, beginOrEnd, restart};
      return calls;
    }();
    return made;
  }
};

Vst3Block::Vst3Block(std::size_t frames) {
  for (auto* channels : {&in, &out}) {
    for (auto& channel : *channels) channel.assign(frames, 0.0F);
  }
}

Vst3Host::Vst3Host() {
  v3_class_info info{};
  must(v3_cpp_obj(factory())->get_class_info(factory(), 0, &info));
  must(v3_cpp_obj(factory())->create_instance(factory(), info.class_id, v3_component_iid,
                                              reinterpret_cast<void**>(&component)));
  must(v3_cpp_obj_initialize(component, nullptr));
  must(v3_cpp_obj_query_interface(component, v3_audio_processor_iid, &processor));
  must(v3_cpp_obj_query_interface(component, v3_edit_controller_iid, &controller));
}

Vst3Host::~Vst3Host() {
  if (isActive) deactivate();
  v3_cpp_obj_unref(controller);
  v3_cpp_obj_unref(processor);
  v3_cpp_obj_terminate(component);
  v3_cpp_obj_unref(component);
}

void Vst3Host::activate(double rateHz, int longestBlock) {
  v3_process_setup setup{V3_REALTIME, V3_SAMPLE_32, longestBlock, rateHz};
  must(v3_cpp_obj(processor)->setup_processing(processor, &setup));
  must(v3_cpp_obj(component)->set_active(component, 1));
  must(v3_cpp_obj(processor)->set_processing(processor, 1));
  isActive = true;
}

void Vst3Host::deactivate() {
  v3_cpp_obj(processor)->set_processing(processor, 0);
  v3_cpp_obj(component)->set_active(component, 0);
  isActive = false;
}

void Vst3Host::setProcessing(bool processing) {
  must(onAudioThread([this, processing] {
    return v3_cpp_obj(processor)->set_processing(processor, processing ? 1 : 0);
  }));
}

void Vst3Host::activateSideChain(bool active) {
  must(v3_cpp_obj(component)->activate_bus(component, V3_AUDIO, V3_INPUT, 1, active ? 1 : 0));
}

template <class Call>
v3_result Vst3Host::onAudioThread(Call call) {
  const AudioThreadGuard guard;
  const v3_result result = call();
  if (AudioThreadGuard::works())
    heapAndLocks += guard.allocations() + guard.frees() + guard.locks();
  return result;
}

void Vst3Host::process(Vst3Block& block) {
  std::vector<float*> in{block.in[0].data(), block.in[1].data()};
  std::vector<float*> side;
  if (!block.side.empty()) side.push_back(block.side.data());
  std::vector<float*> out{block.out[0].data(), block.out[1].data()};
  std::array<v3_audio_bus_buffers, 2> inputs{busOf(in), busOf(side)};
  v3_audio_bus_buffers outputs = busOf(out);
  Vst3ChangeLists given(block.changes);
  Vst3ChangeLists told({});
  v3_process_data data{};
  data.process_mode = V3_REALTIME;
  data.symbolic_sample_size = V3_SAMPLE_32;
  data.nframes = static_cast<std::int32_t>(block.in[0].size());
  data.num_input_buses = 2;
  data.num_output_buses = 1;
  data.inputs = inputs.data();
  data.outputs = &outputs;
  data.input_params = given.handle();
  data.output_params = block.hearsOutputs ? told.handle() : nullptr;
  data.ctx = block.context;
  must(onAudioThread([this, &data] { return v3_cpp_obj(processor)->process(processor, &data); }));
  for (const Vst3Change& change : told.all()) toldLatencies.push_back(change.normalized);
}

void Vst3Host::processUncounted(v3_process_data& data) {
  must(v3_cpp_obj(processor)->process(processor, &data));
}

std::string Vst3Host::state(std::int32_t atOnce) {
  Vst3Stream stream({}, {atOnce});
  must(v3_cpp_obj(component)->get_state(component, stream.handle()));
  return stream.bytes();
}

bool Vst3Host::setState(const std::string& bytes, const std::vector<std::int32_t>& atOnce) {
  Vst3Stream stream(bytes, atOnce);
  return v3_cpp_obj(component)->set_state(component, stream.handle()) == V3_OK;
}

void Vst3Host::countRestarts() {
  handler = std::make_unique<Handler>(Handler{&Handler::tableOfAll(), &restarts});
  const auto handle = static_cast<v3_component_handler**>(static_cast<void*>(handler.get()));
  must(v3_cpp_obj(controller)->set_component_handler(controller, handle));
}

std::uint32_t Vst3Host::latency() { return v3_cpp_obj(processor)->get_latency_samples(processor); }

std::uint32_t Vst3Host::tail() { return v3_cpp_obj(processor)->get_tail_samples(processor); }

std::int32_t Vst3Host::parameterCount() {
  return v3_cpp_obj(controller)->get_parameter_count(controller);
}

v3_param_info Vst3Host::parameter(std::int32_t index) {
  v3_param_info info{};
  must(v3_cpp_obj(controller)->get_parameter_info(controller, index, &info));
  return info;
}

double Vst3Host::normalized(v3_param_id id) {
  return v3_cpp_obj(controller)->get_parameter_normalised(controller, id);
}

v3_result Vst3Host::setNormalized(v3_param_id id, double position) {
  return v3_cpp_obj(controller)->set_parameter_normalised(controller, id, position);
}

double Vst3Host::plain(v3_param_id id, double position) {
  return v3_cpp_obj(controller)->normalised_parameter_to_plain(controller, id, position);
}

std::string Vst3Host::text(v3_param_id id, double position) {
  v3_str_128 text{};
  must(v3_cpp_obj(controller)->get_parameter_string_for_value(controller, id, position, text));
  return asciiOf(text);
}

std::int32_t Vst3Host::busCount(std::int32_t direction) {
  return v3_cpp_obj(component)->get_bus_count(component, V3_AUDIO, direction);
}

v3_bus_info Vst3Host::bus(std::int32_t direction, std::int32_t index) {
  v3_bus_info info{};
  must(v3_cpp_obj(component)->get_bus_info(component, V3_AUDIO, direction, index, &info));
  return info;
}

std::string asciiOf(const std::int16_t* text) {
  std::string ascii;
  for (; *text != 0; ++text) ascii += static_cast<char>(*text);
  return ascii;
}

std::string vst3ClassOfBundle() {
  v3_class_info info{};
  must(v3_cpp_obj(factory())->get_class_info(factory(), 0, &info));
  std::string text;
  for (const std::uint8_t byte : info.class_id) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X", static_cast<unsigned>(byte));
    text += digits.data();
  }
  return text;
}

std::string vst3StreamOf(const std::string& stateText) {
  std::string stream;
  for (const char* word :
       {"__dpf_state_begin__", "state", stateText.c_str(), "__dpf_state_end__"}) {
    stream += word;
    stream += '\0';
  }
  return stream + "\xfe";
}

std::string vst3StateTextIn(const std::string& stream) {
  const std::string key = std::string("state") + '\0';
  const std::size_t begin = stream.find(key) + key.size();
  return stream.substr(begin, stream.find('\0', begin) - begin);
}

}  // namespace orvantesco
