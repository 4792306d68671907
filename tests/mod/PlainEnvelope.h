#pragma once

#include "fx/IppBiquad.h"
#include "mod/Envelope.h"
#include "mod/ModTestSupport.h"

namespace orvantesco::testing_support {

struct EnvelopeSettings {
  bool follower = true, linear = false;
  double gain = 1.0, attackMs = 10.0, releaseMs = 100.0, holdMs = 0.0, threshold = 0.25;
  double locut = 0.0, hicut = 1.0, depth = 1.0;

  void giveTo(Envelope& envelope) const {
    envelope.setFollower(follower);
    envelope.setLinear(linear);
    envelope.setGain(gain);
    envelope.setAttack(attackMs);
    envelope.setRelease(releaseMs);
    envelope.setHold(holdMs);
    envelope.setThreshold(threshold);
    envelope.setLocut(locut);
    envelope.setHicut(hicut);
    envelope.setDepth(depth);
  }
};

/// The same envelope in plain numbers, behind the two band filters, which have tests of their own.
struct PlainEnvelope {
  double rate;
  IppBiquad lowCut{false, 3, 1};
  IppBiquad highCut{false, 0, 1};
  PlainGlide glide;
  double meanSquare = 0.0, level = 0.0, gatePhase = 0.0, value = 0.0;
  int state = 3;

  explicit PlainEnvelope(double sampleRateHz) : rate(sampleRateHz), glide(5.0, sampleRateHz) {}

  double samples(double ms) const { return std::fmax(1.0, ms * 0.001 * rate); }

  Vector32 run(const EnvelopeSettings& s, Vector32 x) {
    lowCut.setParam(0, s.locut);
    highCut.setParam(0, s.hicut);
    lowCut.process(x.data(), nullptr);
    highCut.process(x.data(), nullptr);
    double sum = 0.0;
    for (double sample : x) sum += sample * s.gain * sample * s.gain;
    meanSquare = 0.015 * sum / 32.0 + 0.985 * meanSquare + 1e-9;
    const double p = std::sqrt(meanSquare - 1e-9);
    const double out = s.follower ? follow(s, p) : gate(s, p);
    value = s.depth * out;
    Vector32 vector{};
    for (double& sample : vector) sample = s.depth * (s.follower ? glide.tick(out) : out);
    return vector;
  }

  double follow(const EnvelopeSettings& s, double p) {
    const double pi = std::numbers::pi;
    if (p < level) {
      level *= std::pow(std::exp(-2.0 * pi / samples(2.0 * s.releaseMs)), 32.0);
    } else {
      level = std::fmin(p, level * std::pow(std::exp(2.0 * pi / samples(2.0 * s.attackMs)), 32.0));
    }
    level = std::fmax(level, 0.001867442732);
    const double out = (level - 0.001867442732) * 0.998132557 * 1.43;
    return s.linear ? out : out / (out + 0.03) * 1.01;
  }

  double gate(const EnvelopeSettings& s, double p) {
    double out = 0.0;
    if (state == 3 && p < s.threshold) return 0.0;
    if (state == 0 || state == 3) {
      state = 0;
      gatePhase += 32.0 / samples(2.0 * s.attackMs);
      out = gatePhase;
      if (gatePhase >= 1.0) {
        state = 1;
        gatePhase = 0.0;
      }
    }
    if (state == 1) {
      if (p >= s.threshold) gatePhase = 0.0;
      out = 1.0;
      gatePhase += 32.0 / (std::fmax(s.holdMs, 0.001) * 0.001 * rate);
      if (gatePhase >= 1.0) {
        state = 2;
        gatePhase = 0.0;
      }
    }
    if (state == 2) {
      out = 1.0 - gatePhase;
      gatePhase += 32.0 / samples(2.0 * s.releaseMs);
      if (gatePhase >= 1.0) {
        state = 3;
        gatePhase = 0.0;
      }
      if (p >= s.threshold) {
        gatePhase = out;
        state = 0;
      }
    }
    return out;
  }
};

}  // namespace orvantesco::testing_support
