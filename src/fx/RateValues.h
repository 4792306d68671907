#pragma once

#include "fx/Shared.h"

namespace orvantesco {

/// The values that every block derives from the sample rate: one set for the whole process, since
/// blocks read them without a context. They are written by `setRateValues` alone, so they read
/// like constants everywhere else; a block that keeps something derived from them takes it anew
/// in its `rateChanged`.

/// Range of rates, in Hz, that the signal blocks are built for. Hosts outside of it are served at
/// the nearest end; `rateRatio` knows their true rate.
inline constexpr double kMinSampleRate = 32000.0;
inline constexpr double kMaxSampleRate = 96000.0;

extern Shared<double> sampleRate;          ///< Hz, within kMinSampleRate..kMaxSampleRate
extern Shared<double> millisecondSamples;  ///< samples of one millisecond, not rounded
extern Shared<double> nyquist;             ///< Hz
extern Shared<double> inverseSampleRate;   ///< seconds of one sample
extern Shared<double> hundredOverRate;     ///< 100 / sampleRate
extern Shared<double> minDelay;            ///< samples: 1 ms, shortest time of a delay line
extern Shared<double> minModDelay;         ///< samples: 0.1 ms, shortest time of a modulated read
extern Shared<double> rateRatio;           ///< host's rate over 44100, not limited
extern Shared<double> inverseRateRatio;    ///< 44100 over the host's rate
extern Shared<int> limiterLookahead;       ///< whole samples of one millisecond
extern Shared<int> slowStep;               ///< samples: 80 ms
extern Shared<int> fastStep;               ///< samples: 200 ms
extern Shared<int> maxDelay;               ///< samples: 8 s and a margin for modulation
extern Shared<double> initialisedRate;     ///< host's rate of the last `setRateValues`, -1 before

/// Takes the host's rate in Hz and writes every value above. Words that would not change are not
/// written, so that a second effect object at the rate in force disturbs nobody's cache line.
/// A rate that is not finite or not above 0 is ignored. Any thread; the last caller wins.
void setRateValues(double hostRate) noexcept;

}  // namespace orvantesco
