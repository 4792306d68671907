#include "ClapFile.h"

#include <dlfcn.h>

#include <stdexcept>

namespace orvantesco {
namespace {

void* opened(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return library;
}

template <class Found>
const Found* found(const void* what, const std::string& path) {
  if (what == nullptr) throw std::runtime_error(path + ": no CLAP plug-in");
  return static_cast<const Found*>(what);
}

}  // namespace

ClapFile::ClapFile(const std::string& path)
    : library(opened(path)), entry(found<clap_plugin_entry_t>(dlsym(library, "clap_entry"), path)) {
  if (!entry->init(path.c_str())) throw std::runtime_error(path + ": does not start");
  factory = found<clap_plugin_factory_t>(entry->get_factory(CLAP_PLUGIN_FACTORY_ID), path);
  descriptor = found<clap_plugin_descriptor_t>(factory->get_plugin_descriptor(factory, 0), path);
}

ClapFile::~ClapFile() {
  entry->deinit();
  dlclose(library);
}

const clap_plugin_t* ClapFile::create(const clap_host_t* host) const {
  return factory->create_plugin(factory, host, descriptor->id);
}

}  // namespace orvantesco
