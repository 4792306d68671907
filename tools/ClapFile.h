#pragma once

#include <string>

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// A CLAP file as a host opens it, with the first plug-in that it names. Main thread.
class ClapFile {
 public:
  /// Throws std::runtime_error where the file is no such plug-in.
  explicit ClapFile(const std::string& path);
  ~ClapFile();
  ClapFile(const ClapFile&) = delete;
  ClapFile& operator=(const ClapFile&) = delete;

  /// Not yet initialised; null where the plug-in refuses. The caller destroys it before the file.
  const clap_plugin_t* create(const clap_host_t* host) const;

 private:
  void* library = nullptr;
  const clap_plugin_entry_t* entry = nullptr;
  const clap_plugin_factory_t* factory = nullptr;
  const clap_plugin_descriptor_t* descriptor = nullptr;
};

}  // namespace orvantesco
