#pragma once

#include <string>
#include <vector>

#include "cli/OutputFile.h"
#include "cli/ScopeTrace.h"

namespace orvantesco::cli {

/// The traces as a PNG picture: one lane for each modulator, time from left to right.
class ScopePicture : public ScopeSheet {
 public:
  ScopePicture(const std::string& path, double lengthSeconds);
  void take(const ScopeRow& row) override;
  void commit() override;

 private:
  /// What a trace does within one column of pixels.
  struct Span {
    double low = 0.0, high = 0.0, last = 0.0;
    bool isSeen = false;
  };
  using Lane = std::vector<Span>;

  OutputFile file;
  double length;
  std::vector<Lane> lanes;
};

}  // namespace orvantesco::cli
