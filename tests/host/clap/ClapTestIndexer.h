#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/clap/ClapApi.h"
#include "host/clap/ClapPresetDiscoveryApi.h"

namespace orvantesco {

/// What a preset browser knows of a preset.
struct ListedPreset {
  std::uint32_t kind = 0;
  std::string location{};  ///< empty where the standard has none
  std::string key{};       ///< the same
  std::string name{};
  std::string plugin{};
  std::uint32_t flags = 0;
  std::string creator{};
  std::string description{};
  std::uint64_t modified = 0;
  std::vector<std::string> features{};

  /// As the host's side of preset loading takes them: null for what there is not.
  const char* locationOrNull() const { return location.empty() ? nullptr : location.c_str(); }
  const char* keyOrNull() const { return key.empty() ? nullptr : key.c_str(); }
};

/// A host's preset browser: it lets one provider declare its places and reads what lies there.
class ClapTestIndexer {
 public:
  ClapTestIndexer();
  ClapTestIndexer(const ClapTestIndexer&) = delete;
  ClapTestIndexer& operator=(const ClapTestIndexer&) = delete;
  ~ClapTestIndexer();

  /// Makes the provider, and lets it declare. False where it refuses.
  bool start();

  /// Reads all places that were declared, folders with all below them.
  void crawl();

  /// Reads one location.
  bool read(std::uint32_t kind, const char* location);

  struct Place {
    std::uint32_t flags = 0;
    std::string name;
    std::uint32_t kind = 0;
    std::string location;
  };
  std::vector<Place> places;
  std::vector<std::string> extensions;
  std::vector<ListedPreset> presets;
  std::vector<std::string> errors;

  /// Presets that it takes of one location.
  std::size_t room = 100000;
  /// A receiver that offers nothing beyond the names.
  bool isBare = false;
  bool takesPlaces = true;

 private:
  ClapPresetMetadataReceiver receiver();
  bool begin(const char* name, const char* key);

  ClapPresetIndexer indexer{};
  const ClapPresetProvider* provider = nullptr;
  std::uint32_t kindNow = 0;
  std::string locationNow;
  std::size_t left = 0;
};

}  // namespace orvantesco
