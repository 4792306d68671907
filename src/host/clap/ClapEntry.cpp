// The one symbol by which a host finds everything else.

#include <string_view>

#include "host/clap/ClapFactory.h"
#include "host/clap/ClapPresetDiscovery.h"

namespace {

/// Nothing is prepared: a scan of the descriptor costs no more than loading the file.
bool enter(const char* pluginPath) {
  (void)pluginPath;
  return true;
}

void leave() {}

const void* getFactory(const char* id) {
  const std::string_view name = id != nullptr ? id : "";
  if (name == CLAP_PLUGIN_FACTORY_ID) return &orvantesco::clapFactory();
  const bool isDiscovery =
      name == orvantesco::kClapPresetDiscoveryId || name == orvantesco::kClapPresetDiscoveryDraftId;
  return isDiscovery ? &orvantesco::clapPresetDiscovery() : nullptr;
}

}  // namespace

extern "C" CLAP_EXPORT const clap_plugin_entry_t clap_entry{CLAP_VERSION, enter, leave, getFactory};
