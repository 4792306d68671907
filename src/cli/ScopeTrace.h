#pragma once

#include <array>

namespace orvantesco::cli {

/// The modulators that a scope watches: LFOs, gates, envelopes, logic units, in the order of the
/// menu of modulation sources.
inline constexpr int scopeTraces = 14;

/// What all modulators give to one sample of the sound.
struct ScopeRow {
  double seconds = 0.0;  ///< after the first sample of the input
  std::array<double, scopeTraces> values{};
};

/// The name of a trace as the menu of sources has it.
const char* scopeTraceName(int trace);

/// Takes what a scope sees, row by row, and writes it to a file.
class ScopeSheet {
 public:
  virtual ~ScopeSheet() = default;
  virtual void take(const ScopeRow& row) = 0;
  /// Completes the file. Throws a `Failure` where that is not possible.
  virtual void commit() = 0;
};

}  // namespace orvantesco::cli
