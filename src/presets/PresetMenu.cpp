#include "presets/PresetMenu.h"

#include <cstddef>
#include <utility>

#include "presets/PresetFolders.h"

namespace orvantesco {
namespace {

constexpr int kRootNode = 0;
constexpr std::string_view kPresetExtension = ".txt";

}  // namespace

PresetMenu::PresetMenu() { clear(); }

void PresetMenu::clear() {
  clearSelection();
  menuNodes.assign(1, {"", kUserTree, {}});
  // Both trees share the root.
  nodePlaces = {{kUserTree, kRootNode}, {kFactoryTree, kRootNode}};
  itemPlaces.clear();
  filePlaces.clear();
}

void PresetMenu::build(const PresetCatalogue& catalogue) {
  const std::string file = selectedFile();
  const std::string folder = file.empty() ? selection().folderPath : "";
  clear();
  if (!catalogue.hasRoot) return;
  addTree(catalogue, kUserTree, "--  User  Presets  --");
  addTree(catalogue, kFactoryTree, "--  Factory  Presets  --");
  if (!selectFile(file) && !folder.empty()) select({folder, kNoItem});
}

void PresetMenu::addTree(const PresetCatalogue& catalogue, const char* tree, const char* heading) {
  menuNodes[kRootNode].menu.items.push_back({heading, kNoNode, kPopupHeading});
  for (const PresetFolderContent& content : contentOf(catalogue, tree)) {
    const int node = addFolder(*content.folder);
    if (node == kNoNode) continue;
    for (const PresetEntry* file : content.files) addFile(*file, node);
  }
}

void PresetMenu::addFile(const PresetEntry& file, int node) {
  std::vector<PopupItem>& items = menuNodes[static_cast<std::size_t>(node)].menu.items;
  const PresetMenuPlace place{node, static_cast<int>(items.size())};
  items.push_back({file.name, kNoNode, 0, file.relativePath, file.extension});
  filePlaces.emplace(items.back().filePath(), place);
  // A preset is not hidden by a foreign file of its name.
  const bool isFirst = itemPlaces.try_emplace(file.relativePath, place).second;
  if (!isFirst && file.extension == kPresetExtension) itemPlaces[file.relativePath] = place;
}

/// The node of a folder, made where it has none; `kNoNode` where its parent has none.
int PresetMenu::addFolder(const PresetEntry& folder) {
  const int known = nodeOf(folder.relativePath);
  if (known != kNoNode) return known;
  const int parent = nodeOf(parentOf(folder.relativePath));
  if (parent == kNoNode) return kNoNode;
  const int node = static_cast<int>(menuNodes.size());
  menuNodes.push_back({folder.name, folder.relativePath, {}});
  nodePlaces.emplace(folder.relativePath, node);
  menuNodes[static_cast<std::size_t>(parent)].menu.items.push_back({folder.name, node});
  return node;
}

int PresetMenu::nodeOf(std::string_view relativePath) const {
  const auto found = nodePlaces.find(std::string(relativePath));
  return found == nodePlaces.end() ? kNoNode : found->second;
}

const PopupItem* PresetMenu::itemAt(PresetMenuPlace place) const {
  if (place.node < 0 || place.node >= static_cast<int>(menuNodes.size())) return nullptr;
  const std::vector<PopupItem>& items = menuNodes[static_cast<std::size_t>(place.node)].menu.items;
  const bool isThere = place.item >= 0 && place.item < static_cast<int>(items.size());
  return isThere ? &items[static_cast<std::size_t>(place.item)] : nullptr;
}

PopupItem* PresetMenu::itemAt(PresetMenuPlace place) {
  return const_cast<PopupItem*>(std::as_const(*this).itemAt(place));
}

void PresetMenu::clearSelection() {
  for (PresetMenuNode& node : menuNodes) node.menu.chosenIndex = kNoItem;
  if (PopupItem* const item = itemAt({currentMenu, selectedIndex})) item->flags &= ~kPopupChecked;
  currentMenu = kNoNode;
  selectedIndex = kNoItem;
}

bool PresetMenu::choose(PresetMenuPlace place) {
  PopupItem* const item = itemAt(place);
  if (item == nullptr || !item->isPreset()) return false;
  clearSelection();
  item->flags |= kPopupChecked;
  currentMenu = place.node;
  selectedIndex = place.item;
  menuNodes[static_cast<std::size_t>(place.node)].menu.chosenIndex = place.item;
  return true;
}

std::string PresetMenu::fileAt(PresetMenuPlace place) const {
  const PopupItem* const item = itemAt(place);
  return item != nullptr && item->isPreset() ? item->filePath() : "";
}

std::string PresetMenu::fileOf(std::string_view relativePath) const {
  const auto found = itemPlaces.find(std::string(relativePath));
  return found != itemPlaces.end() ? fileAt(found->second) : "";
}

bool PresetMenu::selectFile(std::string_view filePath) {
  const auto found = filePlaces.find(std::string(filePath));
  return found != filePlaces.end() && choose(found->second);
}

bool PresetMenu::select(const PresetSelection& selection) {
  if (selection.folderPath.empty()) {
    clearSelection();
    return true;
  }
  const int node = nodeOf(selection.folderPath);
  if (node == kNoNode) return false;
  if (choose({node, selection.itemIndex})) return true;
  clearSelection();
  currentMenu = node;
  return true;
}

PresetSelection PresetMenu::selection() const {
  if (currentMenu == kNoNode) return {};
  return {menuNodes[static_cast<std::size_t>(currentMenu)].relativePath, selectedIndex};
}

const PopupItem* PresetMenu::selectedItem() const { return itemAt({currentMenu, selectedIndex}); }

std::string PresetMenu::selectedPath() const {
  const PopupItem* const item = selectedItem();
  return item == nullptr ? "" : item->relativePath;
}

std::string PresetMenu::selectedFile() const {
  const PopupItem* const item = selectedItem();
  return item == nullptr ? "" : item->filePath();
}

}  // namespace orvantesco
