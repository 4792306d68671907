#include "cli/AutomationFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "cli/Failure.h"
#include "cli/OptionValue.h"
#include "cli/Text.h"
#include "params/PlainText.h"

namespace orvantesco::cli {
namespace {

/// Later than any render, and far within what a frame count can hold.
constexpr ExpectedNumber timeRange{"time", 0.0, 1e9, "seconds from 0 on"};

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

AutomationEvent eventOf(std::string_view line, const ParamBank& bank, double sampleRateHz) {
  const auto fields = split(line, ',');
  if (fields.size() != 3) {
    throw badCall(fmt::format("'{}' given, expected seconds,NAME,VALUE", oneLine(line)));
  }
  const double seconds = numberFor(timeRange, trimmed(fields[0]));
  return {std::llround(seconds * sampleRateHz), parseSetting(bank, fields[1], fields[2])};
}

std::ifstream openText(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw workFailed(fmt::format("{}: is a folder, expected lines of seconds,NAME,VALUE", path));
  }
  std::ifstream file(path);
  if (!file) throw workFailed(fmt::format("{}: cannot be read: {}", path, std::strerror(errno)));
  return file;
}

}  // namespace

std::vector<AutomationEvent> readAutomationFile(const std::string& path, const ParamBank& bank,
                                                double sampleRateHz) {
  std::ifstream file = openText(path);
  std::vector<AutomationEvent> events;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    std::string_view text = line;
    if (number == 1 && text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (trimmed(text).empty()) continue;
    try {
      events.push_back(eventOf(text, bank, sampleRateHz));
    } catch (const Failure& failure) {
      throw Failure(failure.exitCode(),
                    fmt::format("{}: line {}: {}", path, number, failure.what()));
    }
  }
  if (file.bad()) throw workFailed(fmt::format("{}: cannot be read to its end", path));
  std::stable_sort(events.begin(), events.end(),
                   [](const auto& a, const auto& b) { return a.frame < b.frame; });
  return events;
}

}  // namespace orvantesco::cli
