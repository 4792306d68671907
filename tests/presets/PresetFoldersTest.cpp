#include "presets/PresetFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace orvantesco {
namespace {

/// A variable of the environment for one test.
class Variable {
 public:
  Variable(const char* variable, const char* value) : name(variable) {
    const char* const text = std::getenv(name);
    if (text != nullptr) before = text;
    value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { before ? ::setenv(name, before->c_str(), 1) : ::unsetenv(name); }

 private:
  const char* name;
  std::optional<std::string> before;
};

TEST(PresetFolders, TheTreesLieBelowTheFolderOfTheApplicationsData) {
  const PresetFolders folders = presetFoldersIn("/data");
  EXPECT_EQ(folders.presetRootPath, "/data/qlm-works/Orvantesco/Presets");
  EXPECT_EQ(folders.userPresetPath(), "/data/qlm-works/Orvantesco/Presets/User Presets");
  EXPECT_EQ(folders.factoryPresetPath(), "/data/qlm-works/Orvantesco/Presets/Factory Presets");
  EXPECT_EQ(presetFoldersIn("/data/").presetRootPath, folders.presetRootPath);
}

TEST(PresetFolders, TheVariableOfTheDesktopNamesTheFolder) {
  const Variable home("HOME", "/somewhere/me");
  const Variable data("XDG_DATA_HOME", "/elsewhere/data/");
  EXPECT_EQ(commonDataFolder(), "/elsewhere/data");
  EXPECT_EQ(presetFolders().presetRootPath, "/elsewhere/data/qlm-works/Orvantesco/Presets");
}

TEST(PresetFolders, WithoutTheVariableTheHomeHoldsTheFolder) {
  const Variable home("HOME", "/somewhere/me/");
  for (const char* value : {static_cast<const char*>(nullptr), "", "relative/path"}) {
    const Variable data("XDG_DATA_HOME", value);
    EXPECT_EQ(commonDataFolder(), "/somewhere/me/.local/share");
  }
}

TEST(PresetFolders, WithoutAnEnvironmentTheListOfUsersNamesTheHome) {
  const Variable data("XDG_DATA_HOME", nullptr);
  const Variable home("HOME", nullptr);
  const std::string folder = commonDataFolder();
  EXPECT_TRUE(folder.empty() || (folder.starts_with('/') && folder.ends_with("/.local/share")))
      << folder;
}

}  // namespace
}  // namespace orvantesco
