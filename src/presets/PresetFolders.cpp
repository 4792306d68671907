#include "presets/PresetFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace orvantesco {
namespace {

std::string_view environmentText(const char* name) {
  const char* const text = std::getenv(name);
  return text == nullptr ? std::string_view() : std::string_view(text);
}

/// Home as the system's list of users has it, for programs that run without an environment.
std::string listedHome() {
  std::array<char, 4096> texts{};
  passwd entry{};
  passwd* found = nullptr;
  const int fault = ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
  const bool hasHome = fault == 0 && found != nullptr && found->pw_dir != nullptr;
  return hasHome ? found->pw_dir : "";
}

std::string homeFolder() {
  const std::string_view home = environmentText("HOME");
  return home.starts_with('/') ? std::string(home) : listedHome();
}

std::string withoutLastSlash(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

std::string PresetFolders::userPresetPath() const { return presetRootPath + "/User Presets"; }

std::string PresetFolders::factoryPresetPath() const { return presetRootPath + "/Factory Presets"; }

std::string commonDataFolder() {
  // A relative path would mean another folder in each program, so the variable does not count.
  const std::string_view dataHome = environmentText("XDG_DATA_HOME");
  if (dataHome.starts_with('/')) return withoutLastSlash(std::string(dataHome));
  const std::string home = homeFolder();
  return home.starts_with('/') ? withoutLastSlash(home) + "/.local/share" : "";
}

PresetFolders presetFoldersIn(const std::string& dataFolder) {
  if (dataFolder.empty()) return {};
  return {withoutLastSlash(dataFolder) + "/qlm-works/Orvantesco/Presets"};
}

PresetFolders presetFolders() { return presetFoldersIn(commonDataFolder()); }

}  // namespace orvantesco
