#include "LoadedClap.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "host/clap/ClapStreams.h"

namespace orvantesco {
namespace {

void must(bool good, const std::string& what) {
  if (!good) throw std::runtime_error(what);
}

std::vector<std::uint8_t> bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  must(file.is_open(), path + ": cannot be read");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

template <class Extension>
const Extension& LoadedClap::extension(const char* id) const {
  const void* const offered = plugin->get_extension(plugin, id);
  must(offered != nullptr, std::string("the plug-in lacks ") + id);
  return *static_cast<const Extension*>(offered);
}

LoadedClap::LoadedClap(const ClapFile& file) : plugin(file.create(host.handle())) {
  must(plugin != nullptr && plugin->init(plugin), "the plug-in does not start");
}

LoadedClap::~LoadedClap() {
  if (isActive) end();
  plugin->destroy(plugin);
}

void LoadedClap::loadState(const std::string& path) {
  ClapSource source(bytesOf(path));
  must(extension<clap_plugin_state_t>(CLAP_EXT_STATE).load(plugin, source.handle()),
       path + ": refused as a state");
}

void LoadedClap::loadPreset(const std::string& path) {
  const auto& loading = extension<ClapPluginPresetLoad>(kClapPresetLoadId);
  must(loading.from_location(plugin, kClapPresetInFile, path.c_str(), nullptr),
       path + ": refused as a preset");
}

void LoadedClap::saveState(const std::string& path) const {
  ClapSink sink;
  must(extension<clap_plugin_state_t>(CLAP_EXT_STATE).save(plugin, sink.handle()),
       "the plug-in saves no state");
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(sink.bytes.data()),
             static_cast<std::streamsize>(sink.bytes.size()));
  must(file.flush().good(), path + ": cannot be written");
}

clap_id LoadedClap::idOf(const std::string& name) const {
  const auto& params = extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
  for (std::uint32_t i = 0; i < params.count(plugin); ++i) {
    clap_param_info_t info{};
    if (params.get_info(plugin, i, &info) && name == info.name) return info.id;
  }
  throw std::runtime_error("no parameter " + name);
}

void LoadedClap::begin(double rateHz, std::uint32_t mostFrames) {
  isActive = plugin->activate(plugin, rateHz, 1, mostFrames);
  const ClapTestHost::AudioRole audio;
  must(isActive && plugin->start_processing(plugin), "the plug-in does not process");
}

void LoadedClap::process(clap_process_t& block) {
  const ClapTestHost::AudioRole audio;
  ClapOutput told;
  block.in_events = in.handle();
  block.out_events = told.handle();
  must(plugin->process(plugin, &block) != CLAP_PROCESS_ERROR, "a block is refused");
  in.clear();
}

void LoadedClap::end() {
  {
    const ClapTestHost::AudioRole audio;
    plugin->stop_processing(plugin);
  }
  plugin->deactivate(plugin);
}

}  // namespace orvantesco
