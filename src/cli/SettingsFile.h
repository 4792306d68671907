#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "cli/RenderArguments.h"
#include "cli/RenderEngine.h"

namespace orvantesco::cli {

/// A command that makes settings from files and options and saves them: `preset save`, `state
/// save`.
class SettingsFile {
 public:
  /// Declares the options; the object must outlive the parsing.
  void addTo(CLI::App& command);

  /// An engine with the settings. Throws a `Failure`.
  std::unique_ptr<RenderEngine> load() const;

  /// Writes the output.
  void write(const void* content, std::size_t bytes) const;

 private:
  RenderArguments arguments;
  std::string output;
};

}  // namespace orvantesco::cli
