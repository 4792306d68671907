#include "host/clap/ClapInstance.h"

#include <array>

#include "support/FolderRig.h"

namespace orvantesco {
namespace {

/// No test touches the presets of the person who runs it.
void useFolderOfOurOwn() {
  static const FolderRig folder;
  static const bool isSet = ::setenv("XDG_DATA_HOME", folder.path().c_str(), 1) == 0;
  (void)isSet;
}

const clap_plugin_t* make(const ClapTestHost& host) {
  useFolderOfOurOwn();
  const auto* const factory =
      static_cast<const clap_plugin_factory_t*>(clap_entry.get_factory(CLAP_PLUGIN_FACTORY_ID));
  const auto* const descriptor = factory->get_plugin_descriptor(factory, 0);
  return factory->create_plugin(factory, host.handle(), descriptor->id);
}

}  // namespace

ClapInstance::ClapInstance(Raw) : plugin(make(host)) {}

ClapInstance::ClapInstance() : ClapInstance(Raw{}) { plugin->init(plugin); }

ClapInstance::~ClapInstance() {
  if (active) deactivate();
  plugin->destroy(plugin);
}

bool ClapInstance::activate(double rateHz, int maxFrames) {
  active = plugin->activate(plugin, rateHz, 1, static_cast<std::uint32_t>(maxFrames));
  return active;
}

void ClapInstance::deactivate() {
  plugin->deactivate(plugin);
  active = false;
}

void ClapInstance::start(double rateHz, int maxFrames) {
  activate(rateHz, maxFrames);
  startProcessing();
}

bool ClapInstance::startProcessing() {
  const ClapTestHost::AudioRole audio;
  return plugin->start_processing(plugin);
}

void ClapInstance::stopProcessing() {
  const ClapTestHost::AudioRole audio;
  plugin->stop_processing(plugin);
}

void ClapInstance::reset() {
  const ClapTestHost::AudioRole audio;
  plugin->reset(plugin);
}

const clap_plugin_params_t& ClapInstance::params() const {
  return extensionOf<clap_plugin_params_t>(plugin, CLAP_EXT_PARAMS);
}

double ClapInstance::value(clap_id id) const {
  double number = -1e9;
  params().get_value(plugin, id, &number);
  return number;
}

std::string ClapInstance::text(clap_id id, double number) const {
  std::array<char, 64> room{};
  return params().value_to_text(plugin, id, number, room.data(), room.size()) ? room.data() : "";
}

void ClapInstance::flush() {
  if (active) {
    const ClapTestHost::AudioRole audio;
    params().flush(plugin, in.handle(), out.handle());
  } else {
    params().flush(plugin, in.handle(), out.handle());
  }
  in.clear();
}

bool ClapInstance::save(ClapSink& sink) const {
  return extensionOf<clap_plugin_state_t>(plugin, CLAP_EXT_STATE).save(plugin, sink.handle());
}

std::vector<std::uint8_t> ClapInstance::state() const {
  ClapSink sink;
  save(sink);
  return sink.bytes;
}

bool ClapInstance::load(ClapSource& source) const {
  return extensionOf<clap_plugin_state_t>(plugin, CLAP_EXT_STATE).load(plugin, source.handle());
}

bool ClapInstance::load(const std::vector<std::uint8_t>& bytes) const {
  ClapSource source(bytes);
  return load(source);
}

clap_process_status ClapInstance::process(clap_process_t& block) {
  const ClapTestHost::AudioRole audio;
  block.in_events = in.handle();
  block.out_events = out.handle();
  const clap_process_status status = plugin->process(plugin, &block);
  in.clear();
  return status;
}

void ClapInstance::runMainThread() { plugin->on_main_thread(plugin); }

}  // namespace orvantesco
