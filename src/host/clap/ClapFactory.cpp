#include "host/clap/ClapFactory.h"

#include <array>
#include <exception>
#include <memory>
#include <string_view>

#include "host/binding/PluginIdentity.h"
#include "host/clap/ClapPlugin.h"

namespace orvantesco {
namespace {

/// The features with the null that ends them for a host.
constexpr auto endedFeatures() noexcept {
  std::array<const char*, PluginIdentity::features.size() + 1> list{};
  for (std::size_t i = 0; i < PluginIdentity::features.size(); ++i) {
    list[i] = PluginIdentity::features[i];
  }
  return list;
}

// The standard's struct takes the list as one that could be changed; nobody does.
constinit auto features = endedFeatures();

constinit const clap_plugin_descriptor_t descriptor{
    CLAP_VERSION,
    PluginIdentity::clapId,
    PluginIdentity::name,
    PluginIdentity::vendor,
    "",
    "",
    "",
    PluginIdentity::version,
    PluginIdentity::description,
    features.data(),
};

std::uint32_t countPlugins(const clap_plugin_factory_t*) { return 1; }

const clap_plugin_descriptor_t* describePlugin(const clap_plugin_factory_t*, std::uint32_t place) {
  return place == 0 ? &descriptor : nullptr;
}

const clap_plugin_t* createPlugin(const clap_plugin_factory_t*, const clap_host_t* host,
                                  const char* id) try {
  if (host == nullptr || id == nullptr || std::string_view(id) != descriptor.id) return nullptr;
  if (!clap_version_is_compatible(host->clap_version)) return nullptr;
  auto plugin = std::make_unique<ClapPlugin>(*host);
  return plugin.release()->handle();  // the host destroys it through its table
} catch (const std::exception&) {
  return nullptr;
}

constinit const clap_plugin_factory_t factory{countPlugins, describePlugin, createPlugin};

}  // namespace

const clap_plugin_descriptor_t& clapDescriptor() noexcept { return descriptor; }

const clap_plugin_factory_t& clapFactory() noexcept { return factory; }

}  // namespace orvantesco
