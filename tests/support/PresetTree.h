#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/PresetFolders.h"
#include "support/FolderRig.h"

namespace orvantesco {

/// A preset library in a folder of its own, gone at the end of the test. Paths begin with "/" and
/// are relative to the library's root.
class PresetTree {
 public:
  PresetTree() { std::filesystem::permissions(top.path(), std::filesystem::perms(0755)); }
  PresetTree(const PresetTree&) = delete;
  PresetTree& operator=(const PresetTree&) = delete;
  ~PresetTree() {
    std::error_code ignored;
    for (const std::string& path : changed) {
      std::filesystem::permissions(full(path), std::filesystem::perms(0755), ignored);
    }
  }

  /// The folder for the data of applications.
  const std::string& data() const { return top.path(); }
  const PresetFolders& folders() const { return where; }
  const std::string& root() const { return where.presetRootPath; }
  std::string full(const std::string& path) const { return root() + path; }

  void addFolder(const std::string& path) { std::filesystem::create_directories(full(path)); }

  /// Folders on the way are made.
  void addFile(const std::string& path, std::string_view content = "") {
    top.write(relative(path), std::string(content));
  }

  void addLink(const std::string& path, const std::string& leadsTo) {
    std::filesystem::create_symlink(leadsTo, full(path));
  }

  /// Rights of everybody until the end of the test.
  void setRights(const std::string& path, unsigned mode) {
    std::filesystem::permissions(full(path), std::filesystem::perms(mode));
    changed.push_back(path);
  }

  std::string content(const std::string& path) const { return top.read(relative(path)); }

 private:
  std::string relative(const std::string& path) const {
    return full(path).substr(top.path().size() + 1);
  }

  FolderRig top;
  PresetFolders where{presetFoldersIn(top.path())};
  std::vector<std::string> changed;
};

}  // namespace orvantesco
