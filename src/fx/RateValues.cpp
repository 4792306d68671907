#include "fx/RateValues.h"

#include <algorithm>
#include <cmath>

namespace orvantesco {

namespace {

constexpr double kReferenceRate = 44100.0;

constexpr int lookaheadAt(double rate) { return static_cast<int>(rate / 1000.0); }
constexpr int slowStepAt(double rate) { return static_cast<int>(2.0 * rate / 25.0); }
constexpr int fastStepAt(double rate) { return static_cast<int>(rate * 0.2); }
constexpr int maxDelayAt(double rate) { return static_cast<int>(rate * 8.0 + 1000.0); }

template <class T>
void writeIfChanged(Shared<T>& word, T value) noexcept {
  if (word.get() != value) word = value;
}

}  // namespace

constinit Shared<double> sampleRate{kReferenceRate};
constinit Shared<double> millisecondSamples{kReferenceRate * 0.001};
constinit Shared<double> nyquist{kReferenceRate * 0.5};
constinit Shared<double> inverseSampleRate{1.0 / kReferenceRate};
constinit Shared<double> hundredOverRate{100.0 / kReferenceRate};
constinit Shared<double> minDelay{kReferenceRate * 0.001};
constinit Shared<double> minModDelay{kReferenceRate * 0.0001};
constinit Shared<double> rateRatio{1.0};
constinit Shared<double> inverseRateRatio{1.0};
constinit Shared<int> limiterLookahead{lookaheadAt(kReferenceRate)};
constinit Shared<int> slowStep{slowStepAt(kReferenceRate)};
constinit Shared<int> fastStep{fastStepAt(kReferenceRate)};
constinit Shared<int> maxDelay{maxDelayAt(kReferenceRate)};
constinit Shared<double> initialisedRate{-1.0};

void setRateValues(double hostRate) noexcept {
  if (!std::isfinite(hostRate) || hostRate <= 0.0) return;
  const double rate = std::clamp(hostRate, kMinSampleRate, kMaxSampleRate);
  const double ratio = hostRate / kReferenceRate;
  writeIfChanged(sampleRate, rate);
  writeIfChanged(millisecondSamples, rate * 0.001);
  writeIfChanged(nyquist, rate * 0.5);
  writeIfChanged(inverseSampleRate, 1.0 / rate);
  writeIfChanged(hundredOverRate, 100.0 / rate);
  writeIfChanged(minDelay, rate * 0.001);
  writeIfChanged(minModDelay, rate * 0.0001);
  writeIfChanged(rateRatio, ratio);
  writeIfChanged(inverseRateRatio, 1.0 / ratio);
  writeIfChanged(limiterLookahead, lookaheadAt(rate));
  writeIfChanged(slowStep, slowStepAt(rate));
  writeIfChanged(fastStep, fastStepAt(rate));
  writeIfChanged(maxDelay, maxDelayAt(rate));
  writeIfChanged(initialisedRate, hostRate);
}

}  // namespace orvantesco
