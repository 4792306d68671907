#pragma once

#include <string>

#include "ClapFile.h"
#include "host/clap/ClapEventList.h"
#include "host/clap/ClapTestHost.h"

namespace orvantesco {

/// One instance of a plug-in, from its creation to its end. The thread that makes it is the main
/// thread, and the audio thread for the length of a call. Whatever the plug-in refuses is thrown as
/// std::runtime_error. The file has to outlive it.
class LoadedClap {
 public:
  explicit LoadedClap(const ClapFile& file);
  ~LoadedClap();
  LoadedClap(const LoadedClap&) = delete;
  LoadedClap& operator=(const LoadedClap&) = delete;

  void loadState(const std::string& path);
  void loadPreset(const std::string& path);
  void saveState(const std::string& path) const;

  /// The id of the parameter that bears a name.
  clap_id idOf(const std::string& name) const;

  /// Activates and starts, for blocks of at most so many frames.
  void begin(double rateHz, std::uint32_t mostFrames);

  /// The events are those of `in`, which is empty afterwards.
  void process(clap_process_t& block);

  ClapInput in;

 private:
  void end();

  template <class Extension>
  const Extension& extension(const char* id) const;

  ClapTestHost host;
  const clap_plugin_t* plugin = nullptr;
  bool isActive = false;
};

}  // namespace orvantesco
