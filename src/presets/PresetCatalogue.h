#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvantesco {

/// A folder or a file of the preset library.
struct PresetEntry {
  std::string name;          ///< of a file: without what follows its last point
  std::string relativePath;  ///< below the root; of a folder with "/" at its end, of a file without
                             ///< its extension
  std::string extension{};   ///< of a file: what was cut, with the point
};

/// What a scan of the preset library found. Sorted by relative path without regard to the case of
/// the letters A to Z.
struct PresetCatalogue {
  bool hasRoot = false;  ///< the root could be read
  std::vector<PresetEntry> presetFolders;
  std::vector<PresetEntry> presetFiles;
  std::vector<PresetEntry> presetOrder;  ///< files of both trees as one steps through them
  std::vector<std::string> unopened;     ///< full paths of folders that could not be read
};

/// A folder with the files that lie directly in it. Points into the catalogue.
struct PresetFolderContent {
  const PresetEntry* folder = nullptr;
  std::vector<const PresetEntry*> files;
};

/// The folders of one tree, such as "/User Presets/", parents before their children.
std::vector<PresetFolderContent> contentOf(const PresetCatalogue& catalogue, std::string_view tree);

/// Brings the entries into their order and derives `presetOrder` from it: the user's tree first,
/// then the shipped one.
void arrange(PresetCatalogue& catalogue);

/// The entry behind or before the one with the relative path, around the ends. From a path that
/// is not listed, or an empty one, forward leads to the first and backward to the last. Files that
/// share the path are passed over at once, or a step from the first of them would lead to the
/// second for ever. Nothing for an empty order.
const PresetEntry* stepFrom(const std::vector<PresetEntry>& presetOrder,
                            std::string_view relativePath, bool forward);

/// Folder part of a relative path, with "/" at its end; of a folder's path that of its parent.
std::string_view parentOf(std::string_view relativePath) noexcept;

}  // namespace orvantesco
