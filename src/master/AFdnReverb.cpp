#include "master/AFdnReverb.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/RateValues.h"
#include "master/FdnGains.h"

namespace orvantesco {

namespace {

constexpr double kReferenceRate = 44100.0;
constexpr double kLargestRatio = 2.17687074829932;  ///< 96000 / 44100
constexpr int kLongestPreDelay = 144000;
/// Whole samples that a product missed by its rounding are whole samples.
constexpr double kSampleRounding = 1e-6;

// Prime, so that the echoes of two lines meet as late as can be. The short set is a room's.
constexpr int kShortSetLines = 12;
constexpr int kShortLengths[kShortSetLines] = {601,  691,  773,  839,  919,  997,
                                               1061, 1093, 1129, 1151, 1171, 1187};
constexpr int kLongLengths[FdnVector::kMaxLines] = {919,  997,  1061, 1093, 1129, 1151, 1171, 1187,
                                                    1213, 1237, 1259, 1283, 1303, 1319, 1327, 1361};

constexpr int kSwingSamples = 6;  ///< whatever the rate
constexpr int kSwingPeriod = 50;  ///< samples between two looks at the oscillator
constexpr float kSwingHz = 2.0F;
constexpr float kSwingPhaseStep = 45.0F;  ///< degrees from line to line

constexpr double kOffset = 1e-15;
/// Of the sum of both channels.
constexpr double kInputGain = 0.1667;
/// Runs round in the network for ever, 400 dB below full scale, and keeps a decay from ending in
/// denormal numbers.
constexpr float kDenormalOffset = 1e-20F;

constexpr float kSilence[kVectorLength] = {};

double delayLength(int lines, int i) noexcept {
  return lines <= kShortSetLines ? kShortLengths[i] : kLongLengths[i];
}

int lengthInUse(int lines, int i) noexcept {
  return static_cast<int>(delayLength(lines, i) * sampleRate / kReferenceRate);
}

int lengthAllocated(int lines, int i, int swing) noexcept {
  return static_cast<int>((delayLength(lines, i) + swing) * kLargestRatio + 1.0);
}

}  // namespace

AFdnReverb::AFdnReverb(int lineCount, int modulatedCount, int /*layout*/)
    : lines(std::clamp(lineCount & ~1, 2, kMaxLines)),
      modulatedLines(std::clamp(modulatedCount, 0, lines)) {
  assert(lineCount == lines && modulatedCount == modulatedLines);
  network.lines = lines;
  network.modulated = modulatedLines;
  network.scale = static_cast<float>(-2.0 / lines);
  std::fill_n(network.now, kMaxLines, kSilence);
  std::fill_n(network.next, kMaxLines, kSilence);
  network.left = leftSum;
  network.right = rightSum;
  allocate();
  AFdnReverb::reset();
}

void AFdnReverb::allocate() {
  preDelay.setMaxDelay(kLongestPreDelay);
  for (int i = 0; i < modulatedLines; ++i) {
    auto& swung = *modulatedLine.emplace_back(std::make_unique<ModulatedLine>());
    swung.line.setModulator(&swung.oscillator);
    swung.line.setModPeriod(kSwingPeriod);
    swung.line.setMaxDelay(lengthAllocated(lines, i, kSwingSamples));
  }
  for (int i = modulatedLines; i < lines; ++i) {
    plainLine.push_back(std::make_unique<MDelayLine>());
    plainLine.back()->setMaxDelay(lengthAllocated(lines, i, 0));
  }
}

MDelayLine& AFdnReverb::lineAt(int i) noexcept {
  if (i < modulatedLines) return modulatedLine[static_cast<std::size_t>(i)]->line;
  return *plainLine[static_cast<std::size_t>(i - modulatedLines)];
}

void AFdnReverb::placeLines() noexcept {
  for (int i = 0; i < modulatedLines; ++i) {
    ModulatedLine& swung = *modulatedLine[static_cast<std::size_t>(i)];
    swung.oscillator.setFrequency(kSwingHz, static_cast<float>(sampleRate / kSwingPeriod),
                                  kSwingPhaseStep * static_cast<float>(i));
    swung.line.setCentreDelay(lengthInUse(lines, i));
    swung.line.setModDepth(kSwingSamples);
    swung.line.reset();
  }
  for (int i = modulatedLines; i < lines; ++i) {
    MDelayLine& line = lineAt(i);
    line.setDelay(lengthInUse(lines, i));
    line.reset();
  }
}

void AFdnReverb::reset() noexcept {
  DSPShell::reset();
  placeLines();
  std::fill_n(network.allPassState, kMaxLines, 0.0F);
  std::fill_n(network.dampingState, kMaxLines, 0.0F);
  std::fill_n(leftSum, kVectorLength, 0.0F);
  std::fill_n(rightSum, kVectorLength, 0.0F);
  preDelay.reset();
  inputHighPass.reset();
  updatePreDelay();
  updateGains();
}

void AFdnReverb::rateChanged() noexcept {
  DSPShell::rateChanged();
  inputHighPass.rateChanged();
  updatePreDelay();
  updateGains();
}

void AFdnReverb::clearMemories() noexcept {
  DSPShell::clearMemories();
  inputHighPass.clearMemories();
}

void AFdnReverb::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      decaySeconds = static_cast<float>(std::max(value, 0.001));
      inverseDecay = static_cast<float>(1.0 / std::max(value, 0.001));
      updateGains();
      break;
    case 1:
      preDelayKnob = std::clamp(value, 0.0, static_cast<double>(kLongestPreDelay));
      updatePreDelay();
      break;
    case 2:
      inputHighPass.setCutoff(value);
      break;
    case 3:
      damping = 0.99F - 0.89F * static_cast<float>(std::clamp(value, 0.0, 1.0));
      updateGains();
      break;
    default:
      break;
  }
}

