#include "host/dpf/Lv2Host.h"

#include <dlfcn.h>
#include <lv2/atom/atom.h>
#include <lv2/atom/forge.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include "host/dpf/DpfParameters.h"

namespace orvantesco {
namespace {

constexpr std::size_t eventWords = 512;
constexpr std::uint32_t firstControl = 8;  ///< behind five audio ports, two of events, the latency

LV2_URID numberOf(LV2_URID_Map_Handle, const char* uri) {
  static std::map<std::string, LV2_URID> numbers;
  return numbers.emplace(uri, static_cast<LV2_URID>(numbers.size() + 1)).first->second;
}
LV2_URID numberOf(const char* uri) { return numberOf(nullptr, uri); }

LV2_Worker_Status refuseWork(LV2_Worker_Schedule_Handle, std::uint32_t, const void*) {
  return LV2_WORKER_ERR_UNKNOWN;
}

LV2_URID_Map* urids() {
  static LV2_URID_Map map{nullptr, numberOf};
  return &map;
}

/// What an instance is given: the map of URIs, a worker that it never needs, and block lengths.
const LV2_Feature* const* features() {
  static const std::int32_t length = 256;
  static const float rate = 48000.0F;
  static const LV2_Options_Option options[] = {
      {LV2_OPTIONS_INSTANCE, 0, numberOf(LV2_BUF_SIZE__nominalBlockLength), sizeof(length),
       numberOf(LV2_ATOM__Int), &length},
      {LV2_OPTIONS_INSTANCE, 0, numberOf(LV2_BUF_SIZE__maxBlockLength), sizeof(length),
       numberOf(LV2_ATOM__Int), &length},
      {LV2_OPTIONS_INSTANCE, 0, numberOf(LV2_PARAMETERS__sampleRate), sizeof(rate),
       numberOf(LV2_ATOM__Float), &rate},
      {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
  static LV2_Worker_Schedule worker{nullptr, refuseWork};
  static const LV2_Feature map{LV2_URID__map, urids()};
  static const LV2_Feature option{LV2_OPTIONS__options, const_cast<LV2_Options_Option*>(options)};
  static const LV2_Feature schedule{LV2_WORKER__schedule, &worker};
  static const LV2_Feature* const list[] = {&map, &option, &schedule, nullptr};
  return list;
}

const LV2_Descriptor* descriptor() {
  ::setenv("XDG_DATA_HOME", ORVANTESCO_TEST_DATA, 1);
  void* const library = ::dlopen(ORVANTESCO_LV2, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(::dlerror());
  const auto list = reinterpret_cast<const LV2_Descriptor* (*)(std::uint32_t)>(
      ::dlsym(library, "lv2_descriptor"));
  const LV2_Descriptor* const found = list != nullptr ? list(0) : nullptr;
  if (found == nullptr) throw std::runtime_error("the library offers no plug-in");
  return found;
}

/// Knows the numbers of all types, which takes a while to ask for.
const LV2_Atom_Forge& freshForge() {
  static const LV2_Atom_Forge forge = [] {
    LV2_Atom_Forge made;
    lv2_atom_forge_init(&made, urids());
    return made;
  }();
  return forge;
}

/// A sequence of one event, or of none.
void writeEvents(std::vector<std::uint64_t>& port, const Lv2Position* position) {
  LV2_Atom_Forge forge = freshForge();
  lv2_atom_forge_set_buffer(&forge, reinterpret_cast<std::uint8_t*>(port.data()),
                            port.size() * sizeof(port[0]));
  LV2_Atom_Forge_Frame sequence, object;
  lv2_atom_forge_sequence_head(&forge, &sequence, 0);
  if (position != nullptr) {
    const double beats = position->quarterNotes * position->beatUnit / 4.0;
    const double bar = std::floor(beats / static_cast<double>(position->beatsPerBar));
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_object(&forge, &object, 0, numberOf(LV2_TIME__Position));
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__speed));
    lv2_atom_forge_float(&forge, 1.0F);
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__frame));
    lv2_atom_forge_long(&forge, 0);
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__bar));
    lv2_atom_forge_long(&forge, static_cast<std::int64_t>(bar));
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__barBeat));
    lv2_atom_forge_double(&forge, beats - bar * static_cast<double>(position->beatsPerBar));
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__beatUnit));
    lv2_atom_forge_int(&forge, position->beatUnit);
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__beatsPerBar));
    lv2_atom_forge_float(&forge, position->beatsPerBar);
    lv2_atom_forge_key(&forge, numberOf(LV2_TIME__beatsPerMinute));
    lv2_atom_forge_double(&forge, position->tempo);
    lv2_atom_forge_pop(&forge, &object);
  }
  lv2_atom_forge_pop(&forge, &sequence);
}

