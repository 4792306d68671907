#include "delay/TapReader.h"

#include <array>
#include <cmath>
#include <random>

#include "DelayTestSupport.h"
#include "fx/kernels/Level.h"

namespace orvantesco {
namespace {

using kernels::Level;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainGlide;
using testing_support::PlainRing;
using testing_support::Signal;
using testing_support::sine;

/// One tap, sample by sample.
struct PlainTap {
  explicit PlainTap(double rate) : glide(100.0, rate) {}

  void snap(double target) {
    glide.y = target;
    fresh = true;
  }

  Signal read(const PlainRing& ring, float target) {
    Signal delays(kVectorLength);
    for (double& d : delays) d = glide.tick(target);
    if (std::fabs(delays.back() - target) <= 1e-9 * target) {
      std::fill(delays.begin(), delays.end(), target);
      glide.y = target;
    }
    Signal out;
    for (int i = 0; i < kVectorLength; ++i) out.push_back(sample(ring, i, delays[i]));
    return out;
  }

  double sample(const PlainRing& ring, int i, double d) {
    const long whole = static_cast<long>(d);
    const double f = d - static_cast<double>(whole);
    long p = i - whole + ring.writePosition();
    if (p < 0) p += ring.length;
    if (p >= ring.length) p = 0;
    const long q = p > 0 ? p - 1 : ring.length - 1;
    if (fresh) y = ring.at(q);
    fresh = false;
    y = (ring.at(p) - y) * (1.0 - f) / (1.0 + f) + ring.at(q);
    return y;
  }

  PlainGlide glide;
  double y = 0.0;
  bool fresh = true;
};

/// A ring with its readers next to the plain ones, and a signal that runs into both.
struct Line {
  Line(int length, double rate) : plain(length), taps(16, PlainTap(rate)) {
    ring.allocate(length);
    reader.setRate(rate);
  }

  void write(const double* samples) {
    ring.write(samples, kVectorLength);
    plain.write(samples, kVectorLength);
  }

  void snapNext(int tap, float delay) {
    reader.snapNextGlide();
    taps[static_cast<size_t>(tap)].snap(delay);
  }

  void clearMemory() {
    reader.clearMemory();
    for (PlainTap& tap : taps) tap.fresh = true;
  }

  /// Reads one tap both ways and appends the results.
  void read(float delay, int tap) {
    double block[kVectorLength];
    reader.read(ring, {delay, tap, block});
    output.insert(output.end(), block, block + kVectorLength);
    const Signal wanted = taps[static_cast<size_t>(tap)].read(plain, delay);
    expected.insert(expected.end(), wanted.begin(), wanted.end());
  }

  double error() const { return largestDifference(output, expected); }

