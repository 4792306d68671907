#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"
#include "support/RecordingEditor.h"
#include "support/StateBytes.h"

namespace orvantesco {

using Bytes = std::vector<std::uint8_t>;

inline Bytes saved(EngineRig& rig) {
  StateChunk chunk;
  EXPECT_TRUE(rig.effect.SerializeState(chunk));
  return StateBytes::bytesOf(chunk);
}

/// A state that differs from a fresh one everywhere.
inline StateBytes moved() {
  StateBytes state;
  state.colourSet = 7;
  state.page = 12;
  state.attenuation = 0.25;
  state.name = "Slap";
  state.folder = "F:Echo";
  state.item = 3;
  state.folderPath = "/Factory Presets/Echo/";
  state.touched = kFeedback;
  state.taps = {1, 2, 3, 4, 5, 6, 7, 8};
  state.stepFx = {9, 10, 11, 12};
  state.stepMod = {{{13, 14, 15, 16}, {17, 18, 19, 20}}};
  state.dryLock = 1;
  state.values = defaultValues();
  state.values[kFeedback + 2] = 33.0;
  state.values[kFxTypePre + 1] = 5.0;
  return state;
}

/// An effect whose states are saved and restored under an editor's eyes.
class HostStateRig : public ::testing::Test {
 protected:
  HostStateRig() { rig.effect.setEditor(&editor); }

  int restore(const StateBytes& state) { return rig.effect.UnserializeState(state.chunk(), 0); }
  double value(int index) { return rig.effect.GetParam(index)->value(); }

  RecordingEditor editor;
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
};

}  // namespace orvantesco