/// The one text that an instance keeps in a session.
struct Session {
  LV2_URID key = 0;
  std::string text;

  static LV2_State_Status store(LV2_State_Handle handle, std::uint32_t key, const void* value,
                                std::size_t, std::uint32_t, std::uint32_t) {
    *static_cast<Session*>(handle) = {key, static_cast<const char*>(value)};
    return LV2_STATE_SUCCESS;
  }
  static const void* retrieve(LV2_State_Handle handle, std::uint32_t key, std::size_t* size,
                              std::uint32_t* type, std::uint32_t*) {
    const auto& session = *static_cast<Session*>(handle);
    if (key != session.key) return nullptr;
    *size = session.text.size() + 1;
    *type = numberOf(LV2_ATOM__String);
    return session.text.c_str();
  }
};

LV2_URID stateKey() { return numberOf("urn:qlm-works:orvantesco#state"); }

const LV2_State_Interface& stateOf(const LV2_Descriptor& plugin) {
  return *static_cast<const LV2_State_Interface*>(plugin.extension_data(LV2_STATE__interface));
}

}  // namespace

Lv2Block::Lv2Block(std::size_t frames) {
  for (auto* channels : {&in, &out}) {
    for (auto& channel : *channels) channel.assign(frames, 0.0F);
  }
}

Lv2Host::Lv2Host() : plugin(descriptor()), eventsIn(eventWords), eventsOut(eventWords) {
  instance = plugin->instantiate(plugin, 48000.0, "", features());
  if (instance == nullptr) throw std::runtime_error("the plug-in refused its features");
  for (std::uint32_t index = 0; index < kDpfBypass; ++index) {
    controls.push_back(defaultPortValue(index));
  }
  controls.push_back(1.0F);  // "Enabled" is the bypass turned round
  connectControls();
  plugin->activate(instance);
}

Lv2Host::~Lv2Host() {
  plugin->deactivate(instance);
  plugin->cleanup(instance);
}

void Lv2Host::connectControls() {
  plugin->connect_port(instance, firstControl - 1, &latencyPort);
  for (std::uint32_t index = 0; index < controls.size(); ++index) {
    plugin->connect_port(instance, firstControl + index, &controls[index]);
  }
}

void Lv2Host::connectControlsApart() {
  controlsApart.assign(controls.rbegin(), controls.rend());
  const std::size_t last = controls.size() - 1;
  for (std::uint32_t index = 0; index <= last; ++index) {
    plugin->connect_port(instance, firstControl + index, &controlsApart[last - index]);
  }
}

void Lv2Host::process(Lv2Block& block, const Lv2Position* position) {
  float* const in[] = {block.in[0].data(), block.in[1].data(),
                       block.side.empty() ? nullptr : block.side.data()};
  float* const out[] = {block.out[0].data(), block.out[1].data()};
  process(in, out, static_cast<std::uint32_t>(block.in[0].size()), position);
}

void Lv2Host::process(float* const* in, float* const* out, std::uint32_t frames,
                      const Lv2Position* position) {
  writeEvents(eventsIn, position);
  auto* const told = reinterpret_cast<LV2_Atom_Sequence*>(eventsOut.data());
  told->atom = {static_cast<std::uint32_t>(eventWords * sizeof(eventsOut[0]) - sizeof(LV2_Atom)),
                0};
  void* const ports[] = {in[0], in[1], in[2], out[0], out[1], eventsIn.data(), eventsOut.data()};
  for (std::uint32_t port = 0; port < std::size(ports); ++port) {
    plugin->connect_port(instance, port, ports[port]);
  }
  if (!controlsApart.empty()) controlsApart.assign(controls.rbegin(), controls.rend());
  plugin->run(instance, frames);
}

bool Lv2Host::restore(const std::string& stateText) {
  Session session{stateKey(), stateText};
  return stateOf(*plugin).restore(instance, Session::retrieve, &session, 0, nullptr) ==
         LV2_STATE_SUCCESS;
}

std::string Lv2Host::save() {
  Session session;
  stateOf(*plugin).save(instance, Session::store, &session, 0, nullptr);
  return session.key == stateKey() ? session.text : std::string();
}

}  // namespace orvantesco
