#include "delay/RingDelay.h"

#include <cmath>
#include <random>

#include "DelayTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainGlide;
using testing_support::PlainRing;
using testing_support::ScopedRate;
using testing_support::Signal;

TEST(RingDelay, TakesTheNextPowerOfTwo) {
  RingDelay line;
  EXPECT_EQ(line.capacity(), 16384);
  line.resize(22050);
  EXPECT_EQ(line.capacity(), 32768);
  line.resize(32768);
  EXPECT_EQ(line.capacity(), 32768);
  line.resize(200);
  EXPECT_EQ(line.capacity(), 256);
  line.resize(1);
  EXPECT_EQ(line.capacity(), 64) << "no shorter than two vectors";
}

/// The whole signal through `read` at one delay.
Signal delayed(RingDelay& line, const Signal& signal, double delay) {
  Signal out;
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    line.write(&signal[at], kVectorLength);
    const double* read = line.read(delay, kVectorLength);
    out.insert(out.end(), read, read + kVectorLength);
  }
  return out;
}

Signal shifted(const Signal& signal, size_t by) {
  Signal out(signal.size(), 0.0);
  std::copy(signal.begin(), signal.end() - static_cast<long>(by),
            out.begin() + static_cast<long>(by));
  return out;
}

TEST(RingDelay, ReadsWholeSamplesBackAcrossEveryWrap) {
  const Signal signal = noise(60);
  for (const double delay : {0.0, 0.99, 1.0, 31.5, 32.0, 100.7, 223.0}) {
    RingDelay line;
    line.resize(256);
    const Signal expected = shifted(signal, static_cast<size_t>(delay));
    EXPECT_EQ(delayed(line, signal, delay), expected) << delay << " samples";
  }
}

TEST(RingDelay, ADelayBeyondTheMaskReadsMaskSamplesBack) {
  const Signal signal = noise(60);
  for (const double delay : {255.0, 256.0, 1e9, static_cast<double>(INFINITY)}) {
    RingDelay line;
    line.resize(256);
    Signal expected;
    PlainRing plain(256);
    for (size_t at = 0; at < signal.size(); at += kVectorLength) {
      plain.write(&signal[at], kVectorLength);
      for (int i = 0; i < kVectorLength; ++i) {
        expected.push_back(plain.at(plain.writePosition() - 255 - kVectorLength + i));
      }
    }
    EXPECT_EQ(delayed(line, signal, delay), expected) << delay << " samples";
  }
}

TEST(RingDelay, ADelayThatIsNotANumberReadsTheNewestSamples) {
  const Signal signal = noise(4);
  RingDelay line;
  EXPECT_EQ(delayed(line, signal, NAN), signal);
  line.clear();
  EXPECT_EQ(delayed(line, signal, -5.0), signal);
}

TEST(RingDelay, ReadsInPieceWhereItCanAndTheSameValuesWhereItCannot) {
  const Signal signal = noise(9);
  RingDelay line;
  line.resize(256);
  for (size_t at = 0; at < signal.size(); at += kVectorLength) line.write(&signal[at], 32);
  // The write position is 32: a delay of 16 crosses the ring's end.
  const double* direct = line.read(0.0, 32);
  EXPECT_EQ(Signal(direct, direct + 32), Signal(signal.end() - 32, signal.end()));
  const double* copied = line.read(16.0, 32);
  EXPECT_EQ(Signal(copied, copied + 32), Signal(signal.end() - 48, signal.end() - 16));
  EXPECT_NE(copied, direct - 16);
  const double* shorter = line.read(16.0, 8);
  EXPECT_EQ(Signal(shorter, shorter + 8), Signal(signal.end() - 24, signal.end() - 16));
}

TEST(RingDelay, ClearedLineIsSilentAtOnce) {
  const Signal signal = noise(20);
  RingDelay line;
  line.resize(256);
  delayed(line, signal, 100.0);
  line.clear();
  EXPECT_EQ(delayed(line, signal, 200.0), shifted(signal, 200));
}

