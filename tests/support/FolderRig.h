#pragma once

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvantesco {

/// A folder of its own for one test, gone at its end.
class FolderRig {
 public:
  FolderRig() {
    std::string pattern = (std::filesystem::temp_directory_path() / "orvantesco-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    root = std::filesystem::canonical(pattern).string();
  }
  FolderRig(const FolderRig&) = delete;
  FolderRig& operator=(const FolderRig&) = delete;
  ~FolderRig() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  const std::string& path() const { return root; }
  std::string file(const std::string& name) const { return root + "/" + name; }

  /// Writes a file, with the folders that it lies in.
  std::string write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(file(name)).parent_path());
    std::ofstream(file(name), std::ios::binary) << content;
    return file(name);
  }

  std::string read(const std::string& name) const {
    std::ifstream stream(file(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  bool holds(const std::string& name) const { return std::filesystem::exists(file(name)); }

  /// Paths of all files below the folder, sorted, hidden ones too.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      if (!entry.is_directory()) {
        names.push_back(entry.path().lexically_relative(root).string());
      }
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string root;
};

}  // namespace orvantesco
