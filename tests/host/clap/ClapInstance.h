#pragma once

#include <string>
#include <vector>

#include "host/clap/ClapEventList.h"
#include "host/clap/ClapStreams.h"
#include "host/clap/ClapTestHost.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// The extension of a plug-in under its id.
template <class Extension>
const Extension& extensionOf(const clap_plugin_t* plugin, const char* id) {
  return *static_cast<const Extension*>(plugin->get_extension(plugin, id));
}

/// One instance of the plug-in, made through its C entry, in the hands of a host of its own. It
/// gets a user's data folder of its own, shared by the instances of the process.
class ClapInstance {
 public:
  /// Not yet initialised.
  struct Raw {};
  ClapInstance();
  explicit ClapInstance(Raw);
  ClapInstance(const ClapInstance&) = delete;
  ClapInstance& operator=(const ClapInstance&) = delete;
  ~ClapInstance();

  bool activate(double rateHz = 48000.0, int maxFrames = 512);
  void deactivate();
  /// Activates and starts.
  void start(double rateHz = 48000.0, int maxFrames = 512);
  bool startProcessing();
  void stopProcessing();
  void reset();

  const clap_plugin_params_t& params() const;
  double value(clap_id id) const;
  std::string text(clap_id id, double value) const;
  /// Sends values without audio, from the thread that the standard names.
  void flush();

  bool save(ClapSink& sink) const;
  std::vector<std::uint8_t> state() const;
  bool load(ClapSource& source) const;
  bool load(const std::vector<std::uint8_t>& bytes) const;

  clap_process_status process(clap_process_t& block);
  /// A turn of the host's main thread.
  void runMainThread();

  ClapTestHost host;
  const clap_plugin_t* plugin = nullptr;
  ClapInput in;    ///< of the next block
  ClapOutput out;  ///< of all blocks so far

 private:
  bool active = false;
};

}  // namespace orvantesco
