#include "cli/ScopeRun.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "cli/Failure.h"
#include "fx/VectorLength.h"

namespace orvantesco::cli {
namespace {

constexpr double rateWithoutInput = 48000.0;
constexpr double secondsWithoutInput = 4.0;

template <class Vectors>
double* copySample(double* traces, const Vectors& vectors, std::size_t sample) {
  for (const auto& vector : vectors) *traces++ = vector[sample];
  return traces;
}

}  // namespace

ScopeRun::ScopeRun(const ScopeCall& scopeCall)
    : call(scopeCall),
      input(openInput()),
      sideChain(openSideChain()),
      engine({sampleRate(), input ? input->channels() : 2, sideChain != nullptr}, call.settings),
      frames(framesToWatch()) {
  engine.apply(call.settings);
  if (!call.settings.automationFile.empty()) {
    events = readAutomationFile(call.settings.automationFile, engine.bank(), sampleRate());
  }
  for (auto* buffer : {&left, &right, &side, &sideRight, &outLeft, &outRight}) {
    buffer->assign(kVectorLength, 0.0);
  }
}

std::unique_ptr<AudioReader> ScopeRun::openInput() const {
  return call.input.empty() ? nullptr : std::make_unique<AudioReader>(call.input);
}

std::unique_ptr<AudioReader> ScopeRun::openSideChain() const {
  if (call.settings.sideChainFile.empty()) return nullptr;
  auto reader = std::make_unique<AudioReader>(call.settings.sideChainFile);
  if (input == nullptr || reader->sampleRate() == input->sampleRate()) return reader;
  throw workFailed(fmt::format("{}: has a sample rate of {} Hz, expected {} Hz as {} has",
                               call.settings.sideChainFile, reader->sampleRate(),
                               input->sampleRate(), call.input));
}

double ScopeRun::sampleRate() const {
  if (input != nullptr) return input->sampleRate();
  return sideChain != nullptr ? sideChain->sampleRate() : rateWithoutInput;
}

std::int64_t ScopeRun::framesToWatch() const {
  double seconds = secondsWithoutInput;
  if (call.seconds) {
    seconds = *call.seconds;
  } else if (input != nullptr && input->frames() > 0) {
    seconds = static_cast<double>(input->frames()) / sampleRate() + call.settings.tail.seconds;
  }
  return std::max<std::int64_t>(1, std::llround(seconds * sampleRate()));
}

double ScopeRun::lengthSeconds() const { return static_cast<double>(frames) / sampleRate(); }

int ScopeRun::framesToVectorEnd() const {
  return kVectorLength - static_cast<int>(sinceStart % kVectorLength);
}

void ScopeRun::run(ScopeSheet& sheet) {
  warmUp();
  report(sheet);
  while (position < frames) {
    applyEvents();
    const int count = cutAtEvent(framesToVectorEnd());
    readInputs(count);
    render(count);
    position += count;
    if (sinceStart % kVectorLength == 0) report(sheet);
  }
  sheet.commit();
}

void ScopeRun::warmUp() {
  engine.stopAtStart();
  const std::int64_t end = std::llround(call.settings.warmUpSeconds * sampleRate());
  while (sinceStart < end) {
    render(static_cast<int>(std::min<std::int64_t>(framesToVectorEnd(), end - sinceStart)));
  }
  engine.startTransport();
}

void ScopeRun::applyEvents() {
  for (; nextEvent < events.size() && events[nextEvent].frame <= position; ++nextEvent) {
    engine.automate(events[nextEvent].setting);
  }
}

int ScopeRun::cutAtEvent(int count) const {
  if (nextEvent == events.size()) return count;
  return static_cast<int>(std::min<std::int64_t>(count, events[nextEvent].frame - position));
}

void ScopeRun::readInputs(int count) {
  double* channels[] = {left.data(), right.data()};
  if (input != nullptr) input->read(channels, count);
  if (sideChain == nullptr) return;
  double* sides[] = {side.data(), sideRight.data()};
  sideChain->read(sides, count);
  if (sideChain->channels() < 2) return;
  for (std::size_t i = 0; i < side.size(); ++i) side[i] = 0.5 * side[i] + 0.5 * sideRight[i];
}

void ScopeRun::render(int count) {
  double* inputs[] = {left.data(), right.data()};
  double* outputs[] = {outLeft.data(), outRight.data()};
  AudioBlock block;
  block.inputs = inputs;
  block.inputCount = input ? input->channels() : 2;
  block.sideChain = sideChain != nullptr ? side.data() : nullptr;
  block.outputs = outputs;
  block.outputCount = 2;
  block.frames = count;
  engine.render(block);
  sinceStart += count;
}

/// The last vectors act on the 32 samples that follow the ones they were made from.
void ScopeRun::report(ScopeSheet& sheet) {
  const ModulatorOutputs& modulators = engine.modulators();
  const std::int64_t first = position - sinceStart % kVectorLength;
  for (int i = 0; i < kVectorLength; ++i) {
    const std::int64_t frame = first + i;
    if (frame < 0 || frame >= frames || frame % call.every != 0) continue;
    ScopeRow row;
    row.seconds = static_cast<double>(frame) / sampleRate();
    const auto sample = static_cast<std::size_t>(i);
    double* traces = row.values.data();
    traces = copySample(traces, modulators.lfo, sample);
    traces = copySample(traces, modulators.gate, sample);
    traces = copySample(traces, modulators.envelope, sample);
    copySample(traces, modulators.logic, sample);
    sheet.take(row);
  }
}

}  // namespace orvantesco::cli
