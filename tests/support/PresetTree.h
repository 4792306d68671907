#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "presets/PresetFolders.h"

namespace orvantesco {

/// A preset library in a folder of its own, gone at the end of the test. Paths begin with "/" and
/// are relative to the library's root.
class PresetTree {
 public:
  PresetTree() {
    std::string pattern = (std::filesystem::temp_directory_path() / "presets-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    top = pattern;
    std::filesystem::permissions(top, std::filesystem::perms(0755));
    where = presetFoldersIn(top);
  }
  PresetTree(const PresetTree&) = delete;
  PresetTree& operator=(const PresetTree&) = delete;
  ~PresetTree() {
    std::error_code ignored;
    for (const std::string& path : changed) {
      std::filesystem::permissions(full(path), std::filesystem::perms(0755), ignored);
    }
    std::filesystem::remove_all(top, ignored);
  }

  const PresetFolders& folders() const { return where; }
  const std::string& root() const { return where.presetRootPath; }
  std::string full(const std::string& path) const { return root() + path; }

  void addFolder(const std::string& path) { std::filesystem::create_directories(full(path)); }

  /// Folders on the way are made.
  void addFile(const std::string& path, std::string_view content = "") {
    std::filesystem::create_directories(std::filesystem::path(full(path)).parent_path());
    std::ofstream(full(path), std::ios::binary) << content;
  }

  void addLink(const std::string& path, const std::string& leadsTo) {
    std::filesystem::create_symlink(leadsTo, full(path));
  }

  /// Takes everybody's rights to a folder away until the end of the test.
  void shut(const std::string& path) { setRights(path, 0); }
  void setRights(const std::string& path, unsigned mode) {
    std::filesystem::permissions(full(path), std::filesystem::perms(mode));
    changed.push_back(path);
  }

  std::string content(const std::string& path) const {
    std::ifstream file(full(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

 private:
  std::string top;
  PresetFolders where;
  std::vector<std::string> changed;
};

}  // namespace orvantesco
