#pragma once

#include "fx/RandomDraw.h"
#include "mod/ModTestSupport.h"
#include "mod/WaveLFO.h"
#include "mod/WaveTable.h"

namespace orvantesco::testing_support {

/// What a user sets on an LFO.
struct LfoSettings {
  double hz = 1.0, phase = 0.0, glideMs = 0.0, depth = 1.0, modDepth = 0.0;
  int wave = 0;
  int polarity = 2;  // bipolar
  int mode = 0;      // loop
  bool swap = false, reverse = false;

  void giveTo(WaveLFO& lfo) const {
    lfo.setWave(waveList[static_cast<std::size_t>(wave)]);
    lfo.setRate(hz);
    lfo.setPhase(phase);
    lfo.setGlide(glideMs);
    lfo.setDepth(depth);
    lfo.setRateModDepth(modDepth);
    lfo.setPolarity(static_cast<WaveLFO::Polarity>(polarity));
    lfo.setMode(static_cast<WaveLFO::Mode>(mode));
    lfo.setSwap(swap);
    lfo.setReverse(reverse);
  }
};

/// The same LFO, sample by sample.
struct PlainLfo {
  double rate;
  double phase = 0.0, held = 0.0, raw = 0.0;
  PlainGlide glide;
  RandomDraw random{5};

  explicit PlainLfo(double sampleRateHz) : rate(sampleRateHz), glide(0.0, sampleRateHz) {}

  double draw() { return random.next() / 32767.0; }

  Vector32 run(const LfoSettings& s, bool trigger, const double* source) {
    glide.setTime(1.5 * s.glideMs, rate);
    double inc = std::fmin(std::fmax(4096.0 * s.hz / rate, 0.0), 46.0);
    if (source != nullptr) {
      const double hz = s.modDepth * source[0] * 500.0 + s.hz;
      inc = std::fmin(std::fmax(hz * 4096.0 / rate, 0.0), 46.0);
    }
    const WaveRecord& record = *waveList[static_cast<std::size_t>(s.wave)];
    const double scale = s.polarity == 2 ? 1.0 : (s.polarity == 0 ? 0.5 : -0.5);
    const double offset = s.polarity == 2 ? 0.0 : scale;
    const int shift = static_cast<int>(4095.0 * s.phase);
    bool wrapped = false;
    bool retriggered = false;
    Vector32 out{};
    for (double& sample : out) {
      const double p = phase + inc;
      phase = p;
      if (p >= 4096.0) {
        if (s.mode == 0) {
          wrapped = true;
          phase = p - 4096.0;
        } else if (trigger) {
          phase = 0.0;
          wrapped = true;
        } else {
          phase = 4096.0;
        }
      }
      if (trigger && s.mode != 2 && !retriggered) {
        retriggered = true;
        wrapped = true;
        phase = 0.0;
      }
      double y = 0.0;
      if (record.id == 38) {
        if (wrapped) held = draw();
        y = 2.0 * held - 1.0;
      } else {
        const double q = phase < 4095.0 ? phase : 4095.0;
        const int index = (static_cast<int>(q) + shift) & 4095;
        const double w = record.samples[s.reverse ? 4096 - index - 1 : index];
        raw = s.swap ? -w : w;
        y = std::fmin(std::fmax(raw, -1.0), 1.0);
      }
      sample = glide.tickOffset(y * scale + offset) * s.depth;
    }
    return out;
  }
};

}  // namespace orvantesco::testing_support