/// The whole signal through `readModulated` at one delay.
Signal modulated(RingDelay& line, const Signal& signal, double delay) {
  Signal out;
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    line.write(&signal[at], kVectorLength);
    const double* read = line.readModulated(delay, kVectorLength);
    out.insert(out.end(), read, read + kVectorLength);
  }
  return out;
}

TEST(RingDelay, ClearedLineIsSilentForTheModulatedReadToo) {
  RingDelay line;
  modulated(line, noise(50), 100.3);
  line.clear();
  const Signal silence(50 * kVectorLength, 0.0);
  EXPECT_EQ(modulated(line, silence, 100.3), silence);
}

TEST(RingDelay, AResizedLineIsLikeANewOne) {
  RingDelay used, fresh;
  used.resize(500, 30.0);
  modulated(used, noise(50), 400.3);
  for (RingDelay* line : {&used, &fresh}) line->resize(1000, 7.0);
  EXPECT_EQ(modulated(used, noise(50), 200.3), modulated(fresh, noise(50), 200.3));
}

TEST(RingDelay, AfterAChangeOfRateItIsLikeANewOne) {
  RingDelay used;
  modulated(used, noise(50), 400.3);
  ScopedRate scope(96000.0);
  used.rateChanged();
  RingDelay fresh;
  EXPECT_EQ(modulated(used, noise(50), 200.3), modulated(fresh, noise(50), 200.3));
}

/// The modulated read, sample by sample.
Signal plainModulated(const Signal& signal, const Signal& delays, int capacity, double ms,
                      double rate) {
  PlainRing plain(capacity);
  PlainGlide glide(ms, rate);
  double y = 0.0;
  Signal out;
  for (size_t block = 0; block < delays.size(); ++block) {
    plain.write(&signal[block * kVectorLength], kVectorLength);
    const double target = std::max(delays[block], rate * 0.0001);
    for (int i = 0; i < kVectorLength; ++i) {
      const double d = glide.tick(target);
      const double f = d - std::floor(d);
      const long p = i - static_cast<long>(d) + plain.writePosition() - kVectorLength;
      y = (plain.at(p) - y) * (1.0 - f) / (1.0 + f) + plain.at(p - 1);
      out.push_back(y);
    }
  }
  return out;
}

// The bound: the last bit of a delay of 900 samples is 1e-13, and noise moves by up to 2 a sample.
TEST(RingDelay, ModulatedReadFollowsTheSampleBySampleModel) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    const Signal signal = noise(300, 7);
    std::mt19937 engine(4);
    Signal delays;
    for (int block = 0; block < 300; ++block) {
      delays.push_back(block % 10 == 0 ? static_cast<double>(engine() % 900) + 0.37
                                       : delays.back());
    }
    RingDelay line;
    line.resize(1000, 20.0);
    Signal out;
    for (size_t block = 0; block < delays.size(); ++block) {
      line.write(&signal[block * kVectorLength], kVectorLength);
      const double* read = line.readModulated(delays[block], kVectorLength);
      out.insert(out.end(), read, read + kVectorLength);
    }
    EXPECT_LT(largestDifference(out, plainModulated(signal, delays, 1024, 20.0, rate)), 4e-12)
        << rate << " Hz";
  }
}

TEST(RingDelay, ModulatedReadStaysWithinTheLine) {
  RingDelay line;
  line.resize(128);
  const Signal ones(kVectorLength, 1.0);
  for (const double delay : {1e9, static_cast<double>(NAN), -1e9, static_cast<double>(INFINITY)}) {
    bool finite = true;
    for (int block = 0; block < 200; ++block) {
      line.write(ones.data(), kVectorLength);
      const double* read = line.readModulated(delay, kVectorLength);
      for (int i = 0; i < kVectorLength; ++i) finite = finite && std::fabs(read[i]) < 4.0;
    }
    EXPECT_TRUE(finite) << delay;
  }
}

TEST(RingDelay, NothingThatIsNotFiniteComesBack) {
  RingDelay line;
  Signal bad(kVectorLength, NAN);
  line.write(bad.data(), kVectorLength);
  const double* read = line.read(0.0, kVectorLength);
  EXPECT_EQ(Signal(read, read + kVectorLength), Signal(kVectorLength, 0.0));
}

}  // namespace
}  // namespace orvantesco
