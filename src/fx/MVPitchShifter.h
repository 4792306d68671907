#pragma once

#include <vector>

#include "fx/DSPShell.h"
#include "fx/SectionChain.h"
#include "fx/SimpleOSC.h"

namespace orvantesco {

/// "PITCH SHIFT" and "PITCH SHIFT ST": transposes one channel by up to an octave.
///
/// The delay-line shifter (U. Zoelzer (ed.), "DAFX", chapter on time-segment processing): two taps
/// half a cycle apart sweep a ring of samples, whose speed of sweeping is the change of pitch. A
/// triangle fades between them, so that a tap is silent at the moment at which it jumps. A cycle
/// runs over twice the size, 1..100 ms; phase p of 0..2 reads p times the size back. Reads between
/// samples go through a first-order recursion whose coefficient is the square of the fraction.
///
/// "PITCH SHIFT ST" (`dual`) has its pitch from COARSE L in the left instance and from COARSE R in
/// the right one. It is thought of as three voices at a third of the level each; they share one
/// rate and one phase and so are one and the same signal, which is computed once.
///
/// Parameters: 0 coarse -1..1 for 12 semitones (dual: of the left instance); 1 fine -1..1
/// semitones (dual: coarse of the right instance); 2 size in ms; 3 spread -1..1, in semitones, half
/// of them when dual; 4 wet share. Modulated: 0 by 12 semitones, 1 by half a one, 2, 3 by one.
class MVPitchShifter final : public SimpleOSC, public DSPShell {
 public:
  static constexpr int kBufferLength = 65536;

  /// Takes 512 KiB.
  MVPitchShifter(bool isRight, bool dual);

  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  /// The ring is cleared later, as reads come near what it held: all at once takes too long.
  void reset() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  /// The size as it stands in its glide: half of what a tap sweeps over.
  double sizeSamples() const noexcept { return sizeSmoother.state(); }

 private:
  /// Samples a tap can lie back, and one more.
  static constexpr int kReach = 19202;

  void setCoarse(double value) noexcept;
  double modulationSemitones() const noexcept;
  void updateRatio() noexcept;
  double targetSamples() const noexcept;
  void followWithLowpass() noexcept;
  void clearStale(const float* size) noexcept;
  void sweep(const float* size) noexcept;

  // Settings
  const bool isDual;
  const double spreadShare;  ///< share of the spread
  double coarse = 0.0;       ///< semitones
  double fine = 0.0;         ///< semitones
  double sizeMs = 10.0;
  double spreadSemitones = 0.0;

  // Derived
  double semitones = 0.0;
  double ratioTerm = 0.0;    ///< 1 - 2^(semitones / 12): samples that a tap moves per sample
  double cutoffLast = -1.0;  ///< smoothed ratio term of the low-pass in force

  // State
  Smoother sizeSmoother;
  Smoother cutoffSmoother;
  SectionChain antiAlias;
  std::vector<double> buffer;  ///< behind the ring's last slot its first one once more
  int writeIndex = 0;
  int written = 0;               ///< samples since the last reset, kBufferLength at most
  int staleEnd = kBufferLength;  ///< slots from here to the ring's end are 0, while it fills
  double taps[2] = {};
  alignas(32) float rates[kVectorLength] = {};
};

}  // namespace orvantesco
