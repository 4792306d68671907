#pragma once

#include <string>

namespace orvantesco::cli {

/// A line on the terminal that grows with the work. Writes nothing where stderr is no terminal.
class ProgressBar {
 public:
  ProgressBar(const std::string& label, bool wanted);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { clear(); }

  /// Share of the work that is done, 0..1.
  void show(double share);

  /// Takes the line away, so that other messages have it for themselves.
  void clear();

 private:
  std::string label;
  bool active;
  int shownPercent = -1;
};

}  // namespace orvantesco::cli
