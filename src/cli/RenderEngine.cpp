#include "cli/RenderEngine.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/BlockLengths.h"
#include "cli/Failure.h"
#include "cli/PresetSource.h"
#include "cli/StateFile.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"
#include "params/ParamIndex.h"

namespace orvantesco::cli {
namespace {

OrvantescoOptions optionsFor(const RenderEngine::Input& input, std::uint32_t seed,
                             EditorPort& editor) {
  OrvantescoOptions options;
  options.editor = &editor;
  options.mainInputs = input.channels;
  options.sideChain = input.sideChain;
  options.seed = seed;
  return options;
}

/// The way through 0..1 rounds, and a number that was typed is meant exactly. What is further off
/// was moved by the engine itself and stays.
bool wasRounded(const IParam& param, double typed) {
  const double off = std::abs(param.value() - typed);
  return off > 0.0 && off < 1e-9 * (param.max() - param.min());
}

}  // namespace

RenderEngine::RenderEngine(const Input& input, const RenderSettings& settings)
    : transport(settings.transport),
      host(input.sampleRateHz),
      effect(host, optionsFor(input, settings.seed, editor)) {
  host.setTempo(transport.tempo);
  host.setTimeSignature(transport.numerator, transport.denominator);
  effect.SetBlockSize(BlockLengths(settings.blocks).longest());
}

void RenderEngine::setAsUser(const ParameterSetting& setting) {
  const int index = setting.index;
  IParam& param = *effect.GetParam(index);
  if (isFxType(index)) editor.commit(index - kFxTypePre);
  effect.touchParameter(index);
  effect.BeginInformHostOfParamChange(index);
  effect.SetParameterFromGUI(index, param.toNormalized(setting.value));
  if (wasRounded(param, setting.value)) {
    param.setValue(setting.value);
    effect.OnParamChange(index);
  }
  effect.EndInformHostOfParamChange(index);
  effect.touchParameter(-1);
  editor.commit(-1);
}

void RenderEngine::automate(const ParameterSetting& setting) {
  effect.GetParam(setting.index)->setValue(setting.value);
  effect.OnParamChange(setting.index);
}

void RenderEngine::apply(const RenderSettings& settings) {
  if (!settings.stateFile.empty())
    effect.settings().restoreState(readStateFile(settings.stateFile));
  if (!settings.preset.empty()) loadPreset(settings.preset);
  for (const std::string& text : settings.assignments) setAsUser(parseAssignment(bank(), text));
  setTaps(settings.taps);
}

void RenderEngine::loadPreset(const std::string& preset) {
  const PresetSource source = readPresetArgument(preset);
  presetNotes = problemLines(source);
  effect.settings().applyPreset(source.reading.preset, source.path);
}

StateChunk RenderEngine::stateBlock() {
  StateChunk chunk;
  if (!effect.SerializeState(chunk)) throw workFailed("state: there is not enough memory");
  return chunk;
}

void RenderEngine::setTaps(const TapSettings& taps) {
  for (const TapMaskSetting& of : taps.taps) effect.setTapMasks(of.slot, of.masks);
  for (const StepFxSetting& of : taps.stepFx) effect.setStepFxMask(of.slot, of.mask);
  for (const StepModSetting& of : taps.stepMod) effect.setStepModMask(of.row, of.slot, of.mask);
}

std::vector<std::string> RenderEngine::missingEffects() const {
  std::vector<std::string> missing;
  for (int position = 0; position < numPositions; ++position) {
    const IParam& param = *bank().getParam(fxTypeIndex(position));
    const auto stage = static_cast<EffectStage>(position / numSlots);
    const int typeId = effectTypeIdAt(stage, static_cast<int>(param.value()));
    if (typeId <= kNoEffect || effectExists(typeId)) continue;
    missing.push_back(fmt::format("{} at {}", effectRecord(typeId).menuName, param.name()));
  }
  return missing;
}

void RenderEngine::stopAtStart() {
  host.locate(transport.startBeats);
  host.setRunning(false);
}

void RenderEngine::startTransport() { host.setRunning(!transport.stopped); }

void RenderEngine::render(const AudioBlock& block) {
  effect.RenderAudio(block);
  host.advance(block.frames);
}

}  // namespace orvantesco::cli
