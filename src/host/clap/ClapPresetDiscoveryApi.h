#pragma once

#include <clap/version.h>

#include <cstdint>

// Preset discovery of CLAP, which the packaged headers lack: by it a host's browser finds presets
// without making an instance. Names and layouts are the standard's. Every call comes on one thread
// at a time, which need not be the main thread.
extern "C" {

/// A plug-in of any format.
struct ClapUniversalPluginId {
  const char* abi;  ///< "clap"
  const char* id;
};

/// Flags of locations and of presets.
enum ClapPresetFlags : std::uint32_t {
  kClapPresetIsFactoryContent = 1u << 0,
  kClapPresetIsUserContent = 1u << 1,
};

/// Takes what a provider reads. Times are seconds since 1970, 0 for unknown.
struct ClapPresetMetadataReceiver {
  void* receiver_data;
  /// `osError` is 0 where the system has none.
  void (*on_error)(const ClapPresetMetadataReceiver* receiver, std::int32_t osError,
                   const char* message);
  /// Comes before all that is said of a preset; false means that no more is wanted. The key is
  /// null for a file that holds just one.
  bool (*begin_preset)(const ClapPresetMetadataReceiver* receiver, const char* name,
                       const char* loadKey);
  void (*add_plugin_id)(const ClapPresetMetadataReceiver* receiver,
                        const ClapUniversalPluginId* plugin);
  void (*set_soundpack_id)(const ClapPresetMetadataReceiver* receiver, const char* soundpack);
  void (*set_flags)(const ClapPresetMetadataReceiver* receiver, std::uint32_t flags);
  void (*add_creator)(const ClapPresetMetadataReceiver* receiver, const char* creator);
  void (*set_description)(const ClapPresetMetadataReceiver* receiver, const char* description);
  void (*set_timestamps)(const ClapPresetMetadataReceiver* receiver, std::uint64_t created,
                         std::uint64_t modified);
  void (*add_feature)(const ClapPresetMetadataReceiver* receiver, const char* feature);
  void (*add_extra_info)(const ClapPresetMetadataReceiver* receiver, const char* key,
                         const char* value);
};

struct ClapPresetFiletype {
  const char* name;
  const char* description;
  const char* file_extension;  ///< without the point
};

struct ClapPresetPlace {
  std::uint32_t flags;
  const char* name;
  std::uint32_t kind;    ///< a `ClapPresetLocation`
  const char* location;  ///< absolute path of a file or folder; null for what the plug-in carries
};

struct ClapPresetSoundpack {
  std::uint32_t flags;
  const char* id;
  const char* name;
  const char* description;
  const char* homepage_url;
  const char* vendor;
  const char* image_path;
  std::uint64_t release_timestamp;
};

/// The host's side.
struct ClapPresetIndexer {
  clap_version_t clap_version;
  const char* name;
  const char* vendor;
  const char* url;
  const char* version;
  void* indexer_data;
  // Only within the provider's `init`.
  bool (*declare_filetype)(const ClapPresetIndexer* indexer, const ClapPresetFiletype* filetype);
  bool (*declare_location)(const ClapPresetIndexer* indexer, const ClapPresetPlace* location);
  bool (*declare_soundpack)(const ClapPresetIndexer* indexer, const ClapPresetSoundpack* soundpack);
  const void* (*get_extension)(const ClapPresetIndexer* indexer, const char* id);
};

struct ClapPresetProviderDescriptor {
  clap_version_t clap_version;
  const char* id;
  const char* name;
  const char* vendor;
};

/// The plug-in's side.
struct ClapPresetProvider {
  const ClapPresetProviderDescriptor* desc;
  void* provider_data;
  bool (*init)(const ClapPresetProvider* provider);
  void (*destroy)(const ClapPresetProvider* provider);
  /// Reads a file, or what the plug-in carries. False where that fails.
  bool (*get_metadata)(const ClapPresetProvider* provider, std::uint32_t locationKind,
                       const char* location, const ClapPresetMetadataReceiver* receiver);
  const void* (*get_extension)(const ClapPresetProvider* provider, const char* id);
};

struct ClapPresetDiscoveryFactory {
  std::uint32_t (*count)(const ClapPresetDiscoveryFactory* factory);
  const ClapPresetProviderDescriptor* (*get_descriptor)(const ClapPresetDiscoveryFactory* factory,
                                                        std::uint32_t index);
  const ClapPresetProvider* (*create)(const ClapPresetDiscoveryFactory* factory,
                                      const ClapPresetIndexer* indexer, const char* providerId);
};

}  // extern "C"

namespace orvantesco {

inline constexpr const char* kClapPresetDiscoveryId = "clap.preset-discovery-factory/2";
inline constexpr const char* kClapPresetDiscoveryDraftId = "clap.preset-discovery-factory/draft-2";

}  // namespace orvantesco
