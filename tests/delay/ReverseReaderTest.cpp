#include "delay/ReverseReader.h"

#include <cmath>
#include <random>

#include "DelayTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::impulse;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainGlide;
using testing_support::PlainRing;
using testing_support::ScopedRate;
using testing_support::Signal;

/// The reader, sample by sample.
struct PlainReverse {
  explicit PlainReverse(double theRate) : rate(theRate), glide(300.0, theRate) { setFade(10.0); }

  void setFade(double ms) { fadeLength = rate * ms * 0.001; }

  Signal read(const PlainRing& ring, double cycle) {
    Signal out;
    for (int i = 0; i < kVectorLength; ++i) {
      const double m = glide.tick(offset > 0.0 ? offset : 0.0);  // what is no number counts as none
      const long k = static_cast<long>(m);
      const double t = 1.0 - (m - static_cast<double>(k));
      const long a = wrapped(start - count - k, ring.length);
      const long b = a + 1 < ring.length ? a + 1 : 0;
      ++count;
      if ((static_cast<double>(count) >= cycle || trigger) && !crossing) {
        start = ring.writePosition();
        crossPosition = b;
        count = 0;
        trigger = false;
        ++restarts;
      }
      if (crossPosition < 0) crossPosition += ring.length;
      state = (ring.at(a) - state) * (1.0 - t) / (1.0 + t) + ring.at(b);
      double y = state;
      crossing = false;
      if (static_cast<double>(count) < fadeLength) {
        const double g = static_cast<double>(count) / fadeLength;
        crossing = true;
        y = g * y + (1.0 - g) * ring.at(crossPosition);
        --crossPosition;
      }
      out.push_back(y);
    }
    return out;
  }

  static long wrapped(long position, long length) {
    return ((position % length) + length) % length;
  }

  double rate;
  PlainGlide glide;
  double fadeLength = 0.0;
  double offset = 0.0;
  double state = 0.0;
  long count = 0;
  long start = 0;
  long crossPosition = 0;
  bool trigger = false;
  bool crossing = false;
  int restarts = 0;
};

struct Reverse {
  Reverse(int length, double rate) : plainRing(length), plain(rate) { ring.allocate(length); }

  void setFade(double ms) {
    reader.setFade(ms);
    plain.setFade(ms);
  }
  void setOffset(double samples) {
    reader.setOffset(samples);
    plain.offset = samples;
  }
  void trigger() {
    reader.trigger();
    plain.trigger = true;
  }

  void play(const double* samples, double cycle) {
    double block[kVectorLength];
    reader.read(ring, cycle, block);
    output.insert(output.end(), block, block + kVectorLength);
    const Signal wanted = plain.read(plainRing, cycle);
    expected.insert(expected.end(), wanted.begin(), wanted.end());
    sameFade = sameFade && reader.isCrossing() == plain.crossing;
    ring.write(samples, kVectorLength);
    plainRing.write(samples, kVectorLength);
  }

  double error() const { return sameFade ? largestDifference(output, expected) : INFINITY; }

  DelayRing ring;
  ReverseReader reader;
  PlainRing plainRing;
  PlainReverse plain;
  Signal output;
  Signal expected;
  bool sameFade = true;
};

TEST(ReverseReader, FollowsTheModelOverCyclesOfEveryLength) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    const Signal signal = noise(1000);
    for (const double cycle : {44.1, 100.0, 777.3, 3000.0, 4095.0}) {
      Reverse reverse(4096, rate);
      for (size_t block = 0; block < 1000; ++block) reverse.play(&signal[block * 32], cycle);
      EXPECT_LT(reverse.error(), 1e-12) << cycle << " samples at " << rate << " Hz";
    }
  }
}

TEST(ReverseReader, FollowsTheModelWhileEverythingMoves) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    const Signal signal = noise(4000, 3);
    std::mt19937 engine(5);
    Reverse reverse(6000, rate);
    double cycle = 1000.0;
    for (size_t block = 0; block < 4000; ++block) {
      if (engine() % 40 == 0) cycle = 45.0 + static_cast<double>(engine() % 5900);
      if (engine() % 60 == 0) reverse.setFade(0.1 * static_cast<double>(engine() % 1200));
      if (engine() % 30 == 0) reverse.trigger();
      if (engine() % 50 == 0) reverse.setOffset(static_cast<double>(engine() % 300) - 100.0);
      reverse.play(&signal[block * 32], cycle);
    }
    EXPECT_LT(reverse.error(), 1e-10) << rate << " Hz";  // 1e-13 of an offset, on noise
  }
}

TEST(ReverseReader, PlaysTheLastCycleBackwards) {
  Signal ramp(100 * kVectorLength);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  Reverse reverse(4096, 44100.0);
  reverse.setFade(0.0);
  for (size_t block = 0; block < 100; ++block) reverse.play(&ramp[block * 32], 320.0);
  // Within a cycle each sample is one older than the one before, over the last 320 written.
  const size_t begin = 50 * kVectorLength;
  int down = 0, up = 0;
  for (size_t i = begin; i < begin + 960; ++i) {
    const double step = reverse.output[i + 1] - reverse.output[i];
    down += step == -1.0 ? 1 : 0;
    up += step > 1.0 ? 1 : 0;
  }
  EXPECT_GE(down, 950);
  EXPECT_EQ(up, 3) << "one leap to the newest sample in every cycle";
}