void AFdnReverb::updatePreDelay() noexcept {
  const double samples = preDelayKnob * sampleRate / kReferenceRate + kSampleRounding;
  preDelaySamples = std::min(static_cast<int>(samples), kLongestPreDelay - kVectorLength);
}

void AFdnReverb::updateGains() noexcept {
  const FdnDecay decay{static_cast<double>(inverseDecay), static_cast<double>(damping)};
  for (int i = 0; i < lines; ++i) {
    const FdnLineGain line = fdnLineGain(decay, delayLength(lines, i), sampleRate);
    network.gain[i] = static_cast<float>(line.gain);
    network.coefficient[i] = static_cast<float>(line.coefficient);
  }
}

/// What goes into all lines: the high-passed sum of the inputs, behind the pre-delay.
const float* AFdnReverb::takeInput(float* scratch) noexcept {
  double* mono = scratchA;
  vecAdd(input, input2, mono, blockSize);
  vecAddConstInPlace(kOffset, mono, blockSize);
  inputHighPass.process(mono, nullptr);
  float* newest = preDelay.vectorToWrite(scratch);
  for (int i = 0; i < blockSize; ++i) newest[i] = static_cast<float>(mono[i] * kInputGain);
  preDelay.commitVector(newest);
  const float* late = preDelay.vectorBehind(preDelaySamples + blockSize, scratch);
  for (int i = 0; i < blockSize; ++i) scratch[i] = late[i] + kDenormalOffset;
  return scratch;
}

void AFdnReverb::readLines() noexcept {
  for (int i = 0; i < modulatedLines; ++i) {
    const SwungSpan span =
        modulatedLine[static_cast<std::size_t>(i)]->line.readSpan(swungScratch[i]);
    network.now[i] = span.now;
    network.next[i] = span.next;
    network.fractionBefore[i] = span.fractionBefore;
    network.fractionFrom[i] = span.fractionFrom;
    network.tick = span.tick;  // the same for all, which were reset together
  }
  for (int i = modulatedLines; i < lines; ++i) {
    network.now[i] = network.next[i] = lineAt(i).readVector(plainScratch[i]);
  }
  for (int i = 0; i < lines; ++i) network.to[i] = lineAt(i).vectorToWrite(writeScratch[i]);
}

void AFdnReverb::giveOutput() noexcept {
  for (int i = 0; i < lines; ++i) lineAt(i).commitVector(network.to[i]);
  for (int i = 0; i < blockSize; ++i) output[i] = static_cast<double>(leftSum[i]);
  for (int i = 0; i < blockSize; ++i) output2[i] = static_cast<double>(rightSum[i]);
}

void AFdnReverb::processBlock() noexcept {
  alignas(32) float feed[kVectorLength];
  network.feed = takeInput(feed);
  readLines();
  fdnRun()(network);
  giveOutput();
}

}  // namespace orvantesco
