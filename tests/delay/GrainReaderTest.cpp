#include "delay/GrainReader.h"

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
using testing_support::sine;

/// The reader, sample by sample.
struct PlainGrains {
  explicit PlainGrains(double theRate) : rate(theRate), glide(10.0, theRate) {}

  void makeFade(double size) {
    fadeFor = size;
    fadeLength = fadeMs == 0.0 ? std::min(size * 0.2, std::floor(rate * 0.05))
                               : std::min(rate * 0.001 * fadeMs, size);
  }

  void setFade(double ms) {
    fadeMs = ms;
    makeFade(static_cast<double>(glide.y));
  }

  Signal read(const PlainRing& ring, const GrainReader::Settings& s) {
    Signal sizes(kVectorLength);
    for (double& size : sizes) size = glide.tick(s.sizeSamples * 0.995);
    const double rest = s.sizeSamples * 0.995;
    const bool rests = std::fabs(sizes[0] - rest) <= 1e-9 * rest;
    if (std::floor(sizes[0]) != std::floor(sizes[1])) {
      makeFade(sizes[0]);
    } else if (rests && (fadeLength > rest || std::fabs(fadeFor - rest) > 0.1 * rest)) {
      makeFade(rest);
    }
    Signal out;
    for (int i = 0; i < kVectorLength; ++i) {
      out.push_back(sample(ring, s, sizes[static_cast<size_t>(i)], i));
    }
    return out;
  }

  double sample(const PlainRing& ring, const GrainReader::Settings& s, double size, int i) {
    const double length = static_cast<double>(ring.length);
    position += s.rate;
    count += s.rate;
    if (position >= length) position -= length;
    if (count >= size - 1e-6) {
      oldPosition = position;
      const double back = std::max(size, (1.0 - s.position) * s.delaySamples);
      position = static_cast<double>(ring.writePosition() + i) - back;
      if (position < 0.0) position += length;
      if (position >= length) position -= length;
      count = 0.0;
      ++grains;
    }
    const long k = static_cast<long>(position);
    const double f = position - static_cast<double>(k);
    const double xm = ring.at(k - 1), x0 = ring.at(k), x1 = ring.at(k + 1), x2 = ring.at(k + 2);
    double y = (1.5 * x0 - 0.5 * xm - 1.5 * x1 + 0.5 * x2) * f * f * f +
               (xm - 2.5 * x0 + 2.0 * x1 - 0.5 * x2) * f * f + 0.5 * (x1 - xm) * f + x0;
    if (count < fadeLength) {
      const double g = count / fadeLength;
      const double old = ring.at(static_cast<long>(oldPosition));
      oldPosition += s.rate;
      if (oldPosition >= length) oldPosition -= length;
      y = static_cast<double>(static_cast<float>(g)) * y +
          static_cast<double>(static_cast<float>(1.0 - g)) * old;
    }
    return y;
  }

  double rate;
  PlainGlide glide;
  double fadeMs = 0.0;
  double fadeLength = 0.0;
  double fadeFor = 0.0;
  double count = 0.0;
  double position = 0.0;
  double oldPosition = 0.0;
  int grains = 0;
};

struct Cloud {
  Cloud(int length, double rate) : plainRing(length), plain(rate) { ring.allocate(length); }

  void setFade(double ms) {
    reader.setFade(ms);
    plain.setFade(ms);
  }

  void play(const double* samples, const GrainReader::Settings& settings) {
    double block[kVectorLength];
    reader.read(ring, settings, block);
    output.insert(output.end(), block, block + kVectorLength);
    const Signal wanted = plain.read(plainRing, settings);
    expected.insert(expected.end(), wanted.begin(), wanted.end());
    ring.write(samples, kVectorLength);
    plainRing.write(samples, kVectorLength);
  }

  void playAll(const Signal& signal, const GrainReader::Settings& settings) {
    for (size_t at = 0; at < signal.size(); at += kVectorLength) play(&signal[at], settings);
  }

  double error() const { return largestDifference(output, expected); }

  DelayRing ring;
  GrainReader reader;
  PlainRing plainRing;
  PlainGrains plain;
  Signal output;
  Signal expected;
};

TEST(GrainReader, FollowsTheModelAtEverySpeedAndSize) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    for (const double speed : {0.25, 0.7, 1.0, 2.0, 4.0}) {
      for (const double sizeMs : {1.0, 13.7, 100.0}) {
        Cloud cloud(30000, rate);
        cloud.playAll(sine(1500, 0.07), {speed, rate * 0.001 * sizeMs, 0.3, 12000.0F});
        EXPECT_LT(cloud.error(), 1e-10) << speed << " of " << sizeMs << " ms at " << rate << " Hz";
      }
    }
  }
}

