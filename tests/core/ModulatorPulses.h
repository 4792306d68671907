#pragma once

#include "support/ModulatorRig.h"

namespace orvantesco {

/// Three gates and both envelopes at rates of their own: sources of pulses.
inline void startPulses(ModulatorRig& rig) {
  for (int n = 0; n < 3; ++n) {
    rig.set(kGateOn + n, 1);
    rig.set(kGateTimebase + n, 2 + n);
    rig.set(kGateLength + n, 3 + n);
    rig.set(kGateStep + n * 16 + 1 + (n & 1), 100);
  }
  for (int e = 0; e < 2; ++e) {
    rig.set(kEnvOn + e, 1);
    rig.set(kEnvMode + e, 1);
    rig.set(kEnvSource + e, 1 + e);
    rig.set(kEnvThreshold + e, -40);
    rig.set(kEnvAttack + e, 5);
    rig.set(kEnvDecay + e, 5);
  }
}

/// One vector of bursts that come at other times on the left than on the right.
inline ModulatorOutputs stepWithBursts(ModulatorRig& rig, int vector) {
  for (std::size_t k = 0; k < rig.vector.size(); ++k) {
    const double tone = std::sin(0.3 * static_cast<double>(k));
    rig.vector.left[k] = vector % 900 < 60 ? tone : 0.0;
    rig.vector.right[k] = vector % 700 < 60 ? tone : 0.0;
  }
  rig.block(rig.vector, 0, kVectorLength);
  return rig.effect.modulatorOutputs();
}

}  // namespace orvantesco
