#include "presets/PresetScan.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

/// A walk that is under way.
class PresetWalk {
 public:
  explicit PresetWalk(const std::string& presetRootPath) : root(presetRootPath) {}

  PresetCatalogue run() {
    walk({}, "/");
    while (!links.empty()) followLinks();
    arrange(catalogue);
    return std::move(catalogue);
  }

 private:
  struct Link {
    std::string name;
    std::string relativePath;
  };

  /// `relativePath` ends in "/"; the root's name is empty.
  void walk(const std::string& name, const std::string& relativePath);
  void take(const fs::directory_entry& entry, const std::string& parentPath);
  void addFile(const std::string& fileName, const std::string& parentPath);
  void followLinks();
  bool isNew(const std::string& path);
  bool isFull() const noexcept {
    return catalogue.presetFolders.size() + catalogue.presetFiles.size() >= kMostPresetEntries;
  }

  std::string root;
  PresetCatalogue catalogue;
  std::vector<Link> links;                     ///< to folders, looked at when the rest is known
  std::set<std::pair<dev_t, ino_t>> seenOnes;  ///< folders by what they are, not by their names
};

std::string fullPath(const std::string& root, const std::string& relativePath) {
  return root + relativePath.substr(0, relativePath.size() - 1);
}

bool isCutOffSave(const std::string& fileName) {
  return fileName.starts_with('.') && fileName.ends_with(".unfinished");
}

bool PresetWalk::isNew(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) != 0 ||
         seenOnes.insert({status.st_dev, status.st_ino}).second;
}

void PresetWalk::walk(const std::string& name, const std::string& relativePath) {
  const std::string path = fullPath(root, relativePath);
  if (isFull() || !isNew(path)) return;
  std::error_code fault;
  fs::directory_iterator entry;
  const bool isTooLong = relativePath.size() > kLongestFolderPath;
  if (!isTooLong) entry = fs::directory_iterator(path, fault);
  if (isTooLong || fault) {
    catalogue.unopened.push_back(path);
    return;
  }
  catalogue.hasRoot = true;
  if (!name.empty()) catalogue.presetFolders.push_back({name, relativePath});
  while (entry != fs::directory_iterator() && !isFull()) {
    take(*entry, relativePath);
    entry.increment(fault);
  }
  if (fault) catalogue.unopened.push_back(path);
}

void PresetWalk::take(const fs::directory_entry& entry, const std::string& parentPath) {
  const std::string name = entry.path().filename().string();
  std::error_code ignored;
  if (entry.is_directory(ignored)) {
    if (name.starts_with('.')) return;
    const std::string path = parentPath + name + "/";
    if (entry.is_symlink(ignored)) {
      links.push_back({name, path});
    } else {
      walk(name, path);
    }
  } else if (entry.is_regular_file(ignored)) {
    addFile(name, parentPath);
  }
}

void PresetWalk::addFile(const std::string& fileName, const std::string& parentPath) {
  if (fileName == ".DS_Store" || isCutOffSave(fileName)) return;
  const std::size_t point = std::min(fileName.rfind('.'), fileName.size());
  const std::string name = fileName.substr(0, point);
  catalogue.presetFiles.push_back({name, parentPath + name, fileName.substr(point)});
}

void PresetWalk::followLinks() {
  std::vector<Link> found = std::exchange(links, {});
  std::sort(found.begin(), found.end(),
            [](const Link& a, const Link& b) { return a.relativePath < b.relativePath; });
  for (const Link& link : found) walk(link.name, link.relativePath);
}

}  // namespace

PresetCatalogue scanPresets(const std::string& presetRootPath) {
  return PresetWalk(presetRootPath).run();
}

}  // namespace orvantesco
