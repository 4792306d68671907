// A slot's grain reader: size, speed and position, each with its modulation, and the fade.

#include <cmath>

#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

DelayControls& delayOf(const ParamDispatch& change) { return change.controls().delay; }

void size(ParamDispatch& change) {
  delayOf(change).grainSizeMs = change.value;
  change.slot().requests.post(kTakeDelaySettings);
}

void speed(ParamDispatch& change) {
  delayOf(change).grainSpeed = change.value / 2.0;
  change.slot().requests.post(kTakeDelaySettings);
  change.shown = std::exp2(change.value);
}

void position(ParamDispatch& change) {
  delayOf(change).grainPosition = change.percent();
  change.slot().requests.post(kTakeDelaySettings);
}

void fade(ParamDispatch& change) {
  delayOf(change).grainFadeMs = change.value;
  change.slot().requests.post(kTakeDelaySettings);
}

void sizeDepth(ParamDispatch& change) { delayOf(change).grainSizeDepth = change.takeCubedDepth(); }

void speedDepth(ParamDispatch& change) {
  delayOf(change).grainSpeedDepth = change.takeCubedDepth();
}

void positionDepth(ParamDispatch& change) {
  delayOf(change).grainPositionDepth = change.takeCubedDepth();
}

void sizeSource(ParamDispatch& change) {
  change.chooseSource(delayOf(change).grainSizeSource,
                      {kGrainSize + change.member, kGrainSizeModDepth + change.member});
  change.slot().requests.post(kTakeDelaySources);
}

void speedSource(ParamDispatch& change) {
  change.chooseSource(delayOf(change).grainSpeedSource,
                      {kGrainSpeed + change.member, kGrainSpeedModDepth + change.member});
  change.slot().requests.post(kTakeDelaySources);
}

void positionSource(ParamDispatch& change) {
  change.chooseSource(delayOf(change).grainPositionSource,
                      {kGrainPosition + change.member, kGrainPositionModDepth + change.member});
  change.slot().requests.post(kTakeDelaySources);
}

constexpr DispatchFamily kTable[] = {
    {kGrainSize, 4, size, {"GRAIN SIZE", 1, " ms"}},
    {kGrainSizeModDepth, 4, sizeDepth, {"GRAIN SIZE MOD DEPTH"}},
    {kGrainSizeModSource, 4, sizeSource},
    {kGrainSpeed, 4, speed, {"GRAIN SPEED", 2, " x"}},
    {kGrainSpeedModDepth, 4, speedDepth, {"GRAIN SPEED MOD DEPTH"}},
    {kGrainSpeedModSource, 4, speedSource},
    {kGrainPosition, 4, position, {"GRAIN POSITION"}},
    {kGrainPositionModDepth, 4, positionDepth, {"GRAIN POSITION MOD DEPTH"}},
    {kGrainPositionModSource, 4, positionSource},
    {kGrainFade, 4, fade, {"DELAY GRAIN X-FADE ", 1, " ms"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> grainFamilies{kTable};

}  // namespace orvantesco
