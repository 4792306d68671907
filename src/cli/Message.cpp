#include "cli/Message.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli/Failure.h"
#include "cli/Text.h"

namespace orvantesco::cli {
namespace {

/// A closed stderr must not end the program in the middle of its work.
void printLine(const std::string& line) {
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
}

}  // namespace

void printError(std::string_view line) {
  printLine(fmt::format("orvantesco: {}\n", oneLine(line)));
}

void printWarning(std::string_view line) {
  printLine(fmt::format("orvantesco: warning: {}\n", oneLine(line)));
}

void printResult(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (written && std::fflush(stdout) == 0) return;
  throw workFailed(fmt::format("stdout: cannot be written: {}", std::strerror(errno)));
}

}  // namespace orvantesco::cli
