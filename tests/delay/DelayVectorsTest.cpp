// The vector forms of the single-sample delay lines.
#include <gtest/gtest.h>

#include <random>

#include "delay/MSVRAP1ModDelayLine.h"
#include "delay/MSinOsc.h"

namespace orvantesco {
namespace {

using Samples = std::vector<float>;

Samples randomSamples(int count) {
  std::mt19937 engine(3);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  Samples samples(static_cast<size_t>(count));
  for (float& sample : samples) sample = uniform(engine);
  return samples;
}

constexpr int kVectors = 60;

void writeVector(MDelayLine& line, const float* from) {
  float scratch[kVectorLength];
  float* to = line.vectorToWrite(scratch);
  std::copy_n(from, kVectorLength, to);
  line.commitVector(to);
}

TEST(DelayVectors, ReadAndWriteAsSampleBySample) {
  const Samples in = randomSamples(kVectors * kVectorLength);
  for (const int delay : {32, 77, 300}) {
    MDelayLine single, vectors;
    for (MDelayLine* line : {&single, &vectors}) {
      line->setDelay(delay);
      line->setMaxDelay(300);
      line->reset();
    }
    Samples expected, got;
    for (size_t i = 0; i < in.size(); i += kVectorLength) {
      float scratch[kVectorLength];
      const float* read = vectors.readVector(scratch);
      got.insert(got.end(), read, read + kVectorLength);
      writeVector(vectors, &in[i]);
      for (size_t k = i; k < i + kVectorLength; ++k) {
        expected.push_back(single.read());
        single.write(in[k]);
      }
    }
    EXPECT_EQ(got, expected) << delay;
    EXPECT_EQ(got[static_cast<size_t>(delay) + 5], in[5]);
  }
}

TEST(DelayVectors, VectorBehindTheWriteIsWhatWasWrittenThere) {
  const Samples in = randomSamples(kVectors * kVectorLength);
  MDelayLine line;
  line.setMaxDelay(400);
  int wrong = 0;
  for (size_t i = 0; i < in.size(); i += kVectorLength) {
    writeVector(line, &in[i]);
    for (const size_t behind : {size_t{32}, size_t{33}, size_t{400}}) {
      if (i + kVectorLength < behind) continue;
      float scratch[kVectorLength];
      const float* read = line.vectorBehind(static_cast<int>(behind), scratch);
      wrong += std::equal(read, read + kVectorLength, &in[i + kVectorLength - behind]) ? 0 : 1;
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(DelayVectors, AfterAResetNothingOldIsReadAndAllIsAsNew) {
  const Samples in = randomSamples(kVectors * kVectorLength);
  for (const size_t usedVectors : {1, 9, 60}) {
    MDelayLine used, fresh;
    for (MDelayLine* line : {&used, &fresh}) {
      line->setDelay(77);
      line->setMaxDelay(300);
    }
    for (size_t i = 0; i < usedVectors; ++i) writeVector(used, &in[i * kVectorLength]);
    used.reset();
    Samples fromUsed, fromFresh;
    const auto take = [&](MDelayLine& line, size_t at, Samples& to) {
      float scratch[kVectorLength];
      const float* next = line.readVector(scratch);
      to.insert(to.end(), next, next + kVectorLength);
      writeVector(line, &in[at]);
      for (const int behind : {32, 33, 150, 300}) {
        const float* piece = line.vectorBehind(behind, scratch);
        to.insert(to.end(), piece, piece + kVectorLength);
      }
    };
    for (size_t at = 0; at < in.size(); at += kVectorLength) {
      take(used, at, fromUsed);
      take(fresh, at, fromFresh);
    }
    EXPECT_EQ(fromUsed, fromFresh) << usedVectors;
  }
}

void prepareSwung(MSVRAP1ModDelayLine& line, MSinOsc& oscillator, int period) {
  oscillator.setFrequency(20.0F, 882.0F, 45.0F);
  line.setModulator(&oscillator);
  line.setModPeriod(period);
  line.setMaxDelay(310);
  line.setCentreDelay(300);
  line.setModDepth(7);
  line.reset();
}

TEST(DelayVectors, ASwungLineReadsNothingOldAfterAReset) {
  const Samples in = randomSamples(kVectors * kVectorLength);
  MSVRAP1ModDelayLine line;
  MSinOsc oscillator;
  prepareSwung(line, oscillator, 50);
  for (size_t at = 0; at < in.size(); at += kVectorLength) writeVector(line, &in[at]);
  line.reset();
  const Samples silence(kVectorLength, 0.0F);
  Samples got;
  for (int i = 0; i < kVectors; ++i) {
    SwungScratch scratch;
    const SwungSpan span = line.readSpan(scratch);
    got.insert(got.end(), span.now, span.now + kVectorLength);
    got.insert(got.end(), span.next, span.next + kVectorLength);
    writeVector(line, silence.data());
  }
  EXPECT_EQ(got, Samples(got.size(), 0.0F));
}

TEST(DelayVectors, SpansOfASwungLineInterpolateToItsSamples) {
  const Samples in = randomSamples(kVectors * kVectorLength);
  for (const int period : {33, 50, 64}) {
    MSVRAP1ModDelayLine single, vectors;
    MSinOsc oscillators[2];
    prepareSwung(single, oscillators[0], period);
    prepareSwung(vectors, oscillators[1], period);
    Samples expected, got;
    float y = 0.0F;
    for (size_t i = 0; i < in.size(); i += kVectorLength) {
      SwungScratch scratch;
      const SwungSpan span = vectors.readSpan(scratch);
      for (int k = 0; k < kVectorLength; ++k) {
        const float f = k < span.tick ? span.fractionBefore : span.fractionFrom;
        got.push_back(y = span.now[k] + (span.next[k] - y) * f);
      }
      writeVector(vectors, &in[i]);
      for (size_t k = i; k < i + kVectorLength; ++k) {
        expected.push_back(single.process(0.0F));
        single.write(in[k]);
      }
    }
    EXPECT_EQ(got, expected) << period;
  }
}

}  // namespace
}  // namespace orvantesco
