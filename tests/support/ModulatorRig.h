#pragma once

#include <algorithm>

#include "EngineRig.h"
#include "OrvantescoProbe.h"
#include "fx/RateValues.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// Positions of the menu of modulation sources.
enum ModulationSource {
  kSourceOff,
  kLfo1 = 1,
  kLfo2,
  kGate1 = 5,
  kEnv1 = 9,
  kLogic1 = 11,
  kLogic2
};

inline constexpr int kBipolar = 2;
inline constexpr int kRampWave = 11;

/// An engine whose modulators are watched vector by vector.
struct ModulatorRig : EngineRig {
  OrvantescoProbe probe{effect};
  StereoBuffer vector{kVectorLength};

  explicit ModulatorRig(OrvantescoOptions options = seeded(), double rate = 48000.0)
      : EngineRig(inForce(rate), options) {
    host.setTempo(120.0);
  }

  /// One vector of a constant input.
  ModulatorOutputs step(double left = 0.0, double right = 0.0) {
    std::fill(vector.left.begin(), vector.left.end(), left);
    std::fill(vector.right.begin(), vector.right.end(), right);
    block(vector, 0, kVectorLength);
    return effect.modulatorOutputs();
  }
  void steps(int count) {
    for (int i = 0; i < count; ++i) step();
  }
  /// A bipolar ramp without audible glide at full depth.
  void ramp(int lfo, double hz) {
    set(kLfoOn + lfo, 1);
    set(kLfoWave + lfo, kRampWave);
    set(kLfoPol + lfo, kBipolar);
    set(kLfoDepth + lfo, 100);
    set(kLfoGlide + lfo, 1);
    set(kLfoRate + lfo, hz);
  }
  void add(int logic, int first, int second) {
    set(kLogicOn + logic, 1);
    set(kLogicSource1 + logic, first);
    set(kLogicSource2 + logic, second);
    set(kLogicSource1Depth + logic, 100);
    set(kLogicSource2Depth + logic, 100);
    set(kLogicDepth + logic, 100);
  }
  /// A gate that stands at one value of -1..1.
  void hold(int gate, double value) {
    set(kGateOn + gate, 1);
    set(kGatePol + gate, kBipolar);
    set(kGateLength + gate, 1);
    set(kGateStep + gate * 16, 50.0 * (value + 1.0));
  }

 private:
  /// The rate is the process's: blocks that a test builds beside the engine take it too.
  static double inForce(double rate) {
    setRateValues(rate);
    return rate;
  }
};

}  // namespace orvantesco
