#include "host/clap/ClapTestIndexer.h"

#include <algorithm>
#include <filesystem>

namespace orvantesco {
namespace {

using Receiver = ClapPresetMetadataReceiver;

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

ClapTestIndexer& self(const ClapPresetIndexer* of) {
  return *static_cast<ClapTestIndexer*>(of->indexer_data);
}

ClapTestIndexer& self(const Receiver* of) {
  return *static_cast<ClapTestIndexer*>(of->receiver_data);
}

/// The preset that was begun last.
ListedPreset& last(const Receiver* of) { return self(of).presets.back(); }

}  // namespace

ClapTestIndexer::ClapTestIndexer() {
  indexer.clap_version = CLAP_VERSION;
  indexer.name = "Test Host";
  indexer.indexer_data = this;
  indexer.declare_filetype = [](const ClapPresetIndexer* of, const ClapPresetFiletype* type) {
    self(of).extensions.push_back(textOf(type->file_extension));
    return true;
  };
  indexer.declare_location = [](const ClapPresetIndexer* of, const ClapPresetPlace* place) {
    self(of).places.push_back(
        {place->flags, textOf(place->name), place->kind, textOf(place->location)});
    return self(of).takesPlaces;
  };
  indexer.declare_soundpack = [](const ClapPresetIndexer*, const ClapPresetSoundpack*) {
    return true;
  };
  indexer.get_extension = [](const ClapPresetIndexer*, const char*) -> const void* {
    return nullptr;
  };
}

ClapTestIndexer::~ClapTestIndexer() {
  if (provider != nullptr) provider->destroy(provider);
}

bool ClapTestIndexer::start() {
  const auto& factory = *static_cast<const ClapPresetDiscoveryFactory*>(
      clap_entry.get_factory(kClapPresetDiscoveryId));
  provider = factory.create(&factory, &indexer, factory.get_descriptor(&factory, 0)->id);
  return provider != nullptr && provider->init(provider);
}

void ClapTestIndexer::crawl() {
  for (const Place& place : places) {
    if (place.kind == kClapPresetInPlugin) {
      read(place.kind, nullptr);
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place.location)) {
      const std::string extension = entry.path().extension().string();
      const bool fits = std::any_of(extensions.begin(), extensions.end(),
                                    [&](const auto& known) { return extension == "." + known; });
      if (entry.is_regular_file() && fits) read(place.kind, entry.path().c_str());
    }
  }
}

bool ClapTestIndexer::read(std::uint32_t kind, const char* location) {
  kindNow = kind;
  locationNow = textOf(location);
  left = room;
  const Receiver takes = receiver();
  return provider->get_metadata(provider, kind, location, &takes);
}

bool ClapTestIndexer::begin(const char* name, const char* key) {
  if (left == 0) return false;
  --left;
  ListedPreset& preset = presets.emplace_back();
  preset.kind = kindNow;
  preset.location = locationNow;
  preset.name = textOf(name);
  preset.key = textOf(key);
  return true;
}

ClapPresetMetadataReceiver ClapTestIndexer::receiver() {
  Receiver all{};
  all.receiver_data = this;
  all.begin_preset = [](const Receiver* of, const char* name, const char* key) {
    return self(of).begin(name, key);
  };
  if (isBare) return all;
  all.on_error = [](const Receiver* of, std::int32_t, const char* message) {
    self(of).errors.push_back(message);
  };
  all.add_plugin_id = [](const Receiver* of, const ClapUniversalPluginId* plugin) {
    last(of).plugin = textOf(plugin->abi) + ":" + textOf(plugin->id);
  };
  all.set_flags = [](const Receiver* of, std::uint32_t flags) { last(of).flags = flags; };
  all.add_creator = [](const Receiver* of, const char* creator) { last(of).creator = creator; };
  all.set_description = [](const Receiver* of, const char* text) { last(of).description = text; };
  all.set_timestamps = [](const Receiver* of, std::uint64_t, std::uint64_t modified) {
    last(of).modified = modified;
  };
  all.add_feature = [](const Receiver* of, const char* feature) {
    last(of).features.push_back(feature);
  };
  return all;
}

}  // namespace orvantesco
