// A bypass takes no memory and no lock, in none of its phases.

#include <gtest/gtest.h>

#include "host/binding/PluginBypass.h"
#include "params/ParamIndex.h"
#include "realtime/RealTimeWork.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

TEST(PluginBypass, AsksForNothingOnTheAudioThread) {
  EngineRig rig(48000.0);
  PluginBypass bypass(rig.effect);
  rig.set(kMasterFx, 2.0);
  for (int slot = 1; slot < 4; ++slot) rig.set(kSlotOn + slot, 1.0);
  bypass.prepare(256, 48000.0, false);
  StereoBuffer audio = noise(256);
  double* channels[] = {audio.left.data(), audio.right.data()};
  AudioBlock block;
  block.inputs = block.outputs = channels;
  block.inputCount = block.outputCount = 2;
  expectRealTime("bypass", [&] {
    for (int k = 0; k < 60; ++k) {
      block.frames = 1 + k * 37 % 256;
      block.bypass = k / 10 % 2 == 1;
      bypass.process(block);
      if (k % 25 == 24) bypass.reset();
    }
  });
}

}  // namespace
}  // namespace orvantesco
