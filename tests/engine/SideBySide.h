#pragma once

#include <string>

#include "engine/EngineUnderTest.h"
#include "model/EngineModel.h"

namespace orvantesco {

/// Difference, of full scale, that engine and model may show. Both compute in doubles, in another
/// order and with other filter structures.
inline constexpr double kAgreement = 1e-9;

/// The same while a delay time glides far. The all-pass that interpolates comes to the edge of
/// stability at each whole sample that it passes, where it carries the rounding of the time on.
inline constexpr double kGlideAgreement = 1e-7;

/// The same at 32000 Hz, where the input filter's corner lies so near to half the rate that its
/// twelfth-order direct form is only good to -96 dB.
inline constexpr double kLowestRateAgreement = 5e-5;

/// The rates at which engine and model are compared, in Hz.
inline constexpr double kComparedRates[] = {44100.0, 48000.0, 96000.0};

/// Settings in which a comparison shows something: no dry signal, no main modulation, one slot on
/// both sides of the input at full level, echoes at 71.3 and 93.7 ms, filters out of the way.
model::Settings baseSettings();

/// `base` with some values replaced.
model::Settings with(model::Settings base, const model::Settings& changes);

/// Engine and model with the same settings, fed the same signal.
class SideBySide {
 public:
  SideBySide(const model::HostSetup& setup, const model::Settings& settings)
      : sampleRate(setup.sampleRate), engine(setup, settings), model(setup, settings) {}

  void set(const std::string& name, double value);
  void setTempo(double tempo);
  void setTapMasks(int slot, unsigned left, unsigned right);

  /// Feeds both and returns the worst difference of any sample.
  double difference(const model::Signal& input);

  /// The same after 0.6 s of silence, in which the fade and every glide come to rest.
  double settledDifference(const model::Signal& input);

  /// Whole steps of 32 samples that last about so many seconds, so that what is set in between
  /// takes effect at the same frame on both.
  size_t steps(double seconds) const { return static_cast<size_t>(seconds * sampleRate) / 32 * 32; }

  /// Greatest magnitude that the engine gave in the last comparison, so that a test can tell
  /// silence from agreement.
  double lastPeak = 0.0;

 private:
  double sampleRate = 44100.0;
  EngineUnderTest engine;
  model::EngineModel model;
};

}  // namespace orvantesco
