#include "host/dpf/Vst3Host.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace orvantesco {
namespace {

// An object of this interface is a pointer to a table of functions; what the object holds stands
// behind that pointer. None of ours is counted.

v3_result V3_API noInterface(void*, const v3_tuid, void** object) {
  *object = nullptr;
  return V3_NO_INTERFACE;
}
std::uint32_t V3_API one(void*) { return 1; }

template <class Table>
Table withoutCount() {
  Table table{};
  table.query_interface = noInterface;
  table.ref = one;
  table.unref = one;
  return table;
}

struct StreamTable : v3_funknown {
  v3_bstream stream;
};

/// A stream over a text, which moves at most `atOnce` bytes in one call.
struct Stream {
  const StreamTable* table = nullptr;
  std::string bytes;
  std::size_t position = 0;
  std::int32_t atOnce = 0;

  static v3_result V3_API read(void* self, void* buffer, std::int32_t wanted, std::int32_t* got) {
    auto& stream = *static_cast<Stream*>(self);
    const auto left = static_cast<std::int32_t>(stream.bytes.size() - stream.position);
    *got = std::min({wanted, left, stream.atOnce});
    std::memcpy(buffer, stream.bytes.data() + stream.position, static_cast<std::size_t>(*got));
    stream.position += static_cast<std::size_t>(*got);
    return V3_OK;
  }
  static v3_result V3_API write(void* self, void* buffer, std::int32_t wanted, std::int32_t* got) {
    auto& stream = *static_cast<Stream*>(self);
    *got = std::min(wanted, stream.atOnce);
    stream.bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(*got));
    return V3_OK;
  }
};

const StreamTable& streamTable() {
  static const StreamTable table = [] {
    auto made = withoutCount<StreamTable>();
    made.stream.read = Stream::read;
    made.stream.write = Stream::write;
    return made;
  }();
  return table;
}

v3_bstream** handleOf(Stream& stream) {
  return static_cast<v3_bstream**>(static_cast<void*>(&stream));
}

/// The changes of one parameter: here always one point.
struct Queue {
  const v3_param_value_queue_cpp* table = nullptr;
  Vst3Change change;

  static v3_param_id V3_API id(void* self) { return static_cast<Queue*>(self)->change.id; }
  static std::int32_t V3_API count(void*) { return 1; }
  static v3_result V3_API get(void* self, std::int32_t, std::int32_t* frame, double* value) {
    *frame = static_cast<Queue*>(self)->change.frame;
    *value = static_cast<Queue*>(self)->change.normalized;
    return V3_OK;
  }
  static v3_result V3_API add(void* self, std::int32_t frame, double value, std::int32_t*) {
    static_cast<Queue*>(self)->change.frame = frame;
    static_cast<Queue*>(self)->change.normalized = value;
    return V3_OK;
  }
};

const v3_param_value_queue_cpp& queueTable() {
  static const auto table = [] {
    auto made = withoutCount<v3_param_value_queue_cpp>();
    made.queue = {Queue::id, Queue::count, Queue::get, Queue::add};
    return made;
  }();
  return table;
}

struct Changes {
  const v3_param_changes_cpp* table = nullptr;
  std::vector<Queue> queues;

  static std::int32_t V3_API count(void* self) {
    return static_cast<std::int32_t>(static_cast<Changes*>(self)->queues.size());
  }
  static v3_param_value_queue** handleOf(Queue& queue) {
    return static_cast<v3_param_value_queue**>(static_cast<void*>(&queue));
  }
  static v3_param_value_queue** V3_API get(void* self, std::int32_t index) {
    return handleOf(static_cast<Changes*>(self)->queues[static_cast<std::size_t>(index)]);
  }
  static v3_param_value_queue** V3_API add(void* self, v3_param_id* id, std::int32_t* index) {
    auto& queues = static_cast<Changes*>(self)->queues;
    *index = static_cast<std::int32_t>(queues.size());
    queues.push_back({&queueTable(), {*id, 0, 0.0}});
    return handleOf(queues.back());
  }
};

const v3_param_changes_cpp& changesTable() {
  static const auto table = [] {
    auto made = withoutCount<v3_param_changes_cpp>();
    made.changes = {Changes::count, Changes::get, Changes::add};
    return made;
  }();
  return table;
}

Changes changesOf(const std::vector<Vst3Change>& given) {
  Changes changes{&changesTable(), {}};
  changes.queues.reserve(8 + given.size());  // handles point into it
  for (const Vst3Change& change : given) changes.queues.push_back({&queueTable(), change});
  return changes;
}

v3_param_changes** handleOf(Changes& changes) {
  return static_cast<v3_param_changes**>(static_cast<void*>(&changes));
}

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
      auto calls = withoutCount<Table>();
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

void Vst3Host::activateSideChain(bool active) {
  must(v3_cpp_obj(component)->activate_bus(component, V3_AUDIO, V3_INPUT, 1, active ? 1 : 0));
}

void Vst3Host::process(Vst3Block& block) {
  std::vector<float*> in{block.in[0].data(), block.in[1].data()};
  std::vector<float*> side;
  if (!block.side.empty()) side.push_back(block.side.data());
  std::vector<float*> out{block.out[0].data(), block.out[1].data()};
  std::array<v3_audio_bus_buffers, 2> inputs{busOf(in), busOf(side)};
  v3_audio_bus_buffers outputs = busOf(out);
  Changes given = changesOf(block.changes);
  Changes told = changesOf({});
  v3_process_data data{};
  data.process_mode = V3_REALTIME;
  data.symbolic_sample_size = V3_SAMPLE_32;
  data.nframes = static_cast<std::int32_t>(block.in[0].size());
  data.num_input_buses = 2;
  data.num_output_buses = 1;
  data.inputs = inputs.data();
  data.outputs = &outputs;
  data.input_params = handleOf(given);
  data.output_params = handleOf(told);
  data.ctx = block.context;
  must(v3_cpp_obj(processor)->process(processor, &data));
  for (const Queue& queue : told.queues) toldLatencies.push_back(queue.change.normalized);
}

std::string Vst3Host::state(std::int32_t atOnce) {
  Stream stream{&streamTable(), {}, 0, atOnce};
  must(v3_cpp_obj(component)->get_state(component, handleOf(stream)));
  return stream.bytes;
}

bool Vst3Host::setState(const std::string& bytes, std::int32_t atOnce) {
  Stream stream{&streamTable(), bytes, 0, atOnce};
  return v3_cpp_obj(component)->set_state(component, handleOf(stream)) == V3_OK;
}

void Vst3Host::countRestarts() {
  handler = std::make_unique<Handler>(Handler{&Handler::tableOfAll(), &restarts});
  const auto handle = static_cast<v3_component_handler**>(static_cast<void*>(handler.get()));
  must(v3_cpp_obj(controller)->set_component_handler(controller, handle));
}

std::uint32_t Vst3Host::latency() { return v3_cpp_obj(processor)->get_latency_samples(processor); }

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

}  // namespace orvantesco
