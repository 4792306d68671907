#pragma once

namespace orvantesco {

/// The host's transport at one frame. Positions are in quarter notes unless stated.
struct HostTimeInfo {
  double tempo = 120.0;     ///< beats per minute
  double samplePos = 0.0;   ///< samples since the start of the song
  double ppqPos = 0.0;      ///< quarter notes since the start of the song
  double cycleStart = 0.0;  ///< loop start
  double cycleEnd = 0.0;    ///< loop end
  int numerator = 4;        ///< time signature
  int denominator = 4;
  bool transportIsRunning = false;
  bool transportLoopEnabled = false;
};

}  // namespace orvantesco
