// The plug-in's file, loaded as a host loads it.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "host/clap/ClapPresetDiscoveryApi.h"
#include "host/clap/ClapTestHost.h"

namespace orvantesco {
namespace {

/// The shared object that users install.
class ClapModule {
 public:
  ClapModule() : file(::dlopen(ORVANTESCO_CLAP_FILE, RTLD_NOW | RTLD_LOCAL)) {
    if (file != nullptr) {
      entry = static_cast<const clap_plugin_entry_t*>(::dlsym(file, "clap_entry"));
    }
  }
  ClapModule(const ClapModule&) = delete;
  ClapModule& operator=(const ClapModule&) = delete;
  ~ClapModule() {
    if (file != nullptr) ::dlclose(file);
  }

  const clap_plugin_factory_t& factory() const {
    return *static_cast<const clap_plugin_factory_t*>(entry->get_factory(CLAP_PLUGIN_FACTORY_ID));
  }

  void* file;
  const clap_plugin_entry_t* entry = nullptr;
};

TEST(ClapEntry, TheFileLoadsAndTellsWhatItHolds) {
  const ClapModule module;
  ASSERT_NE(module.entry, nullptr) << ::dlerror();
  EXPECT_TRUE(clap_version_is_compatible(module.entry->clap_version));
  ASSERT_TRUE(module.entry->init(ORVANTESCO_CLAP_FILE));
  const auto& factory = module.factory();
  ASSERT_EQ(factory.get_plugin_count(&factory), 1u);
  const auto* const descriptor = factory.get_plugin_descriptor(&factory, 0);
  ASSERT_NE(descriptor, nullptr);
  EXPECT_STREQ(descriptor->id, "com.qlm-works.orvantesco");
  EXPECT_STREQ(descriptor->name, "Orvantesco");
  EXPECT_STREQ(descriptor->vendor, "qlm-works");
  EXPECT_STREQ(descriptor->version, "1.2.0");
  std::vector<std::string> features;
  for (const char** feature = descriptor->features; *feature != nullptr; ++feature) {
    features.emplace_back(*feature);
  }
  EXPECT_EQ(features, (std::vector<std::string>{"audio-effect", "delay", "stereo"}));
  module.entry->deinit();
}

TEST(ClapEntry, TheFileOffersItsPresetsToBrowsers) {
  const ClapModule module;
  ASSERT_NE(module.entry, nullptr);
  for (const char* id : {kClapPresetDiscoveryId, kClapPresetDiscoveryDraftId}) {
    const auto* const factory =
        static_cast<const ClapPresetDiscoveryFactory*>(module.entry->get_factory(id));
    ASSERT_NE(factory, nullptr) << id;
    EXPECT_STREQ(factory->get_descriptor(factory, 0)->id, "com.qlm-works.orvantesco.presets");
  }
}

TEST(ClapEntry, WhatIsNotThereIsNull) {
  const ClapModule module;
  ASSERT_NE(module.entry, nullptr);
  EXPECT_EQ(module.entry->get_factory("clap.some-other-factory"), nullptr);
  EXPECT_EQ(module.entry->get_factory(nullptr), nullptr);
  const auto& factory = module.factory();
  EXPECT_EQ(factory.get_plugin_descriptor(&factory, 1), nullptr);
  const ClapTestHost host;
  EXPECT_EQ(factory.create_plugin(&factory, host.handle(), "com.example.other"), nullptr);
  EXPECT_EQ(factory.create_plugin(&factory, host.handle(), nullptr), nullptr);
  EXPECT_EQ(factory.create_plugin(&factory, nullptr, "com.qlm-works.orvantesco"), nullptr);
}

TEST(ClapEntry, AHostOfTheStandardsFirstDraftsIsRefused) {
  const ClapModule module;
  const auto& factory = module.factory();
  const ClapTestHost host;
  clap_host_t old = *host.handle();
  old.clap_version = {0, 24, 0};
  EXPECT_EQ(factory.create_plugin(&factory, &old, "com.qlm-works.orvantesco"), nullptr);
}

}  // namespace
}  // namespace orvantesco