  DelayRing ring;
  TapReader reader;
  PlainRing plain;
  std::vector<PlainTap> taps;
  Signal output;
  Signal expected;
};

/// A delay for each block, snapped to at first.
void play(Line& line, const Signal& signal, const std::vector<float>& delays) {
  line.snapNext(0, delays[0]);
  for (size_t block = 0; block < delays.size(); ++block) {
    line.read(delays[block], 0);
    line.write(&signal[block * kVectorLength]);
  }
}

TEST(TapReader, SettledReadsFollowTheModelAtFractionalDelays) {
  for (const double rate : kRates) {
    for (const float delay : {100.25F, 1000.5F, 3999.9375F, 4095.0F}) {
      Line line(4096, rate);
      play(line, noise(400), std::vector<float>(400, delay));
      EXPECT_LT(line.error(), 1e-12) << delay << " samples at " << rate << " Hz";
    }
  }
}

TEST(TapReader, AnImpulseArrivesOnTheExactSample) {
  for (const int delay : {44, 100, 3000, 4095}) {
    Line line(4096, 44100.0);
    play(line, testing_support::impulse(130), std::vector<float>(130, static_cast<float>(delay)));
    Signal wanted(130 * kVectorLength, 0.0);
    wanted[static_cast<size_t>(delay)] = 1.0;
    EXPECT_EQ(line.output, wanted) << delay << " samples";
  }
}

TEST(TapReader, AWholeDelayIsExactToTheLastBit) {
  const Signal signal = noise(400);
  Line line(4096, 48000.0);
  play(line, signal, std::vector<float>(400, 1777.0F));
  Signal wanted(1777, 0.0);
  wanted.insert(wanted.end(), signal.begin(), signal.end() - 1777);
  EXPECT_EQ(line.output, wanted);
}

TEST(TapReader, ARampProvesTheFraction) {
  Signal ramp(200 * kVectorLength);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = 1e-4 * static_cast<double>(i);
  for (const float fraction : {0.125F, 0.5F, 0.875F}) {
    Line line(4096, 48000.0);
    play(line, ramp, std::vector<float>(200, 500.0F + fraction));
    const double wanted = ramp.back() - 1e-4 * static_cast<double>(500.0F + fraction);
    EXPECT_NEAR(line.output.back(), wanted, 1e-12) << fraction;
  }
}

TEST(TapReader, GlidesFollowTheModelThroughLeapsOfTheTime) {
  for (const double rate : kRates) {
    std::mt19937 engine(9);
    std::vector<float> delays;
    for (int block = 0; block < 3000; ++block) {
      const bool leaps = block % 150 == 0;
      delays.push_back(leaps ? 100.0F + 0.01F * static_cast<float>(engine() % 390000)
                             : delays.back());
    }
    Line line(4096, rate);
    play(line, sine(3000, 0.05), delays);
    EXPECT_LT(line.error(), 1e-10) << rate << " Hz";  // 1e-12 of a delay, through its slope
  }
}

TEST(TapReader, AModulatedTimeIsFollowedInEveryBlock) {
  for (const double rate : kRates) {
    std::vector<float> delays;
    for (int block = 0; block < 2000; ++block) {
      delays.push_back(1500.0F + 1200.0F * std::sin(0.05F * static_cast<float>(block)));
    }
    Line line(4096, rate);
    play(line, noise(2000), delays);
    EXPECT_LT(line.error(), 2e-10) << rate << " Hz";  // noise is steep, see above
  }
}

TEST(TapReader, ATimeBendsOverATenthOfASecond) {
  Line line(8192, 48000.0);
  std::vector<float> delays(400, 4000.0F);
  std::fill(delays.begin() + 200, delays.end(), 1000.0F);
  Signal ramp(400 * kVectorLength);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  play(line, ramp, delays);
  const auto delayAt = [&](size_t i) { return ramp[i] - line.output[i]; };
  const size_t leap = 200 * kVectorLength;
  EXPECT_NEAR(delayAt(leap - 1), 4000.0, 1e-9);
  EXPECT_NEAR(delayAt(leap + 480), 1000.0 + 3000.0 * std::exp(-0.2 * 3.14159265), 60.0);
  EXPECT_NEAR(delayAt(leap + 4800), 1000.0 + 3000.0 * std::exp(-2.0 * 3.14159265), 1.0);
  EXPECT_NEAR(delayAt(leap + 6000), 1000.0, 2.0);
}

TEST(TapReader, ASettledGlideIsItsTarget) {
  Line line(8192, 48000.0);
  std::vector<float> delays(2000, 3000.5F);
  delays[0] = 500.25F;
  play(line, noise(2000), delays);
  // Once at rest a snap to the same time changes nothing but the memory.
  Line snapped(8192, 48000.0);
  play(snapped, noise(2000), std::vector<float>(2000, 3000.5F));
  const Signal late(line.output.end() - 320, line.output.end());
  const Signal lateSnapped(snapped.output.end() - 320, snapped.output.end());
  EXPECT_LT(largestDifference(late, lateSnapped), 1e-15);
}

TEST(TapReader, AFirstGlideStartsAtZeroAndReadsAheadWithoutHarm) {
  for (const int warmUp : {0, 3, 127, 128, 129, 300}) {
    Line line(4096, 44100.0);
    const Signal signal = noise(700);
    for (int block = 0; block < warmUp; ++block)
      line.write(&signal[static_cast<size_t>(block) * 32]);
    for (size_t block = 300; block < 700; ++block) {
      line.read(2000.5F, 0);
      line.write(&signal[block * kVectorLength]);
    }
    EXPECT_LT(line.error(), 1e-11) << warmUp << " blocks before";
  }
}

TEST(TapReader, ATapThatStartsAnewLeavesNoToneAtHalfTheRate) {
  // A whole delay: the interpolator would keep for ever what its memory is off by.
  const Signal signal = noise(300);
  Line line(4096, 48000.0);
  line.snapNext(0, 100.5F);
  for (size_t block = 0; block < 100; ++block) {
    line.read(100.5F, 0);
    line.write(&signal[block * kVectorLength]);
  }
  for (int start = 0; start < 2; ++start) {
    if (start == 0) line.snapNext(0, 640.0F);
    if (start == 1) line.clearMemory();
    line.output.clear();
    line.expected.clear();
    for (size_t block = 100; block < 150; ++block) {
      line.read(640.0F, 0);
      line.write(&signal[block * kVectorLength]);
    }
    EXPECT_LT(line.error(), 1e-14);
  }
  Signal wanted;
  for (int i = 0; i < kVectorLength; ++i) {
    wanted.push_back(line.plain.at(line.plain.writePosition() - 32 - 640 + i));
  }
  EXPECT_EQ(Signal(line.output.end() - 32, line.output.end()), wanted);
}

TEST(TapReader, WhatTheMemoryIsOffByAtAWholeDelayNeitherGrowsNorFades) {
  // A glide that comes down to a whole delay arrives with some of it.
  const Signal signal = noise(20000, 2);
  std::vector<float> delays(20000, 100.0F);
  std::fill(delays.begin(), delays.begin() + 4, 100.5F);
  Line line(4096, 48000.0);
  play(line, signal, delays);
  const auto offAt = [&](size_t i) { return line.output[i] - signal[i - 100]; };
  const size_t settled = 3000 * kVectorLength;
  const size_t last = 19999 * kVectorLength;
  EXPECT_GT(std::fabs(offAt(settled)), 1e-6);
  EXPECT_NEAR(offAt(last), -offAt(last + 1), 1e-12);
  EXPECT_NEAR(offAt(last), offAt(settled), 1e-12);
}

TEST(TapReader, OnlyTheNextTapSnaps) {
  Line line(4096, 48000.0);
  const Signal signal = noise(200);
  for (size_t block = 0; block < 100; ++block) line.write(&signal[block * kVectorLength]);
  line.snapNext(3, 500.5F);
  for (size_t block = 100; block < 200; ++block) {
    line.read(500.5F, 3);
    line.read(900.25F, 4);
    line.write(&signal[block * kVectorLength]);
  }
  EXPECT_LT(line.error(), 1e-11);
}

/// Sixteen taps, some settled, some whole, some moving, some in what is not written yet.
std::vector<TapReader::Read> sixteenTaps(int block, std::vector<std::array<double, 32>>& rows) {
  std::vector<TapReader::Read> reads;
  for (int tap = 0; tap < 16; ++tap) {
    float delay = 60.0F + 250.0F * static_cast<float>(tap);
    if (tap % 3 == 1) delay += 0.3F;
    if (tap % 3 == 2) delay += 20.0F * std::sin(0.1F * static_cast<float>(block + tap));
    reads.push_back({delay, tap, rows[static_cast<size_t>(tap)].data()});
  }
  return reads;
}

TEST(TapReader, ManyTapsAtOnceGiveTheBitsOfOneAfterTheOther) {
  const Level before = kernels::levelInForce();
  for (const Level level : {Level::kScalar, Level::kSse2, Level::kAvx2}) {
    if (!kernels::forceLevel(level)) continue;
    Line together(4096, 48000.0);
    Line apart(4096, 48000.0);
    const Signal signal = noise(1500);
    std::vector<std::array<double, 32>> rows(16), singles(16);
    bool same = true;
    for (int block = 0; block < 1500; ++block) {
      const int count = 1 + block % 16;
      const auto reads = sixteenTaps(block, rows);
      together.reader.readMany(together.ring, reads.data(), count);
      const auto ones = sixteenTaps(block, singles);
      for (int k = 0; k < count; ++k) apart.reader.read(apart.ring, ones[static_cast<size_t>(k)]);
      same = same && rows == singles;
      together.write(&signal[static_cast<size_t>(block) * 32]);
      apart.write(&signal[static_cast<size_t>(block) * 32]);
    }
    EXPECT_TRUE(same) << kernels::nameOf(level);
  }
  kernels::forceLevel(before);
}

TEST(TapReader, SixteenTapsFollowTheModel) {
  Line line(4096, 48000.0);
  const Signal signal = sine(1500, 0.03);
  std::vector<std::array<double, 32>> rows(16);
  for (int block = 0; block < 1500; ++block) {
    const auto reads = sixteenTaps(block, rows);
    line.reader.readMany(line.ring, reads.data(), 16);
    for (const TapReader::Read& read : reads) {
      line.output.insert(line.output.end(), read.output, read.output + 32);
      const Signal wanted =
          line.taps[static_cast<size_t>(read.tap)].read(line.plain, read.delaySamples);
      line.expected.insert(line.expected.end(), wanted.begin(), wanted.end());
    }
    line.write(&signal[static_cast<size_t>(block) * 32]);
  }
  EXPECT_LT(line.error(), 1e-10);
}

TEST(TapReader, APairGivesTheBitsOfTwoSingles) {
  Line left(4096, 48000.0), right(4096, 48000.0);
  Line leftAlone(4096, 48000.0), rightAlone(4096, 48000.0);
  const Signal signal = noise(1200);
  double outL[32], outR[32], aloneL[32], aloneR[32];
  bool same = true;
  for (size_t block = 0; block + 1 < 1200; ++block) {
    const float delayL = block < 600 ? 700.5F : 1900.25F;
    const float delayR = 300.0F + 100.0F * std::sin(0.01F * static_cast<float>(block));
    TapReader::readPair(left.reader, left.ring, {delayL, 0, outL}, right.reader, right.ring,
                        {delayR, 0, outR});
    leftAlone.reader.read(leftAlone.ring, {delayL, 0, aloneL});
    rightAlone.reader.read(rightAlone.ring, {delayR, 0, aloneR});
    same = same && std::equal(outL, outL + 32, aloneL) && std::equal(outR, outR + 32, aloneR);
    for (Line* line : {&left, &leftAlone}) line->write(&signal[block * 32]);
    for (Line* line : {&right, &rightAlone}) line->write(&signal[block * 32 + 32]);
  }
  EXPECT_TRUE(same);
}

TEST(TapReader, APairAtTwoRatesKeepsEachItsOwnGlide) {
  Line left(4096, 48000.0), right(4096, 96000.0);
  const Signal signal = noise(200);
  double outL[32], outR[32];
  for (size_t block = 0; block < 200; ++block) {
    TapReader::readPair(left.reader, left.ring, {1000.5F, 0, outL}, right.reader, right.ring,
                        {1000.5F, 0, outR});
    for (Line* line : {&left, &right}) {
      const double* out = line == &left ? outL : outR;
      line->output.insert(line->output.end(), out, out + 32);
      const Signal wanted = line->taps[0].read(line->plain, 1000.5F);
      line->expected.insert(line->expected.end(), wanted.begin(), wanted.end());
      line->write(&signal[block * 32]);
    }
  }
  EXPECT_LT(left.error(), 1e-11);
  EXPECT_LT(right.error(), 1e-11);
}

TEST(TapReader, ASilentRingAfterAResetIsReadAsSilence) {
  Line line(4096, 48000.0);
  play(line, noise(300), std::vector<float>(300, 1000.5F));
  line.ring.reset();
  line.clearMemory();
  double out[32];
  bool silent = true;
  const Signal zeros(32, 0.0);
  for (int block = 0; block < 300; ++block) {
    line.reader.read(line.ring, {block < 150 ? 1000.5F : 2000.0F, 0, out});
    silent = silent && std::all_of(out, out + 32, [](double x) { return x == 0.0; });
    line.ring.write(zeros.data(), 32);
  }
  EXPECT_TRUE(silent);
}

}  // namespace
}  // namespace orvantesco