TEST(ReverseReader, ATriggerRestartsTheCycleAtOnce) {
  const Signal signal = noise(200);
  Reverse reverse(6000, 44100.0);
  reverse.setFade(0.0);
  for (size_t block = 0; block < 50; ++block) reverse.play(&signal[block * 32], 5000.0);
  const int before = reverse.plain.restarts;
  reverse.trigger();
  for (size_t block = 50; block < 60; ++block) reverse.play(&signal[block * 32], 5000.0);
  EXPECT_EQ(reverse.plain.restarts, before + 1);
  EXPECT_LT(reverse.error(), 1e-15);
  // Newest first: the sample just before the trigger comes out third, the one before it fourth.
  EXPECT_EQ(reverse.output[50 * 32 + 3], signal[50 * 32 - 1]);
  EXPECT_EQ(reverse.output[50 * 32 + 4], signal[50 * 32 - 2]);
}

TEST(ReverseReader, ATriggerDuringAFadeWaitsForItsEnd) {
  const Signal signal = noise(400);
  Reverse reverse(20000, 44100.0);
  reverse.setFade(50.0);  // 2205 samples
  for (size_t block = 0; block < 200; ++block) reverse.play(&signal[block * 32], 9000.0);
  reverse.trigger();
  reverse.play(&signal[0], 9000.0);
  ASSERT_TRUE(reverse.reader.isCrossing());
  const int before = reverse.plain.restarts;
  reverse.trigger();
  int blocks = 0;
  while (reverse.plain.restarts == before && blocks < 100) {
    reverse.play(&signal[static_cast<size_t>(blocks) * 32], 9000.0);
    ++blocks;
  }
  EXPECT_NEAR(blocks, 2205 / 32, 1) << "kept, and taken when the fade is over";
  EXPECT_LT(reverse.error(), 1e-15);
}

TEST(ReverseReader, AFadeLongerThanTheCycleCompletesBeforeARestart) {
  const Signal signal = noise(1000);
  Reverse reverse(20000, 44100.0);
  reverse.setFade(100.0);  // 4410 samples, with a cycle of 1000
  int crossingBlocks = 0;
  for (size_t block = 0; block < 1000; ++block) {
    reverse.play(&signal[block * 32], 1000.0);
    crossingBlocks += reverse.reader.isCrossing() ? 1 : 0;
  }
  EXPECT_GE(crossingBlocks, 990);
  EXPECT_EQ(reverse.plain.restarts, 32000 / 4411);
  EXPECT_LT(reverse.error(), 1e-15);
}

TEST(ReverseReader, AnOffsetGlidesAndIsNeverNegative) {
  Signal ramp(3000 * kVectorLength);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  const auto lag = [&](double offset) {
    Reverse reverse(20000, 44100.0);
    reverse.setFade(0.0);
    reverse.setOffset(offset);
    for (size_t block = 0; block < 3000; ++block) reverse.play(&ramp[block * 32], 15000.0);
    return ramp.back() - reverse.output.back();
  };
  const double none = lag(0.0);
  EXPECT_NEAR(lag(200.25) - none, 200.25, 1e-6);
  EXPECT_EQ(lag(-200.0), none);
  EXPECT_EQ(lag(NAN), none);
}

TEST(ReverseReader, AnyOffsetAndCycleStaysInsideTheRing) {
  const Signal signal = noise(100);
  Reverse reverse(200, 44100.0);
  reverse.setOffset(1e12);
  double block[kVectorLength];
  bool bounded = true;
  for (int i = 0; i < 3000; ++i) {
    reverse.reader.read(reverse.ring, 199.0, block);
    bounded =
        bounded && std::all_of(block, block + 32, [](double x) { return std::fabs(x) < 1e3; });
    reverse.ring.write(&signal[static_cast<size_t>(i % 100) * 32], 32);
  }
  EXPECT_TRUE(bounded);
}

TEST(ReverseReader, AResetReadsSilenceAndKeepsTheTrigger) {
  const Signal signal = noise(300);
  Reverse reverse(4096, 44100.0);
  for (size_t block = 0; block < 300; ++block) reverse.play(&signal[block * 32], 500.0);
  reverse.reader.trigger();
  reverse.reader.reset();
  reverse.ring.reset();
  double block[kVectorLength];
  bool silent = true;
  for (int i = 0; i < 10; ++i) {
    reverse.reader.read(reverse.ring, 500.0, block);
    silent = silent && std::all_of(block, block + 32, [](double x) { return x == 0.0; });
  }
  EXPECT_TRUE(silent);
}

TEST(ReverseReader, ARateChangeMakesItNewButForItsSettings) {
  const Signal signal = noise(300);
  ReverseReader used;
  DelayRing ring;
  ring.allocate(4096);
  used.setFade(3.0);
  used.setOffset(20.5);
  double block[kVectorLength];
  for (size_t at = 0; at < 200 * 32; at += 32) {
    used.read(ring, 300.0, block);
    ring.write(&signal[at], 32);
  }
  const ScopedRate scope(96000.0);
  ring.reset();
  used.rateChanged();
  ReverseReader fresh;
  fresh.setFade(3.0);
  fresh.setOffset(20.5);
  double freshBlock[kVectorLength];
  bool same = true;
  for (size_t at = 0; at < 300 * 32; at += 32) {
    used.read(ring, 300.0, block);
    fresh.read(ring, 300.0, freshBlock);
    same = same && std::equal(block, block + 32, freshBlock);
    ring.write(&signal[at], 32);
  }
  EXPECT_TRUE(same);
}

}  // namespace
}  // namespace orvantesco
