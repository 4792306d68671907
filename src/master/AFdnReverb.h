#pragma once

#include <memory>
#include <vector>

#include "delay/MDelayLine.h"
#include "delay/MSVRAP1ModDelayLine.h"
#include "delay/MSinOsc.h"
#include "fx/DSPShell.h"
#include "fx/IppBiquad.h"
#include "master/FdnLanes.h"

namespace orvantesco {

/// A reverb of up to 16 delay lines that feed each other through a Householder reflection: a sum
/// of both inputs goes in, two different sums of the lines come out. The first lines swing a
/// little, so that no mode of the network rings on; a damping filter in each line lets the high
/// frequencies decay faster. In single precision inside: what rounding adds decays with the tail.
///
/// Controls for `setParam`:
///   0 seconds to -60 dB at low frequencies and 44100 Hz; longer at higher rates (`fdnLineGain`)
///   1 pre-delay in samples at 44100 Hz, whatever the rate
///   2 corner of the input's high-pass, 0..1 on the curve of all filters
///   3 damping, 0..1, none at 0
///
/// Memory is taken once, for 96000 Hz. Audio thread, but for construction.
class AFdnReverb : public DSPShell {
 public:
  /// An even number of lines, 2..16, of which the first `modulatedLines` swing. `layout` tells
  /// layouts of early reflections apart, of which this network has none.
  AFdnReverb(int lines, int modulatedLines, int layout);

  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 private:
  struct ModulatedLine {
    MSinOsc oscillator;
    MSVRAP1ModDelayLine line;
  };

  static constexpr int kMaxLines = FdnVector::kMaxLines;

  void allocate();
  MDelayLine& lineAt(int i) noexcept;
  void placeLines() noexcept;
  void updatePreDelay() noexcept;
  void updateGains() noexcept;
  const float* takeInput(float* scratch) noexcept;
  void readLines() noexcept;
  void giveOutput() noexcept;

  int lines;
  int modulatedLines;

  float decaySeconds = 12.0F;
  float inverseDecay = 1.0F / 12.0F;
  float damping = 0.5F;
  double preDelayKnob = 1102.0;  ///< samples at 44100 Hz, not whole ones

  int preDelaySamples = 1102;
  FdnVector network;

  IppBiquad inputHighPass{false, kHighpassFilter, 1, 24.0};
  MDelayLine preDelay;
  std::vector<std::unique_ptr<ModulatedLine>> modulatedLine;
  std::vector<std::unique_ptr<MDelayLine>> plainLine;

  SwungScratch swungScratch[kMaxLines] = {};
  alignas(32) float plainScratch[kMaxLines][kVectorLength] = {};
  alignas(32) float writeScratch[kMaxLines][kVectorLength] = {};
  alignas(32) float leftSum[kVectorLength] = {};
  alignas(32) float rightSum[kVectorLength] = {};
};

}  // namespace orvantesco
