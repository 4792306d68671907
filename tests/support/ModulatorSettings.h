#pragma once

#include "EngineRig.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// Switches all fourteen modulators on, each at work: LFOs of several waves, gates free and synced
/// with a glide, a follower and a gate on the input, logic units of several types.
inline void switchOnModulators(EngineRig& rig) {
  for (int n = 0; n < 4; ++n) {
    rig.set(kLfoOn + n, 1);
    rig.set(kLfoRate + n, 0.7 * (n + 1));
    rig.set(kLfoWave + n, 3 * n);
    rig.set(kGateOn + n, 1);
    rig.set(kGateSync + n, n & 1);
    rig.set(kGateGlide + n, 40);
    for (int step = 0; step < 16; ++step) rig.set(kGateStep + n * 16 + step, 6 * step);
    rig.set(kLogicOn + n, 1);
    rig.set(kLogicType + n, n);
    rig.set(kLogicSource1 + n, 1 + n);
    rig.set(kLogicSource2 + n, 5 + n);
    rig.set(kLogicSource1Depth + n, 80);
    rig.set(kLogicSource2Depth + n, -60);
    rig.set(kLogicSmooth + n, 20);
    rig.set(kLogicDepth + n, 100);
  }
  for (int e = 0; e < 2; ++e) {
    rig.set(kEnvOn + e, 1);
    rig.set(kEnvMode + e, e);
    rig.set(kEnvSource + e, 1 + e);
  }
}

}  // namespace orvantesco
