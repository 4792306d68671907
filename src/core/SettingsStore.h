#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/EditorState.h"
#include "core/OpenedPreset.h"
#include "presets/HostState.h"
#include "presets/Preset.h"
#include "presets/PresetMenuPort.h"
#include "presets/PresetMessages.h"

namespace orvantesco {

class EditorPort;
class Orvantesco;
class StateChunk;

/// Brings an effect's settings as a whole: from presets and from the states that a host keeps, and
/// back into them. It holds what belongs to both but to no parameter: what an editor shows, which
/// preset is loaded, where presets lie.
///
/// Control threads, never under the `mutex` of the effect; any number at once, one after the
/// other. Audio may run: it is silent meanwhile and never waits.
class SettingsStore {
 public:
  explicit SettingsStore(Orvantesco& of) : effect(of) {}
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  // States of a host (HostStateBlock.cpp).

  /// Appends the state block. False where the chunk could not grow.
  bool saveState(StateChunk& chunk);

  /// Restores what was read from a block. Of a newer version nothing is taken, and the editor shows
  /// a message; of one that is too old the parameters get their defaults, without notice to the
  /// engine.
  void restoreState(const HostState& state);

  // Presets as values (PresetLoad.cpp).

  /// Applies a preset of any version, from wherever it comes: parameters that it does not list get
  /// their defaults, and nothing is selected in the library's menu.
  void applyPreset(const Preset& preset);

  /// The same, with name and folder of the file that it comes from, so that no state is ever saved
  /// or restored between values and labels. The path counts from the presets' root.
  void applyPreset(const Preset& preset, const std::string& relativePath);

  /// What a preset file of the present settings holds.
  Preset currentPreset() const;

  // Presets as files (PresetFile.cpp).

  /// See the operations of the same names of `Orvantesco`.
  bool readPresetFile(const std::string& relativePath);
  void applyLoadedPreset();
  bool loadPresetFile(const std::string& relativePath);
  bool writePresetFile(const std::string& fullPath, bool rewriteAfterMigration);

  /// Shows name and folder of what `writePresetFile` has written, the path counting from the
  /// presets' root, and selects it in the menu; false where the menu does not list it. Does nothing
  /// where other settings have come meanwhile.
  bool showSavedPreset(const std::string& relativePath);

  /// Where the preset folders lie; nothing is read or written before it is told.
  void setPresetRoot(const std::string& path);

  // What an editor shows (EditorSettings.cpp).

  /// Name and folder of the preset that the editor shows.
  void showPreset(const std::string& name, const std::string& folderLabel);
  std::string presetName();
  std::string presetFolderLabel();

  /// The preset that is selected in the library's menu.
  PresetSelection presetSelection();

  /// The menu that knows what is selected (null for none: then any selection is taken over as it
  /// was saved). It takes the present selection over, and leaves its own when it goes.
  void setPresetMenu(PresetMenuPort* menu);

  void showMessage(PresetMessage message);

  // The editor's controls outside the bank. Any thread.
  void setDryMute(bool muted);
  /// Position of the "ATTENUATION" control, 0..1 (see `attenuationGain`).
  void setAttenuation(double position);
  /// The editor has turned to a page; out of range does nothing. While a preset loads, the page
  /// that it brings stands.
  void setCurrentPage(int page);
  /// The colours, 0 .. `kColourSets` - 1; out of range does nothing.
  void setColourSet(int set);

 private:
  /// A preset that was applied, and what a file of the settings then holds.
  struct LoadedPreset {
    OpenedPreset file;
    Preset settings;
  };

  HostState stateOutsideTheBank();
  void takeColourSet(const HostState& state);
  void setParametersToDefaults();
  void takeEditorState(const HostState& state);
  void takePage(std::optional<int> page);
  void takeMasks(const HostState& state);
  void takeMasks(const Preset& preset);
  void takeParameters(const HostState& state);
  void takeParameters(const Preset& preset);
  void selectRateForms(const std::vector<double>& values);
  void showRestored(const HostState& state);
  void showLoaded();
  void settle();
  Preset loadPreset(const Preset& preset, const PresetLabel* label);
  std::string presetRoot();
  bool takeOpening(PresetOpening opening, const std::string& relativePath);
  std::optional<LoadedPreset> applyOpened();
  void bringUpToDate(const LoadedPreset& loaded);
  void select(const PresetSelection& selection);
  void selectFile(const std::string& relativePath);
  /// The editor, or one that ignores everything.
  EditorPort& editor() const noexcept;

  Orvantesco& effect;
  EditorState editorState;

  // Whoever has the turn (see `BulkGate`).
  PresetMenuPort* presetMenu = nullptr;
  std::string presetRootPath;
  std::optional<OpenedPreset> opened;  ///< the preset read last, to be applied
  unsigned bulkOperations = 0;         ///< loads and restores so far
  unsigned writtenAt = 0;              ///< as many there were when a file was last written
  int lastPageLoaded = kDelayPage;
};

}  // namespace orvantesco
