#include "presets/PresetCatalogue.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "presets/PresetFolders.h"

namespace orvantesco {
namespace {

unsigned char upper(char letter) noexcept {
  const auto byte = static_cast<unsigned char>(letter);
  return byte >= 'a' && byte <= 'z' ? static_cast<unsigned char>(byte - 'a' + 'A') : byte;
}

/// Negative, zero or positive, as std::string_view::compare.
int compareInUpperCase(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (upper(a[i]) != upper(b[i])) return upper(a[i]) < upper(b[i]) ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

/// What differs in case alone still has one order, whatever order the disk gives.
bool comesBefore(const PresetEntry& a, const PresetEntry& b) noexcept {
  const int byPath = compareInUpperCase(a.relativePath, b.relativePath);
  if (byPath != 0) return byPath < 0;
  const int byCase = a.relativePath.compare(b.relativePath);
  return byCase != 0 ? byCase < 0 : a.extension < b.extension;
}

std::vector<PresetEntry> orderOf(const PresetCatalogue& catalogue) {
  std::vector<PresetEntry> order;
  order.reserve(catalogue.presetFiles.size());
  for (const char* tree : {kUserTree, kFactoryTree}) {
    for (const PresetFolderContent& content : contentOf(catalogue, tree)) {
      for (const PresetEntry* file : content.files) order.push_back(*file);
    }
  }
  return order;
}

}  // namespace

std::string_view parentOf(std::string_view relativePath) noexcept {
  if (relativePath.ends_with('/')) relativePath.remove_suffix(1);
  const std::size_t slash = relativePath.rfind('/');
  return slash == relativePath.npos ? std::string_view() : relativePath.substr(0, slash + 1);
}

std::vector<PresetFolderContent> contentOf(const PresetCatalogue& catalogue,
                                           std::string_view tree) {
  std::vector<PresetFolderContent> contents;
  std::unordered_map<std::string_view, std::size_t> places;
  for (const PresetEntry& folder : catalogue.presetFolders) {
    if (!folder.relativePath.starts_with(tree)) continue;
    places.emplace(folder.relativePath, contents.size());
    contents.push_back({&folder, {}});
  }
  for (const PresetEntry& file : catalogue.presetFiles) {
    const std::string_view path = file.relativePath;
    const auto place = places.find(path.substr(0, path.size() - file.name.size()));
    if (place != places.end()) contents[place->second].files.push_back(&file);
  }
  return contents;
}

void arrange(PresetCatalogue& catalogue) {
  std::sort(catalogue.presetFolders.begin(), catalogue.presetFolders.end(), comesBefore);
  std::sort(catalogue.presetFiles.begin(), catalogue.presetFiles.end(), comesBefore);
  catalogue.presetOrder = orderOf(catalogue);
}

const PresetEntry* stepFrom(const std::vector<PresetEntry>& presetOrder,
                            std::string_view relativePath, bool forward) {
  if (presetOrder.empty()) return nullptr;
  const std::size_t count = presetOrder.size();
  const auto hasPath = [&](const PresetEntry& entry) { return entry.relativePath == relativePath; };
  const auto found = std::find_if(presetOrder.begin(), presetOrder.end(), hasPath);
  if (found == presetOrder.end()) return forward ? &presetOrder.front() : &presetOrder.back();
  auto place = static_cast<std::size_t>(found - presetOrder.begin());
  for (std::size_t passed = 0; passed < count; ++passed) {
    place = (place + (forward ? 1 : count - 1)) % count;
    if (!hasPath(presetOrder[place])) break;
  }
  return &presetOrder[place];
}

}  // namespace orvantesco
