#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/Orvantesco.h"
#include "host/OfflineHost.h"
#include "model/EngineModel.h"

namespace orvantesco {

/// The engine behind the same few operations that the model has, driven as a host drives it.
class EngineUnderTest {
 public:
  EngineUnderTest(const model::HostSetup& setup, const model::Settings& settings);

  /// Stores the value in its record and dispatches it.
  void set(const std::string& name, double value);
  void setTempo(double tempo) { host.setTempo(tempo); }

  /// One host block after the other. The last length of `blocks` repeats; a length of 0 is a call
  /// without frames.
  model::Signal render(const model::Signal& input, const std::vector<int>& blocks = {512});

  int latency() const { return host.latencySamples(); }
  Orvantesco& object() { return effect; }

 private:
  void renderBlock(const model::Signal& input, model::Signal& output, int frames);

  OfflineHost host;
  Orvantesco effect;
  std::map<std::string, int> indexByName;
  int mainInputs = 2;
};

}  // namespace orvantesco
