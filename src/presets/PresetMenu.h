#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "presets/HostState.h"
#include "presets/PopupMenu.h"
#include "presets/PresetCatalogue.h"

namespace orvantesco {

/// The menu of one folder. What lies directly in one of the two trees is in the first node.
struct PresetMenuNode {
  std::string name;
  std::string relativePath;
  PopupMenu menu;
};

/// An item of the menu.
struct PresetMenuPlace {
  int node = kNoNode;
  int item = kNoItem;
};

/// The menu of the preset library, as data: a root with the user's tree and the shipped one, each
/// under its heading, and a menu for each folder below them. At most one item of all is checked.
/// Not for two threads at once.
class PresetMenu {
 public:
  PresetMenu();

  /// Builds all menus anew; without its root folder the library has an empty one. The selected
  /// preset stays selected where it is still there, and so does a folder without a preset.
  void build(const PresetCatalogue& catalogue);

  /// The first is the root.
  const std::vector<PresetMenuNode>& nodes() const noexcept { return menuNodes; }

  /// Checks an item and nothing else. False, and no change, for what is no preset.
  bool choose(PresetMenuPlace place);

  /// Relative path of an item's file, with its extension; empty for what is no preset.
  std::string fileAt(PresetMenuPlace place) const;

  /// The same for the preset with a relative path (without extension); of files that share it the
  /// one with the presets' own extension.
  std::string fileOf(std::string_view relativePath) const;

  /// Chooses the preset with the relative path of a file, with its extension. False, and no change,
  /// where the menu has none.
  bool selectFile(std::string_view filePath);

  /// Makes the menu of a folder the current one and checks an item of it, if it is a preset; where
  /// no folder is named, nothing is selected any more. False, and no change, where there is no such
  /// folder.
  bool select(const PresetSelection& selection);

  /// Folder and item of the current menu.
  PresetSelection selection() const;

  /// Relative path of the checked preset, empty for none.
  std::string selectedPath() const;

  /// The same with the extension of its file.
  std::string selectedFile() const;

 private:
  void clear();
  void addTree(const PresetCatalogue& catalogue, const char* tree, const char* heading);
  int addFolder(const PresetEntry& folder);
  int nodeOf(std::string_view relativePath) const;
  const PopupItem* itemAt(PresetMenuPlace place) const;
  PopupItem* itemAt(PresetMenuPlace place);
  const PopupItem* selectedItem() const;
  void addFile(const PresetEntry& file, int node);
  void clearSelection();

  std::vector<PresetMenuNode> menuNodes;
  std::unordered_map<std::string, int> nodePlaces;              ///< by relative path
  std::unordered_map<std::string, PresetMenuPlace> itemPlaces;  ///< by relative path
  std::unordered_map<std::string, PresetMenuPlace> filePlaces;  ///< the same with the extension
  int currentMenu = kNoNode;
  int selectedIndex = kNoItem;
};

}  // namespace orvantesco
