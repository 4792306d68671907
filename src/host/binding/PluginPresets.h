#pragma once

#include <stop_token>
#include <string>
#include <thread>

#include "core/PresetConnection.h"
#include "presets/PresetLibrary.h"

namespace orvantesco {

/// The preset library behind one instance of the plug-in.
///
/// `start` lets a thread of its own write the shipped presets that are missing and scan the
/// folders, so that no host waits for a disk. What fails there is told on the error stream.
///
/// Control threads. Made and destroyed while the effect loads no preset and restores no state.
class PluginPresets {
 public:
  /// Effect, library and prompts outlive this. Touches no disk yet.
  PluginPresets(Orvantesco& effect, PresetLibrary& library, PresetPrompts& prompts);
  PluginPresets(const PluginPresets&) = delete;
  PluginPresets& operator=(const PluginPresets&) = delete;
  /// Comes once. Where the system gives no thread, the folders are scanned when the menu is wanted.
  void start() noexcept;

  /// The actions of the editor's preset menu, once the folders are scanned: waits for that.
  /// Editor's thread.
  PresetBrowser& browser();

  /// Applies a preset that is named by the path of a file or as "FOLDER/NAME" of the library, or of
  /// the presets that the program carries. Returns why there is none, one line without its end;
  /// empty where it was applied. Audio may run.
  std::string apply(const std::string& preset);

 private:
  void prepareLibrary(const std::stop_token& stop);

  Orvantesco& engine;
  PresetLibrary& presetLibrary;
  PresetConnection connection;
  bool isPrepared = false;  ///< the thread's until it is joined
  std::jthread preparing;   ///< asked to stop, and waited for, when this ends
};

}  // namespace orvantesco
