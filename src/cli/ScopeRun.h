#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/AudioReader.h"
#include "cli/AutomationFile.h"
#include "cli/RenderCall.h"
#include "cli/RenderEngine.h"
#include "cli/ScopeTrace.h"

namespace orvantesco::cli {

/// One call of `scope`.
struct ScopeCall {
  RenderSettings settings;
  std::string input;   ///< empty: silence
  std::string output;  ///< .csv or .png
  std::optional<double> seconds;
  int every = 32;  ///< samples from one row to the next
};

/// Plays an input through the engine, as a render does, and watches the modulators.
///
/// Blocks end where the engine's vectors of 32 samples end, so that each vector is seen once.
class ScopeRun {
 public:
  /// Opens what is read and builds the engine.
  explicit ScopeRun(const ScopeCall& call);

  double lengthSeconds() const;
  void run(ScopeSheet& sheet);

 private:
  std::unique_ptr<AudioReader> openInput() const;
  std::unique_ptr<AudioReader> openSideChain() const;
  double sampleRate() const;
  std::int64_t framesToWatch() const;
  int framesToVectorEnd() const;
  void warmUp();
  void applyEvents();
  int cutAtEvent(int frames) const;
  void readInputs(int frames);
  void render(int frames);
  void report(ScopeSheet& sheet);

  const ScopeCall call;
  std::unique_ptr<AudioReader> input;
  std::unique_ptr<AudioReader> sideChain;
  RenderEngine engine;
  std::vector<AutomationEvent> events;
  std::size_t nextEvent = 0;
  std::int64_t frames = 0;      ///< to be watched
  std::int64_t position = 0;    ///< frames since the input's first one
  std::int64_t sinceStart = 0;  ///< frames that the engine has run, the warm-up too

  std::vector<double> left, right, side, sideRight, outLeft, outRight;
};

}  // namespace orvantesco::cli
