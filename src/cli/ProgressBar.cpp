#include "cli/ProgressBar.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace orvantesco::cli {
namespace {

constexpr int width = 40;

}  // namespace

ProgressBar::ProgressBar(const std::string& text, bool wanted)
    : label(text), active(wanted && ::isatty(STDERR_FILENO) == 1) {}

void ProgressBar::show(double share) {
  const int percent = static_cast<int>(std::clamp(share, 0.0, 1.0) * 100.0);
  if (!active || percent == shownPercent) return;
  shownPercent = percent;
  const int done = percent * width / 100;
  fmt::print(stderr, "\r\x1b[K{:#<{}}{:.<{}} {:3}% {}", "", done, "", width - done, percent, label);
  std::fflush(stderr);
}

void ProgressBar::clear() {
  if (!active || shownPercent < 0) return;
  fmt::print(stderr, "\r\x1b[K");
  std::fflush(stderr);
  shownPercent = -1;
}

}  // namespace orvantesco::cli