TEST(GrainReader, FollowsTheModelWhileEverythingMoves) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    const Signal signal = sine(6000, 0.07);
    std::mt19937 engine(6);
    const auto draw = [&](double low, double high) {
      return low + (high - low) * static_cast<double>(engine() % 1000) / 1000.0;
    };
    Cloud cloud(50000, rate);
    GrainReader::Settings settings{1.0, 0.05 * rate, 0.5, 20000.0};
    for (size_t block = 0; block < 6000; ++block) {
      if (engine() % 20 == 0) settings.rate = std::exp2(draw(-2.0, 2.0));
      if (engine() % 50 == 0) settings.sizeSamples = rate * 0.001 * draw(1.0, 200.0);
      if (engine() % 30 == 0) settings.position = draw(0.0, 1.0);
      if (engine() % 70 == 0) settings.delaySamples = draw(rate * 0.001, 49000.0);
      if (engine() % 60 == 0) cloud.setFade(engine() % 2 == 0 ? 0.0 : draw(0.1, 50.0));
      cloud.play(&signal[block * 32], settings);
    }
    EXPECT_LT(cloud.error(), 1e-10) << rate << " Hz";
    EXPECT_GT(cloud.plain.grains, 20);
  }
}

/// Frequency of the strongest partial, in cycles per sample, from the mean distance of upward
/// crossings of zero.
double pitchOf(const Signal& signal, size_t begin) {
  size_t first = 0, last = 0;
  int crossings = -1;
  for (size_t i = begin + 1; i < signal.size(); ++i) {
    if (signal[i - 1] > 0.0 || signal[i] <= 0.0) continue;
    if (++crossings == 0) first = i;
    last = i;
  }
  return crossings / static_cast<double>(last - first);
}

TEST(GrainReader, SpeedIsPitch) {
  // The tone's period divides grain and distance, so that grains join without a seam.
  for (const double speed : {0.5, 1.0, 2.0, 4.0}) {
    Cloud cloud(40000, 44100.0);
    cloud.playAll(sine(1200, 2.0 * 3.14159265358979 / 100.0), {speed, 8000 / 0.995, 0.0, 16000.0});
    EXPECT_NEAR(pitchOf(cloud.output, 20000) * 100.0, speed, 0.02 * speed);
  }
}

TEST(GrainReader, AtPitchOneAWholeDelayIsExact) {
  const Signal signal = noise(1200);
  Cloud cloud(40000, 44100.0);
  cloud.playAll(signal, {1.0, 4410.0, 0.0, 16000.0});
  // Every grain is the signal 16000 samples ago, so the seams join the same samples.
  double worst = 0.0;
  for (size_t i = 30000; i < signal.size(); ++i) {
    worst = std::max(worst, std::fabs(cloud.output[i] - signal[i - 16000]));
  }
  EXPECT_LT(worst, 2e-7) << "but for the gains of the fade, which are floats";
}

TEST(GrainReader, AGrainIsCountedInSamplesOfTheSource) {
  for (const double speed : {0.5, 1.0, 4.0}) {
    Cloud cloud(40000, 44100.0);
    const double size = 400.0 * 44.1;
    cloud.playAll(noise(3000), {speed, size, 0.0, 20000.0});
    const double played = 3000.0 * kVectorLength * speed / (size * 0.995);
    EXPECT_NEAR(cloud.plain.grains, played, 0.1 * played + 3.0) << speed;
    EXPECT_LT(cloud.error(), 1e-12);
  }
}

TEST(GrainReader, AWholeNumberOfStepsEndsAGrainWhateverTheRounding) {
  // None of these speeds is exact in binary; each makes a grain of 300 in a whole number of steps.
  for (const double steps : {900.0, 1000.0, 3000.0}) {
    Cloud cloud(40000, 44100.0);
    const GrainReader::Settings settings{300.0 / steps, 300.0 / 0.995, 1.0, 5000.0};
    cloud.playAll(noise(400), settings);
    const int before = cloud.plain.grains;
    cloud.playAll(noise(static_cast<int>(steps) * 8), settings);
    EXPECT_EQ(cloud.plain.grains - before, 8 * kVectorLength) << steps << " steps";
    EXPECT_LT(cloud.error(), 1e-11) << steps << " steps";
  }
}

