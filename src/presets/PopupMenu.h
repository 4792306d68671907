#pragma once

#include <string>
#include <vector>

namespace orvantesco {

/// Flags of an item.
inline constexpr unsigned kPopupHeading = 1;  ///< cannot be chosen
inline constexpr unsigned kPopupChecked = 4;

inline constexpr int kNoItem = -1;
inline constexpr int kNoNode = -1;

/// A line of a popup menu.
struct PopupItem {
  std::string text;
  int submenu = kNoNode;       ///< node whose menu opens; `kNoNode` for none
  unsigned flags = 0;          ///< `kPopupHeading`, `kPopupChecked`
  std::string relativePath{};  ///< of the preset that it stands for, without extension
  std::string extension{};     ///< of that preset's file, with the point

  bool isPreset() const noexcept { return submenu == kNoNode && (flags & kPopupHeading) == 0; }
  /// Relative path of the preset's file as it stands on the disk.
  std::string filePath() const { return relativePath + extension; }
  bool isChecked() const noexcept { return (flags & kPopupChecked) != 0; }
};

/// A popup menu, apart from whoever draws it.
struct PopupMenu {
  std::vector<PopupItem> items;
  int chosenIndex = kNoItem;  ///< of the item chosen last
};

}  // namespace orvantesco
