#include "engine/EngineUnderTest.h"

#include <algorithm>

#include "params/IParam.h"

namespace orvantesco {

namespace {

OrvantescoOptions optionsFor(const model::HostSetup& setup) {
  OrvantescoOptions options;
  options.mainInputs = setup.monoInput ? 1 : 2;
  options.seed = 1;
  return options;
}

}  // namespace

EngineUnderTest::EngineUnderTest(const model::HostSetup& setup, const model::Settings& settings)
    : host(setup.sampleRate), effect(host, optionsFor(setup)), mainInputs(setup.monoInput ? 1 : 2) {
  host.setTempo(setup.tempo);
  host.setRunning(setup.transportRuns);
  for (int i = 0; i < effect.NParams(); ++i) indexByName.emplace(effect.GetParam(i)->name(), i);
  for (const auto& [name, value] : settings) set(name, value);
}

void EngineUnderTest::set(const std::string& name, double value) {
  const int index = indexByName.at(name);
  effect.GetParam(index)->setValue(value);
  effect.OnParamChange(index);
}

model::Signal EngineUnderTest::render(const model::Signal& input, const std::vector<int>& blocks) {
  model::Signal output;
  size_t next = 0;
  while (output.size() < input.size()) {
    const size_t left = input.size() - output.size();
    const int wanted = blocks[std::min(next++, blocks.size() - 1)];
    renderBlock(input, output, static_cast<int>(std::min(left, static_cast<size_t>(wanted))));
  }
  return output;
}

void EngineUnderTest::renderBlock(const model::Signal& input, model::Signal& output, int frames) {
  const auto from = static_cast<long>(output.size());
  std::vector<double> left(input.left.begin() + from, input.left.begin() + from + frames);
  std::vector<double> right(input.right.begin() + from, input.right.begin() + from + frames);
  std::vector<double> outLeft(left.size());
  std::vector<double> outRight(left.size());
  double* inputs[] = {left.data(), right.data()};
  double* outputs[] = {outLeft.data(), outRight.data()};
  AudioBlock block;
  block.inputs = inputs;
  block.inputCount = mainInputs;
  block.outputs = outputs;
  block.outputCount = 2;
  block.frames = frames;
  effect.RenderAudio(block);
  host.advance(frames);
  output.left.insert(output.left.end(), outLeft.begin(), outLeft.end());
  output.right.insert(output.right.end(), outRight.begin(), outRight.end());
}

}  // namespace orvantesco
