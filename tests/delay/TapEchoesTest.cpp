#include "delay/TapEchoes.h"

#include "DelayTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::PlainRing;
using testing_support::Signal;

constexpr int kLength = 1000;

/// A ring and the plain picture of it, written alike.
struct Rings {
  DelayRing ring;
  PlainRing plain{kLength};

  Rings() { ring.allocate(kLength); }

  void write(int blocks) {
    const Signal signal = noise(blocks, 3);
    for (int k = 0; k < blocks; ++k) {
      ring.write(&signal[static_cast<size_t>(k) * kVectorLength], kVectorLength);
      plain.write(&signal[static_cast<size_t>(k) * kVectorLength], kVectorLength);
    }
  }

  Signal expected(const TapEchoes& echoes, double delay, Signal samples) const {
    for (int k = 0; k < echoes.count; ++k) {
      const TapEcho& echo = echoes.list[static_cast<size_t>(k)];
      const double distance = delay - echo.back;
      if (distance <= 0.0) break;
      const int back = static_cast<int>(std::min(distance, double{kLength - kVectorLength}));
      for (int i = 0; i < kVectorLength; ++i) {
        const long at = plain.writePosition() - back - kVectorLength + i;
        samples[static_cast<size_t>(i)] += plain.at(at) * echo.gain;
      }
    }
    return samples;
  }
};

/// Sixteen echoes on a square law, the last one `reach` samples before the tap.
TapEchoes squareLaw(double reach) {
  TapEchoes echoes;
  for (TapEcho& echo : echoes.list) {
    const double x = (echoes.count + 1) / 16.0;
    echo = {reach * x * x, 0.45 - 0.45 * x};
    ++echoes.count;
  }
  return echoes;
}

TEST(TapEchoes, AddWhatWasWrittenWholeSamplesBackBeforeDuringAndAfterTheFirstTurn) {
  const TapEchoes echoes = squareLaw(613.7);
  Rings rings;
  int wrong = 0;
  for (int block = 0; block < 80; ++block) {
    for (double delay = 0.4; delay < kLength - kVectorLength; delay += 61.3) {
      const Signal start = noise(1, 9);
      Signal samples = start;
      addEchoes(rings.ring, echoes, delay, samples.data());
      wrong += samples != rings.expected(echoes, delay, start);
    }
    rings.write(1);
  }
  EXPECT_EQ(wrong, 0);
}

TEST(TapEchoes, BeyondTheRingTheOldestSamplesAreRead) {
  Rings rings;
  rings.write(70);
  const TapEchoes echoes = squareLaw(400.0);
  for (const double delay : {968.0, 968.9, 1000.0, 1100.0, 2000.0, 1e15}) {
    Signal samples(kVectorLength, 0.0);
    addEchoes(rings.ring, echoes, delay, samples.data());
    EXPECT_EQ(samples, rings.expected(echoes, delay, Signal(kVectorLength, 0.0))) << delay;
  }
}

TEST(TapEchoes, AnEchoAtTheWritePositionOrBehindItIsLeftOut) {
  Rings rings;
  rings.write(40);
  TapEchoes echoes;
  echoes.list[0] = {100.0, 1.0};
  echoes.list[1] = {200.0, 1.0};
  echoes.count = 2;
  const auto sum = [&](double delay) {
    Signal samples(kVectorLength, 0.0);
    addEchoes(rings.ring, echoes, delay, samples.data());
    return samples;
  };
  const Signal silence(kVectorLength, 0.0);
  EXPECT_EQ(sum(100.0), silence);
  EXPECT_NE(sum(100.5), silence);
  echoes.count = 1;
  const Signal first = sum(200.0);
  echoes.count = 2;
  EXPECT_EQ(sum(200.0), first);
  EXPECT_NE(sum(201.0), first);
}

TEST(TapEchoes, NoEchoesAddNothing) {
  Rings rings;
  rings.write(40);
  Signal samples = noise(1, 2);
  const Signal before = samples;
  addEchoes(rings.ring, TapEchoes{}, 300.0, samples.data());
  EXPECT_EQ(samples, before);
}

}  // namespace
}  // namespace orvantesco
