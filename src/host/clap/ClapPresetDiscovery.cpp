#include "host/clap/ClapPresetDiscovery.h"

#include <filesystem>
#include <new>
#include <string>
#include <string_view>

#include "host/binding/PluginIdentity.h"
#include "host/clap/ClapApi.h"
#include "host/clap/ClapPresetMetadata.h"
#include "presets/PresetFolders.h"

namespace orvantesco {
namespace {

constexpr ClapPresetProviderDescriptor descriptor{CLAP_VERSION, "com.qlm-works.orvantesco.presets",
                                                  "Orvantesco presets", PluginIdentity::vendor};

constexpr ClapPresetFiletype filetype{"Orvantesco preset", "Settings of the Orvantesco delay",
                                      "txt"};

constexpr ClapPresetPlace carried{kClapPresetIsFactoryContent, "Factory Presets",
                                  kClapPresetInPlugin, nullptr};

/// One provider in a host's hands.
class Provider {
 public:
  explicit Provider(const ClapPresetIndexer& host) noexcept;
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  const ClapPresetProvider* handle() const noexcept { return &table; }

  /// Null where the host holds none of ours.
  static Provider* behind(const ClapPresetProvider* provider) noexcept {
    return provider != nullptr ? static_cast<Provider*>(provider->provider_data) : nullptr;
  }

  bool declarePlaces() const {
    if (indexer.declare_filetype == nullptr || indexer.declare_location == nullptr) return false;
    return indexer.declare_filetype(&indexer, &filetype) &&
           indexer.declare_location(&indexer, &carried) && declareUserTree();
  }

 private:
  /// A user who has saved nothing yet may have no folder, and a host nothing to look into.
  bool declareUserTree() const {
    const PresetFolders folders = presetFolders();
    const std::string path = folders.userPresetPath();
    std::error_code ignored;
    if (folders.presetRootPath.empty() || !std::filesystem::is_directory(path, ignored))
      return true;
    const ClapPresetPlace place{kClapPresetIsUserContent, "User Presets", kClapPresetInFile,
                                path.c_str()};
    return indexer.declare_location(&indexer, &place);
  }

  ClapPresetProvider table;
  const ClapPresetIndexer& indexer;
};

// No exception reaches the host, which has none: memory may end on the way.

bool init(const ClapPresetProvider* provider) try {
  const Provider* const own = Provider::behind(provider);
  return own != nullptr && own->declarePlaces();
} catch (...) {
  return false;
}

void destroy(const ClapPresetProvider* provider) { delete Provider::behind(provider); }

bool getMetadata(const ClapPresetProvider* provider, std::uint32_t locationKind,
                 const char* location, const ClapPresetMetadataReceiver* receiver) try {
  if (Provider::behind(provider) == nullptr || receiver == nullptr) return false;
  return tellPresetMetadata(locationKind, location, *receiver);
} catch (...) {
  return false;
}

const void* getExtension(const ClapPresetProvider*, const char*) { return nullptr; }

Provider::Provider(const ClapPresetIndexer& host) noexcept
    : table{&descriptor, this, init, destroy, getMetadata, getExtension}, indexer(host) {}

std::uint32_t countProviders(const ClapPresetDiscoveryFactory*) { return 1; }

const ClapPresetProviderDescriptor* describeProvider(const ClapPresetDiscoveryFactory*,
                                                     std::uint32_t place) {
  return place == 0 ? &descriptor : nullptr;
}

const ClapPresetProvider* createProvider(const ClapPresetDiscoveryFactory*,
                                         const ClapPresetIndexer* indexer, const char* id) {
  if (indexer == nullptr || id == nullptr || std::string_view(id) != descriptor.id) return nullptr;
  if (!clap_version_is_compatible(indexer->clap_version)) return nullptr;
  const auto* const provider = new (std::nothrow) Provider(*indexer);
  return provider != nullptr ? provider->handle() : nullptr;
}

constexpr ClapPresetDiscoveryFactory factory{countProviders, describeProvider, createProvider};

}  // namespace

const ClapPresetDiscoveryFactory& clapPresetDiscovery() noexcept { return factory; }

}  // namespace orvantesco
