#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/ParameterSetting.h"

namespace orvantesco::cli {

/// One line of an automation file.
struct AutomationEvent {
  std::int64_t frame = 0;  ///< frames after the first of the input
  ParameterSetting setting;
};

/// Reads the CSV lines `seconds,NAME,VALUE` of a file, sorted by time; lines of the same frame keep
/// their order. Empty lines are skipped. Throws a `Failure` that names the file and the line.
std::vector<AutomationEvent> readAutomationFile(const std::string& path, const ParamBank& bank,
                                                double sampleRateHz);

}  // namespace orvantesco::cli
