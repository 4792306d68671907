#pragma once

#include <string>
#include <vector>

#include "presets/PresetReader.h"

namespace orvantesco::cli {

/// A preset and where it was found.
struct PresetSource {
  std::string path;
  PresetReading reading;
};

/// Reads a preset that is named by its file, or by its name in the library ("Echo/Slap", the
/// user's tree before the factory's). Throws a `Failure`.
PresetSource readPresetArgument(const std::string& argument);

/// Path of the file that a preset argument names, also through the library; empty where there is
/// none.
std::string fileOfPreset(const std::string& argument);

/// Reads a preset file. Throws a `Failure`.
PresetSource readPresetFile(const std::string& path);

/// What does not read as it should, each as a line "FILE:LINE: ...".
std::vector<std::string> problemLines(const PresetSource& source);

}  // namespace orvantesco::cli