/// The fade that a size and a setting come to rest at.
double fadeAfter(double sizeMs, double fadeMs, double sizeBeforeMs) {
  Cloud cloud(40000, 44100.0);
  cloud.setFade(fadeMs);
  for (const double ms : {sizeBeforeMs, sizeMs}) {
    cloud.playAll(Signal(400 * kVectorLength, 0.0), {1.0, 44.1 * ms, 0.0, 20000.0});
  }
  return cloud.reader.fadeSamples();
}

TEST(GrainReader, AnAutomaticFadeIsAFifthOfAGrainAndAtMostFiftyMilliseconds) {
  for (const double before : {1.0, 200.0, 400.0}) {
    EXPECT_NEAR(fadeAfter(1.0, 0.0, before), 0.2 * 44.1 * 0.995, 0.1 * 0.2 * 44.1);
    EXPECT_NEAR(fadeAfter(100.0, 0.0, before), 0.2 * 4410.0 * 0.995, 0.1 * 0.2 * 4410.0);
    EXPECT_EQ(fadeAfter(400.0, 0.0, before), 2205.0);
  }
}

TEST(GrainReader, AFadeIsHeldAtTheGrainsLength) {
  for (const double before : {1.0, 40.0, 400.0}) {
    EXPECT_LE(fadeAfter(10.0, 50.0, before), 441.0 * 0.995 + 1e-9);
    EXPECT_GE(fadeAfter(10.0, 50.0, before), 441.0 * 0.9);
    EXPECT_NEAR(fadeAfter(100.0, 50.0, before), 2205.0, 1e-9);
  }
}

TEST(GrainReader, AtTheNewestPositionTheDelayTimeIsNotHeard) {
  const Signal signal = noise(1000);
  Cloud shorter(40000, 44100.0), longer(40000, 44100.0);
  shorter.playAll(signal, {1.3, 2000.0, 1.0, 500.0});
  longer.playAll(signal, {1.3, 2000.0, 1.0, 39000.0});
  EXPECT_EQ(shorter.output, longer.output);
}

TEST(GrainReader, GrainsLongerThanTheRingStayInsideIt) {
  const Signal signal = noise(500);
  DelayRing ring;
  ring.allocate(200);
  GrainReader reader;
  double block[kVectorLength];
  bool bounded = true;
  for (size_t at = 0; at < signal.size(); at += 32) {
    reader.read(ring, {4.0, 17640.0, 0.0, 199.0}, block);
    bounded = bounded && std::all_of(block, block + 32, [](double x) { return std::fabs(x) < 4; });
    ring.write(&signal[at], 32);
  }
  EXPECT_TRUE(bounded);
}

TEST(GrainReader, AResetReadsSilence) {
  const Signal signal = noise(500);
  Cloud cloud(20000, 44100.0);
  const GrainReader::Settings settings{1.0, 2000.0, 0.0, 9000.0};
  cloud.playAll(signal, settings);
  cloud.ring.reset();
  cloud.reader.reset();
  double block[kVectorLength];
  bool silent = true;
  for (int i = 0; i < 200; ++i) {
    cloud.reader.read(cloud.ring, settings, block);
    silent = silent && std::all_of(block, block + 32, [](double x) { return x == 0.0; });
  }
  EXPECT_TRUE(silent);
}

TEST(GrainReader, AResetGoesBackToTheRingsStartInTheMiddleOfAGrain) {
  const Signal signal = noise(500);
  Cloud cloud(20000, 44100.0);
  const GrainReader::Settings settings{1.3, 4000.0, 0.0, 9000.0};
  cloud.playAll(signal, settings);
  cloud.ring.reset();
  cloud.plainRing.reset();
  cloud.reader.reset();
  cloud.plain.position = 0.0;
  cloud.playAll(signal, settings);
  EXPECT_LT(cloud.error(), 1e-10);
}

TEST(GrainReader, ARateChangeMakesItNewButForItsSettings) {
  const Signal signal = noise(500);
  Cloud cloud(20000, 44100.0);
  cloud.reader.setFade(7.0);
  const GrainReader::Settings settings{1.5, 2000.0, 0.2, 9000.0};
  cloud.playAll(signal, settings);
  const ScopedRate scope(96000.0);
  cloud.ring.reset();
  cloud.reader.rateChanged();
  GrainReader fresh;
  fresh.setFade(7.0);
  double block[kVectorLength], freshBlock[kVectorLength];
  bool same = true;
  for (size_t at = 0; at < signal.size(); at += 32) {
    cloud.reader.read(cloud.ring, settings, block);
    fresh.read(cloud.ring, settings, freshBlock);
    same = same && std::equal(block, block + 32, freshBlock);
    cloud.ring.write(&signal[at], 32);
  }
  EXPECT_TRUE(same);
}

}  // namespace
}  // namespace orvantesco
