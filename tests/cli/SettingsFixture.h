#pragma once

#include <fstream>
#include <iterator>

#include "cli/RenderFixture.h"

namespace orvantesco::cli {

/// Runs commands in a folder of its own, as a user does. The library of presets lies in there too.
class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { ::setenv("XDG_DATA_HOME", folder.file("data").c_str(), 1); }
  ~SettingsTest() override { ::unsetenv("XDG_DATA_HOME"); }

  ProgramResult run(const Arguments& arguments) { return runProgramIn(folder.name(), arguments); }

  /// A run that has to succeed without a word on stderr.
  std::string outputOf(const Arguments& arguments) {
    const ProgramResult result = run(arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  nlohmann::json jsonOf(const Arguments& arguments) {
    return nlohmann::json::parse(outputOf(arguments), nullptr, false);
  }

  /// A run that has to fail with one line that holds a text, and to leave nothing behind.
  void expectRefusal(int exitCode, const Arguments& arguments, const std::string& mention) {
    const auto before = folder.entries();
    const ProgramResult result = run(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << result.err;
    EXPECT_EQ(linesOf(result.err), 1) << result.err;
    EXPECT_NE(result.err.find(mention), std::string::npos) << result.err;
    EXPECT_EQ(folder.entries(), before) << "something was left behind";
  }

  void write(const std::string& name, const std::string& content) {
    std::ofstream(folder.file(name), std::ios::binary) << content;
  }

  std::string read(const std::string& name) {
    std::ifstream stream(folder.file(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  TemporaryFolder folder;
};

inline std::string presetOf(int version, const std::string& rest) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) + "\n\n" +
         rest;
}

}  // namespace orvantesco::cli
