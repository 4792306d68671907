#pragma once

#include "delay/DelayRing.h"
#include "delay/GrainReader.h"
#include "delay/ReverseReader.h"
#include "delay/TapEchoes.h"
#include "delay/TapReader.h"
#include "fx/DSPShell.h"
#include "fx/IppBiquad.h"

namespace orvantesco {

/// The modulation controls of a delay, by their index in DSPShell, with the unit of their depth.
enum DelayControl : int {
  kDelayTimeControl = 0,      ///< samples; every mode, TAPPED only without a source of its own
  kGrainPositionControl = 3,  ///< of 0..1
  kGrainSpeedControl = 4,     ///< half octaves
  kGrainSizeControl = 5,      ///< of 400 ms
  kTapsTimeControl = 6,       ///< seconds; TAPPED
};

/// One channel of a slot's delay: one long ring, written once a sub-block and read by up to 16
/// taps, or backwards, or in grains. A slot has two, which share nothing.
///
/// Within a sub-block all reads come before the write, so the shortest time is one millisecond,
/// which is never less than a sub-block. A result stands until the next read of this delay.
///
/// Lifecycle: construct, `resize` (the only later place where memory is taken), then settings and
/// reads in any order. Audio thread only, but for construction and `resize`; the depths behind
/// `setModDepth` are plain words of that thread.
class QLMMultiDelay final : public DSPShell {
 public:
  enum Mode : int { kForward = 0, kBackward = 1, kGrain = 2, kTapped = 3 };

  static constexpr int kTapCount = TapReader::kTapCount;
  static constexpr int kFirstLength = 10000;  ///< samples, until the first `resize`

  explicit QLMMultiDelay(bool isRight = false);

  /// Turns the sign of the time modulation: one modulator moves left and right apart.
  void setRightChannel() noexcept { channelSign = -1.0; }

  /// Takes a Mode and resets; values above kTapped read like it, values below 0 like kForward.
  void setDelayMode(int newMode) noexcept;
  int delayMode() const noexcept { return mode; }
  void setSecondary(int newMode) noexcept override { setDelayMode(newMode); }

  /// Silence in the ring, in the filters and in the interpolators, at a cost that does not depend
  /// on the length. Glides, the grain that plays, and where a reverse cycle began, stay.
  void reset() noexcept override;
  /// Replaces the ring by one of `samples`, takes everything that depends on the rate anew and
  /// resets. Throws std::bad_alloc.
  void resize(int samples);
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  /// One vector (n is 32) of one tap (0..15; only TAPPED uses others than 0) at a delay in
  /// samples, before modulation. The delay is held within 1 ms and the ring; the tap glides there.
  const double* readTap(double delay, int n, int tap) noexcept;

  /// `readTap` of both channels at once: the same samples, in less time. The results are in
  /// `result()` of each.
  static void readTapPair(QLMMultiDelay& left, double delayL, QLMMultiDelay& right, double delayR,
                          int n) noexcept;

  /// One read of several; `samples` receives the result.
  struct TapRead {
    double delay = 0.0;
    int tap = 0;
    const double* samples = nullptr;
  };

  /// `readTap` of `count` (0..16) different taps, in the order given, side by side in vector
  /// lanes: the same samples as one after the other. All results stand until the next read.
  void readTaps(TapRead* reads, int count, int n) noexcept;

  /// The result of the last `readTap` or `readTapPair`.
  const double* result() const noexcept { return singleOutput; }

  /// n samples (1..32) as they were written, whole samples back: the last of them is int(delay)
  /// samples older than the newest one. No glide, interpolation or filter. The pointer stands
  /// until the next write or `readRaw`.
  const double* readRaw(double delay, int n) noexcept;

  /// Adds the echoes that swell up to a tap at `delay` samples to 32 `samples`; see TapEchoes.h.
  void addEchoes(const TapEchoes& echoes, double delay, double* samples) const noexcept {
    orvantesco::addEchoes(ring, echoes, delay, samples);
  }

  /// Appends n samples (0..32), held at ±1e8; what is not finite is written as 0.
  void writeBlock(const double* source, int n) noexcept { ring.write(source, n); }

  /// The interpolators start anew with the next read, without a leap.
  void clearTapMemory() noexcept;
  /// The next tap that is read takes its new time at once instead of gliding there.
  void snapTapGlide() noexcept { taps.snapNextGlide(); }

  /// Corners of the echo filters as Hz / sampleRate (that very quotient: the ends of the range,
  /// 20000 and 20 Hz, switch a filter off). FORWARD runs both, BACKWARD always the low-pass, the
  /// other modes none.
  void setLowpass(double normalisedFrequency) noexcept;
  void setHighpass(double normalisedFrequency) noexcept;

  /// Offset of the reverse cycles in samples, not below 0; glides over 300 ms.
  void setReverseMod(double samples) noexcept { reverse.setOffset(samples); }
  void setReverseFade(double ms) noexcept { reverse.setFade(ms); }
  /// Asks for a new reverse cycle; kept, in any mode, until one begins.
  void triggerReverse() noexcept { reverse.trigger(); }

  void setGrainSize(double ms) noexcept { grainSizeMs = ms; }
  /// Half octaves: 1 plays two octaves up.
  void setGrainSpeed(double halfOctaves) noexcept { grainSpeedBase = halfOctaves; }
  /// 0..1: grains start at the delay time .. at the newest material. Shortens reverse cycles too.
  void setGrainPosition(double position) noexcept { grainPositionBase = position; }
  /// ms; 0 for a fifth of a grain.
  void setGrainFade(double ms) noexcept { grains.setFade(ms); }

 private:
  using Renderer = void (QLMMultiDelay::*)(const TapReader::Read& read) noexcept;

  struct TimeRange {
    double swing = 0.0;  ///< samples that modulation adds
    float shortest = 0.0F;
    float longest = 0.0F;

    float targetOf(double delay) const noexcept;
  };

  TimeRange timeRange() const noexcept;
  float targetOf(double delay) const noexcept { return timeRange().targetOf(delay); }
  void renderForward(const TapReader::Read& read) noexcept;
  void renderBackward(const TapReader::Read& read) noexcept;
  void renderGrain(const TapReader::Read& read) noexcept;
  void renderTapped(const TapReader::Read& read) noexcept;
  void filterEchoes(double* samples) noexcept;
  void dropRunaway(double* samples) noexcept;
  bool isTapped() const noexcept { return mode >= kTapped; }
  bool readsTaps() const noexcept { return isTapped() || mode <= kForward; }

  double positionNow() const noexcept;
  double rateNow() noexcept;
  double sizeNow() const noexcept;

  int mode = kForward;
  double grainSizeMs = GrainReader::kFirstSizeMs;
  double grainSpeedBase = 0.0;
  double grainPositionBase = 0.0;

  Renderer renderer = &QLMMultiDelay::renderForward;
  bool lowpassActive = false;
  bool highpassActive = false;
  double grainRateExponent = 0.0;  ///< octaves that grainRate was computed for
  double grainRate = 1.0;

  DelayRing ring;
  TapReader taps;
  ReverseReader reverse;
  GrainReader grains;
  IppBiquad lowpass;
  IppBiquad highpass;

  alignas(64) double singleOutput[kVectorLength] = {};
  alignas(64) double tapOutputs[kTapCount][kVectorLength] = {};
  double rawScratch[kVectorLength] = {};
};

}  // namespace orvantesco
