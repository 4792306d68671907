#pragma once

#include <string>
#include <vector>

#include "model/ModelFilters.h"
#include "model/Settings.h"
#include "model/Signal.h"
#include "model/SlotModel.h"

namespace orvantesco::model {

/// What a host brings along.
struct HostSetup {
  double sampleRate = 44100.0;
  double tempo = 120.0;
  bool monoInput = false;
  bool transportRuns = false;  ///< from position 0 at the first frame
};

/// The whole engine without effects, modulators, master effect and limiter, sample by sample, for
/// tests. It is plain on purpose: nothing of it is shared with the engine that it checks.
class EngineModel {
 public:
  EngineModel(const HostSetup& setup, const Settings& settings);
  EngineModel(const EngineModel&) = delete;
  EngineModel& operator=(const EngineModel&) = delete;

  /// Writes one parameter by its bank name; it acts from the next step of 32 samples on.
  void set(const std::string& name, double value);
  void setTapMasks(int slot, unsigned left, unsigned right);
  void setTempo(double tempo) { host.tempo = tempo; }

  /// The output has the length of the input; latency is not taken off.
  Signal render(const Signal& input);

 private:
  void runStep();
  double nextFadeGain();
  bool nextBarPulse();
  void mixStep(const StereoBlock& dry, const StereoBlock& wet, double fadeGain);

  HostSetup host;
  Rates rates;
  Settings bank;
  std::vector<SlotModel> slots;
  std::vector<SlotModel*> slotPointers;
  ButterworthLowpass inputFilterL, inputFilterR;

  bool fadeRequested = true;
  bool fadeRunning = false;
  double fadePosition = 0.0;
  double stoppedSamples = 0.0;
  double lastBar = 0.0;

  std::vector<double> inL, inR;    ///< all that came in
  std::vector<double> outL, outR;  ///< all that is ready to go out, latency first
  size_t framesOut = 0;
};

}  // namespace orvantesco::model
