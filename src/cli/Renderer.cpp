#include "cli/Renderer.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <ctime>

#include "cli/Failure.h"

namespace orvantesco::cli {
namespace {

constexpr double longestTailSeconds = 60.0;
constexpr double quietSeconds = 1.0;

double cpuSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::int64_t framesOf(double seconds, double rateHz) { return std::llround(seconds * rateHz); }

}  // namespace

Renderer::Renderer(const RenderSettings& renderSettings, const RenderJob& renderJob)
    : settings(renderSettings),
      job(renderJob),
      input(job.input),
      sideChain(openSideChain()),
      engine({input.sampleRate(), input.channels(), sideChain != nullptr}, settings),
      lengths(settings.blocks) {
  engine.apply(settings);
  if (!settings.automationFile.empty()) {
    events = readAutomationFile(settings.automationFile, engine.bank(), input.sampleRate());
  }
  for (auto* buffer : {&left, &right, &side, &outLeft, &outRight}) {
    buffer->assign(static_cast<std::size_t>(lengths.longest()), 0.0);
  }
  file = std::make_unique<AudioWriter>(job.output, planOutput());
}

std::unique_ptr<SideChainReader> Renderer::openSideChain() const {
  if (settings.sideChainFile.empty()) return nullptr;
  auto reader = std::make_unique<SideChainReader>(settings.sideChainFile);
  if (reader->sampleRate() == input.sampleRate()) return reader;
  throw workFailed(fmt::format("{}: has a sample rate of {} Hz, expected {} Hz as {} has",
                               settings.sideChainFile, reader->sampleRate(), input.sampleRate(),
                               job.input));
}

AudioWriter::Plan Renderer::planOutput() const {
  constexpr std::int64_t moreThanAnyLatency = 4096;
  const double tail = settings.tail.automatic ? longestTailSeconds : settings.tail.seconds;
  AudioWriter::Plan plan;
  plan.format = audioFormatFor(job.output, settings.sampleFormat);
  plan.sampleRateHz = input.sampleRate();
  plan.mostFrames = input.frames() < 0
                        ? -1
                        : input.frames() + framesOf(tail, plan.sampleRateHz) + moreThanAnyLatency;
  return plan;
}

RenderStats Renderer::run(ProgressBar& progress) {
  const double begun = cpuSeconds();
  warmUp();
  playInput(progress);
  playTail();
  file->commit();
  RenderStats stats;
  stats.job = job;
  stats.levels = output->levels();
  stats.sampleRateHz = input.sampleRate();
  stats.cpuSeconds = cpuSeconds() - begun;
  stats.latency = engine.latency();
  return stats;
}

void Renderer::warmUp() {
  engine.stopAtStart();
  std::int64_t remaining = framesOf(settings.warmUpSeconds, input.sampleRate());
  // Who asks for no warm-up hears the fade of a start.
  if (remaining > 0) engine.startAnew();
  while (remaining > 0) {
    const int frames = static_cast<int>(std::min<std::int64_t>(nextBlock(), remaining));
    clearInput(frames);
    renderBlock(frames);
    remaining -= frames;
  }
  engine.startTransport();
}

void Renderer::playInput(ProgressBar& progress) {
  for (bool more = true; more;) {
    applyEvents();
    const int wanted = cutAtEvent(nextBlock());
    const int got = readInput(wanted);
    more = got == wanted;
    if (got > 0) renderAndWrite(got);
    if (input.frames() > 0) {
      progress.show(static_cast<double>(position) / static_cast<double>(input.frames()));
    }
  }
}

void Renderer::playTail() {
  const std::int64_t inputFrames = position;
  output->beginTail(inputFrames);
  for (;;) {
    applyEvents();
    const std::int64_t remaining = tailFramesLeft(inputFrames);
    if (remaining <= 0) return;
    const int frames = static_cast<int>(std::min<std::int64_t>(nextBlock(), remaining));
    clearInput(cutAtEvent(frames));
    renderAndWrite(cutAtEvent(frames));
  }
}

/// Frames that are certain to come: the output never passes the frame at which it is to end.
std::int64_t Renderer::tailFramesLeft(std::int64_t inputFrames) const {
  const double rate = input.sampleRate();
  const double most = settings.tail.automatic ? longestTailSeconds : settings.tail.seconds;
  const std::int64_t toTheLast = inputFrames + framesOf(most, rate) - output->position();
  if (!settings.tail.automatic) return toTheLast;
  const double quiet = std::min(quietSeconds + engine.longestDelaySeconds(), longestTailSeconds);
  const std::int64_t toTheTail = std::max<std::int64_t>(inputFrames - output->position(), 0);
  return std::min(toTheLast, toTheTail + framesOf(quiet, rate) - output->quietTailFrames());
}

int Renderer::cutAtEvent(int frames) const {
  if (nextEvent == events.size()) return frames;
  return static_cast<int>(std::min<std::int64_t>(frames, events[nextEvent].frame - position));
}

void Renderer::applyEvents() {
  for (; nextEvent < events.size() && events[nextEvent].frame <= position; ++nextEvent) {
    engine.automate(events[nextEvent].setting);
  }
}

int Renderer::readInput(int frames) {
  double* buffers[] = {left.data(), right.data()};
  return input.read(buffers, frames);
}

void Renderer::clearInput(int frames) {
  std::fill_n(left.begin(), frames, 0.0);
  std::fill_n(right.begin(), frames, 0.0);
}

void Renderer::renderBlock(int frames) {
  double* inputs[] = {left.data(), right.data()};
  double* outputs[] = {outLeft.data(), outRight.data()};
  AudioBlock block;
  block.inputs = inputs;
  block.inputCount = input.channels();
  block.sideChain = sideChain != nullptr ? side.data() : nullptr;
  block.outputs = outputs;
  block.outputCount = 2;
  block.frames = frames;
  engine.render(block);
}

void Renderer::renderAndWrite(int frames) {
  // The side chain plays on behind the input for as long as it lasts.
  if (sideChain != nullptr) sideChain->read(side.data(), frames);
  renderBlock(frames);
  // The first block has told the latency.
  if (!output) output.emplace(*file, RenderOutput::Cut{engine.latency(), settings.keepLatency});
  output->take(outLeft.data(), outRight.data(), frames);
  position += frames;
}

std::vector<std::string> Renderer::warnings() const {
  std::vector<std::string> lines = engine.presetWarnings();
  const auto countNonFinite = [&lines](const std::string& path, std::int64_t samples) {
    if (samples == 0) return;
    lines.push_back(
        fmt::format("{}: {} samples are not finite and were rendered as 0", path, samples));
  };
  countNonFinite(job.input, input.nonFiniteSamples());
  if (sideChain != nullptr) countNonFinite(settings.sideChainFile, sideChain->nonFiniteSamples());
  if (file->clippedSamples() > 0) {
    lines.push_back(fmt::format("{}: {} samples passed full scale and were clipped", job.output,
                                file->clippedSamples()));
  }
  if (nextEvent < events.size()) {
    lines.push_back(fmt::format("{}: {} lines lie behind the end of {} and were not applied",
                                settings.automationFile, events.size() - nextEvent, job.output));
  }
  return lines;
}

}  // namespace orvantesco::cli
