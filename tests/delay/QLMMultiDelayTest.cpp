#include "delay/QLMMultiDelay.h"

#include <array>
#include <cmath>
#include <random>

#include "DelayTestSupport.h"
#include "fx/FilterMode.h"

namespace orvantesco {
namespace {

using testing_support::impulse;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::sine;
using Mode = QLMMultiDelay::Mode;

constexpr int n = kVectorLength;

/// Reads one tap at one time while the signal is written, block by block.
Signal play(QLMMultiDelay& delay, const Signal& signal, double samples, int tap = 0) {
  Signal out;
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    const double* read = delay.readTap(samples, n, tap);
    out.insert(out.end(), read, read + n);
    delay.writeBlock(&signal[at], n);
  }
  return out;
}

/// Where the one sample of an impulse response is.
long arrivalOf(const Signal& response) {
  const auto largest = std::max_element(response.begin(), response.end(), [](double a, double b) {
    return std::fabs(a) < std::fabs(b);
  });
  return largest - response.begin();
}

/// Mean delay of a ramp of one per sample at the end of the signal.
double lagOf(QLMMultiDelay& delay, double samples, int tap = 0) {
  Signal ramp(1000 * kVectorLength);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  return ramp.back() - play(delay, ramp, samples, tap).back();
}

TEST(QLMMultiDelay, StartsWithTenThousandSamples) {
  QLMMultiDelay delay;
  delay.snapTapGlide();
  EXPECT_NEAR(lagOf(delay, 1e9), 9999.0, 1e-9);
}

TEST(QLMMultiDelay, ATimeBelowOneMillisecondIsRaisedToIt) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    for (const double asked : {0.001, 0.0, -50.0, static_cast<double>(NAN)}) {
      QLMMultiDelay delay;
      delay.snapTapGlide();
      EXPECT_NEAR(lagOf(delay, asked), rate * 0.001, 1e-5) << asked << " at " << rate << " Hz";
    }
  }
}

TEST(QLMMultiDelay, ATimeBeyondTheRingIsHeldAtItsLastSample) {
  for (const double asked : {3000.0, 1e12, static_cast<double>(INFINITY)}) {
    QLMMultiDelay delay;
    delay.resize(3000);
    delay.snapTapGlide();
    EXPECT_EQ(arrivalOf(play(delay, impulse(200), asked)), 2999) << asked;
  }
}

TEST(QLMMultiDelay, AfterASnapTheNewTimeHoldsAtOnceOtherwiseItBends) {
  for (const bool snaps : {true, false}) {
    QLMMultiDelay delay;
    delay.snapTapGlide();
    Signal ramp(300 * kVectorLength);
    for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
    const Signal first(ramp.begin(), ramp.begin() + 200 * n);
    const Signal second(ramp.begin() + 200 * n, ramp.end());
    play(delay, first, 5000.0);
    if (snaps) delay.snapTapGlide();
    const Signal out = play(delay, second, 1000.0);
    const double lagAtOnce = second[0] - out[0];
    EXPECT_NEAR(lagAtOnce, snaps ? 1000.0 : 5000.0, snaps ? 1e-9 : 10.0);
  }
}

TEST(QLMMultiDelay, AnImpulseResponseIsExactAtWholeDelays) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    QLMMultiDelay delay;
    delay.resize(maxDelay);
    delay.snapTapGlide();
    Signal wanted(2000 * kVectorLength, 0.0);
    wanted[48000] = 1.0;
    EXPECT_EQ(play(delay, impulse(2000), 48000.0), wanted) << rate << " Hz";
  }
}

// ---- raw reads

TEST(QLMMultiDelay, RawReadsAreWholeBlocksAsWrittenAcrossTheRingsEnd) {
  const Signal signal = noise(100);
  QLMMultiDelay delay;
  delay.resize(1000);
  bool same = true;
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    delay.writeBlock(&signal[at], n);
    for (size_t back = 0; back <= 968; back += 11) {
      const double* raw = delay.readRaw(static_cast<double>(back) + 0.9, n);
      for (size_t i = 0; i < kVectorLength; ++i) {
        const double wanted = at + i >= back ? signal[at + i - back] : 0.0;
        same = same && raw[i] == wanted;
      }
    }
  }
  EXPECT_TRUE(same);
}

TEST(QLMMultiDelay, RawReadsStayInsideTheRing) {
  const Signal signal = noise(100);
  QLMMultiDelay delay;
  delay.resize(1000);
  for (size_t at = 0; at < signal.size(); at += kVectorLength) delay.writeBlock(&signal[at], n);
  const double* limit = delay.readRaw(1000.0 - n, n);
  const Signal oldest(limit, limit + n);
  EXPECT_EQ(oldest, Signal(signal.end() - 1000, signal.end() - 1000 + n));
  for (const double asked : {1000.0, 1e12, static_cast<double>(INFINITY)}) {
    const double* raw = delay.readRaw(asked, n);
    EXPECT_EQ(Signal(raw, raw + n), oldest) << asked;
  }
  for (const double asked : {-5.0, static_cast<double>(NAN)}) {
    const double* raw = delay.readRaw(asked, n);
    EXPECT_EQ(Signal(raw, raw + n), Signal(signal.end() - n, signal.end())) << asked;
  }
}

// ---- modes and filters

TEST(QLMMultiDelay, ForwardRunsHighPassThenLowPassOverTheTap) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    QLMMultiDelay filtered, plain;
    filtered.setLowpass(3000.0 / rate);
    filtered.setHighpass(200.0 / rate);
    filtered.snapTapGlide();
    plain.snapTapGlide();
    Signal wanted = play(plain, noise(200), 1000.5);
    IppBiquad highpass(false, kHighpassFilter, 2), lowpass(false, kLowpassFilter, 2);
    highpass.setDirectFrequency(200.0 / rate);
    lowpass.setDirectFrequency(3000.0 / rate);
    for (size_t at = 0; at < wanted.size(); at += kVectorLength) {
      highpass.process(&wanted[at], nullptr);
      lowpass.process(&wanted[at], nullptr);
    }
    EXPECT_EQ(play(filtered, noise(200), 1000.5), wanted) << rate << " Hz";
  }
}

double gainDbAt(QLMMultiDelay& delay, double hz, double rate) {
  const double w = 2.0 * 3.14159265358979 * hz / rate;
  delay.reset();
  delay.snapTapGlide();
  const Signal out = play(delay, sine(600, w), 200.0);
  double power = 0.0;
  for (size_t i = 300 * kVectorLength; i < out.size(); ++i) power += out[i] * out[i];
  return 10.0 * std::log10(2.0 * power / (300.0 * kVectorLength));
}

TEST(QLMMultiDelay, TheEchoFiltersFallByTwentyFourDecibelsAnOctave) {
  const ScopedRate scope(48000.0);
  QLMMultiDelay low, high;
  low.setLowpass(500.0 / 48000.0);
  EXPECT_NEAR(gainDbAt(low, 50.0, 48000.0), 0.0, 0.3);
  EXPECT_NEAR(gainDbAt(low, 4000.0, 48000.0) - gainDbAt(low, 2000.0, 48000.0), -24.0, 1.5);
  high.setHighpass(4000.0 / 48000.0);
  EXPECT_NEAR(gainDbAt(high, 16000.0, 48000.0), 0.0, 0.5);
  EXPECT_NEAR(gainDbAt(high, 500.0, 48000.0) - gainDbAt(high, 1000.0, 48000.0), -24.0, 1.5);
}

TEST(QLMMultiDelay, AtTheEndsOfTheirRangeTheFiltersAreOff) {
  for (const double rate : {32000.0, 44100.0, 48000.0, 88200.0, 96000.0}) {
    const ScopedRate scope(rate);
    QLMMultiDelay plain;
    plain.snapTapGlide();
    const Signal wanted = play(plain, noise(100), 1000.5);
    for (const double lowpassHz : {20000.0, 21000.0}) {
      for (const double highpassHz : {20.0, 19.0}) {
        QLMMultiDelay delay;
        delay.setLowpass(lowpassHz / rate);
        delay.setHighpass(highpassHz / rate);
        delay.snapTapGlide();
        EXPECT_EQ(play(delay, noise(100), 1000.5), wanted) << lowpassHz << " at " << rate;
      }
    }
    QLMMultiDelay delay;
    delay.setLowpass(19999.0 / rate);
    delay.snapTapGlide();
    EXPECT_NE(play(delay, noise(100), 1000.5), wanted);
  }
}

TEST(QLMMultiDelay, TappedAndEveryHigherModeReadTapsWithoutFilters) {
  QLMMultiDelay plain;
  plain.snapTapGlide();
  const Signal wanted = play(plain, noise(100), 1000.5);
  for (const int mode : {3, 4, 17}) {
    QLMMultiDelay delay;
    delay.setLowpass(1000.0 / 44100.0);
    delay.setHighpass(900.0 / 44100.0);
    delay.setSecondary(mode);
    delay.snapTapGlide();
    EXPECT_EQ(play(delay, noise(100), 1000.5, 0), wanted) << "mode " << mode;
  }
}

TEST(QLMMultiDelay, BackwardAlwaysRunsTheLowPassAndNeverTheHighPass) {
  const Signal signal = noise(200);
  QLMMultiDelay delay;
  delay.setLowpass(20000.0 / 44100.0);
  delay.setHighpass(5000.0 / 44100.0);
  delay.setDelayMode(Mode::kBackward);
  const Signal out = play(delay, signal, 2000.0);

  DelayRing ring;
  ring.allocate(QLMMultiDelay::kFirstLength);
  ReverseReader reader;
  IppBiquad lowpass(false, kLowpassFilter, 2);
  lowpass.setDirectFrequency(20000.0 / 44100.0);
  Signal wanted(signal.size());
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    reader.read(ring, 2000.0, &wanted[at]);
    lowpass.process(&wanted[at], nullptr);
    ring.write(&signal[at], n);
  }
  EXPECT_EQ(out, wanted);
}

TEST(QLMMultiDelay, GrainRunsNoFilter) {
  const Signal signal = noise(400);
  QLMMultiDelay delay, filtered;
  for (QLMMultiDelay* each : {&delay, &filtered}) each->setDelayMode(Mode::kGrain);
  filtered.setLowpass(1000.0 / 44100.0);
  filtered.setHighpass(500.0 / 44100.0);
  EXPECT_EQ(play(delay, signal, 5000.0), play(filtered, signal, 5000.0));
}

TEST(QLMMultiDelay, AResetTakesGrainsBackToTheRingsStart) {
  const Signal signal = noise(300);
  QLMMultiDelay delay;
  delay.setDelayMode(Mode::kGrain);
  DelayRing ring;
  ring.allocate(QLMMultiDelay::kFirstLength);
  GrainReader reader;
  bool same = true;
  for (int turn = 0; turn < 2; ++turn) {
    delay.reset();
    ring.reset();
    reader.reset();
    for (size_t at = 0; at < signal.size(); at += kVectorLength) {
      double wanted[kVectorLength];
      reader.read(ring, {1.0, 44100.0 * 0.001 * 200.0, 0.0, 5000.0}, wanted);
      same = same && std::equal(wanted, wanted + n, delay.readTap(5000.0, n, 0));
      ring.write(&signal[at], n);
      delay.writeBlock(&signal[at], n);
    }
  }
  EXPECT_TRUE(same);
}

TEST(QLMMultiDelay, AChangeOfModeIsAJumpToSilence) {
  const Signal signal = noise(400);
  const Signal zeros(20 * kVectorLength, 0.0);
  QLMMultiDelay delay;
  delay.setLowpass(2000.0 / 44100.0);
  for (const int mode : {1, 2, 3, 0, 2, 1, 0, 3}) {
    delay.setDelayMode(mode);
    EXPECT_EQ(delay.delayMode(), mode);
    EXPECT_EQ(play(delay, zeros, 3000.0), zeros) << "mode " << mode;
    play(delay, signal, 3000.0);
  }
}

TEST(QLMMultiDelay, AResetIsSilenceInEveryMode) {
  const Signal signal = noise(500);
  const Signal zeros(400 * kVectorLength, 0.0);
  for (const int mode : {0, 1, 2, 3}) {
    QLMMultiDelay delay;
    delay.setLowpass(2000.0 / 44100.0);
    delay.setHighpass(100.0 / 44100.0);
    delay.setDelayMode(mode);
    play(delay, signal, 3000.25);
    delay.reset();
    EXPECT_EQ(play(delay, zeros, 3000.25), zeros) << "mode " << mode;
  }
}

// ---- modulation

struct Modulation {
  explicit Modulation(double value) { source.fill(value); }
  void connect(QLMMultiDelay& delay, DelayControl control) {
    delay.setModDepth(control, &depth);
    delay.setModSource(control, source.data());
  }
  std::array<double, kVectorLength> source{};
  double depth = 0.0;
};

TEST(QLMMultiDelay, OneModulatorMovesLeftAndRightApart) {
  for (const int mode : {0, 3}) {
    QLMMultiDelay left, right;
    right.setRightChannel();
    Modulation modulation(0.5);
    modulation.depth = 100.0;
    for (QLMMultiDelay* delay : {&left, &right}) {
      delay->setDelayMode(mode);
      modulation.connect(*delay, kDelayTimeControl);
      delay->snapTapGlide();
    }
    EXPECT_NEAR(lagOf(left, 2000.0), 2050.0, 1e-9);
    EXPECT_NEAR(lagOf(right, 2000.0), 1950.0, 1e-9);
  }
}

TEST(QLMMultiDelay, AChannelSetByTheConstructorIsTheSame) {
  QLMMultiDelay right(true);
  Modulation modulation(0.5);
  modulation.depth = 100.0;
  modulation.connect(right, kDelayTimeControl);
  right.snapTapGlide();
  EXPECT_NEAR(lagOf(right, 2000.0), 1950.0, 1e-9);
}

TEST(QLMMultiDelay, TheTapsTimeSourceActsInTappedAloneAndTakesTheOthersPlace) {
  for (const int mode : {0, 3}) {
    QLMMultiDelay right(true);
    right.setDelayMode(mode);
    Modulation time(1.0), taps(1.0);
    time.depth = 100.0;
    taps.depth = 0.01;  // seconds
    time.connect(right, kDelayTimeControl);
    taps.connect(right, kTapsTimeControl);
    right.snapTapGlide();
    EXPECT_NEAR(lagOf(right, 2000.0), mode == 3 ? 2441.0 : 1900.0, 1e-9) << "mode " << mode;
  }
}

TEST(QLMMultiDelay, ADepthIsReadAnewInEveryBlockAndASourceThatGoesLeavesNothing) {
  QLMMultiDelay delay;
  Modulation modulation(1.0);
  modulation.connect(delay, kDelayTimeControl);
  delay.snapTapGlide();
  EXPECT_NEAR(lagOf(delay, 2000.0), 2000.0, 1e-9);
  modulation.depth = 64.0;
  delay.snapTapGlide();
  EXPECT_NEAR(lagOf(delay, 2000.0), 2064.0, 1e-9);
  delay.setModSource(kDelayTimeControl, nullptr);
  delay.snapTapGlide();
  EXPECT_NEAR(lagOf(delay, 2000.0), 2000.0, 1e-9);
}

TEST(QLMMultiDelay, AModulatedTimeIsHeldWithinTheRing) {
  for (const double swing : {1e6, -1e6, static_cast<double>(NAN)}) {
    QLMMultiDelay delay;
    Modulation modulation(swing);
    modulation.depth = 1.0;
    modulation.connect(delay, kDelayTimeControl);
    delay.snapTapGlide();
    EXPECT_NEAR(lagOf(delay, 2000.0), swing > 0.0 ? 9999.0 : 44.1, 1e-5);
  }
}

/// Output in a mode of a delay that was set up by `setUp`.
template <class SetUp>
Signal playIn(Mode mode, SetUp setUp) {
  QLMMultiDelay delay;
  delay.setDelayMode(mode);
  setUp(delay);
  return play(delay, noise(1200, 8), 6000.0);
}

TEST(QLMMultiDelay, ModulationOfGrainsIsThatOfTheKnobWithinItsLimits) {
  struct Case {
    DelayControl control;
    double source, depth;
    void (QLMMultiDelay::*knob)(double) noexcept;
    double base, same;
  };
  const Case cases[] = {
      {kGrainPositionControl, 0.5, 0.5, &QLMMultiDelay::setGrainPosition, 0.25, 0.5},
      {kGrainPositionControl, 1.0, 5.0, &QLMMultiDelay::setGrainPosition, 0.25, 1.0},
      {kGrainPositionControl, -1.0, 5.0, &QLMMultiDelay::setGrainPosition, 0.25, 0.0},
      {kGrainSpeedControl, 1.0, 0.5, &QLMMultiDelay::setGrainSpeed, 0.25, 0.75},
      {kGrainSpeedControl, 1.0, 9.0, &QLMMultiDelay::setGrainSpeed, 0.25, 1.0},
      {kGrainSpeedControl, -1.0, 9.0, &QLMMultiDelay::setGrainSpeed, 0.25, -1.0},
      {kGrainSizeControl, 0.5, 0.25, &QLMMultiDelay::setGrainSize, 50.0, 100.0},
      {kGrainSizeControl, 1.0, 7.0, &QLMMultiDelay::setGrainSize, 50.0, 400.0},
      {kGrainSizeControl, -1.0, 7.0, &QLMMultiDelay::setGrainSize, 50.0, 1.0},
  };
  for (const Case& c : cases) {
    Modulation modulation(c.source);
    modulation.depth = c.depth;
    const Signal modulated = playIn(Mode::kGrain, [&](QLMMultiDelay& delay) {
      modulation.connect(delay, c.control);
      (delay.*c.knob)(c.base);
    });
    const Signal still =
        playIn(Mode::kGrain, [&](QLMMultiDelay& delay) { (delay.*c.knob)(c.same); });
    EXPECT_EQ(modulated, still) << "control " << c.control << " to " << c.same;
    const Signal released = playIn(Mode::kGrain, [&](QLMMultiDelay& delay) {
      modulation.connect(delay, c.control);
      (delay.*c.knob)(c.base);
      delay.readTap(6000.0, n, 0);
      delay.setModSource(c.control, nullptr);
      delay.resize(QLMMultiDelay::kFirstLength);
    });
    const Signal knob =
        playIn(Mode::kGrain, [&](QLMMultiDelay& delay) { (delay.*c.knob)(c.base); });
    EXPECT_EQ(released, knob) << "a source that goes leaves the knob, control " << c.control;
  }
}

TEST(QLMMultiDelay, ASpeedThatOnlyTheKnobSetsIsNotLimited) {
  const Signal limited = playIn(Mode::kGrain, [](auto& delay) { delay.setGrainSpeed(1.0); });
  const Signal faster = playIn(Mode::kGrain, [](auto& delay) { delay.setGrainSpeed(1.5); });
  EXPECT_NE(limited, faster);
}

TEST(QLMMultiDelay, TheGrainPositionShortensReverseCyclesByASquareLaw) {
  for (const double position : {0.0, 0.5, 1.0}) {
    const Signal shortened = playIn(Mode::kBackward, [&](QLMMultiDelay& delay) {
      delay.setReverseFade(1.0);
      delay.setGrainPosition(position);
    });
    QLMMultiDelay straight;
    straight.setDelayMode(Mode::kBackward);
    straight.setReverseFade(1.0);
    const double share = (1.0 - position) * (1.0 - position);
    const double cycle = (6000.0 - 44.1) * share + 44.1;
    EXPECT_EQ(shortened, play(straight, noise(1200, 8), cycle)) << position;
  }
}

TEST(QLMMultiDelay, ATriggerIsKeptThroughOtherModes) {
  const Signal signal = noise(400);
  QLMMultiDelay early, late, never;
  early.triggerReverse();
  for (QLMMultiDelay* delay : {&early, &late, &never}) {
    delay->setLowpass(20000.0 / 44100.0);
    delay->setReverseFade(1.0);
    play(*delay, signal, 3000.0);
    delay->setDelayMode(Mode::kBackward);
    for (size_t at = 0; at < 100 * kVectorLength; at += n) delay->writeBlock(&signal[at], n);
  }
  late.triggerReverse();
  const Signal restarted = play(late, signal, 8000.0);
  EXPECT_EQ(play(early, signal, 8000.0), restarted);
  EXPECT_NE(play(never, signal, 8000.0), restarted);
}

// ---- many reads

TEST(QLMMultiDelay, ReadingTapsTogetherIsReadingThemInTurn) {
  for (const int mode : {0, 2, 3}) {
    QLMMultiDelay together, apart;
    Modulation modulation(0.3);
    modulation.depth = 0.003;
    for (QLMMultiDelay* delay : {&together, &apart}) {
      delay->setDelayMode(mode);
      delay->setLowpass(4000.0 / 44100.0);
      modulation.connect(*delay, kTapsTimeControl);
      delay->snapTapGlide();
    }
    const Signal signal = noise(800);
    bool same = true;
    for (size_t block = 0; block < 800; ++block) {
      std::array<QLMMultiDelay::TapRead, 16> reads;
      const int count = 1 + static_cast<int>(block % 16);
      for (int k = 0; k < count; ++k) reads[static_cast<size_t>(k)] = {100.7 + 500.0 * k, k};
      together.readTaps(reads.data(), count, n);
      for (int k = 0; k < count; ++k) {
        const double* single = apart.readTap(100.7 + 500.0 * k, n, k);
        same = same && std::equal(single, single + n, reads[static_cast<size_t>(k)].samples);
      }
      together.writeBlock(&signal[block * n], n);
      apart.writeBlock(&signal[block * n], n);
    }
    EXPECT_TRUE(same) << "mode " << mode;
  }
}

TEST(QLMMultiDelay, ReadingAPairIsReadingTwo) {
  for (const int mode : {0, 1, 2, 3}) {
    QLMMultiDelay left, right(true), leftAlone, rightAlone(true);
    Modulation modulation(0.7);
    modulation.depth = 50.0;
    for (QLMMultiDelay* delay : {&left, &right, &leftAlone, &rightAlone}) {
      delay->setDelayMode(mode);
      delay->setLowpass(4000.0 / 44100.0);
      delay->setHighpass(150.0 / 44100.0);
      modulation.connect(*delay, kDelayTimeControl);
      delay->snapTapGlide();
    }
    const Signal signal = noise(801);
    bool same = true;
    for (size_t block = 0; block < 800; ++block) {
      const double time = block < 400 ? 2000.0 : 3500.5;
      QLMMultiDelay::readTapPair(left, time, right, 900.25, n);
      const double* aloneL = leftAlone.readTap(time, n, 0);
      const double* aloneR = rightAlone.readTap(900.25, n, 0);
      same = same && std::equal(aloneL, aloneL + n, left.result());
      same = same && std::equal(aloneR, aloneR + n, right.result());
      for (QLMMultiDelay* delay : {&left, &leftAlone}) delay->writeBlock(&signal[block * n], n);
      for (QLMMultiDelay* delay : {&right, &rightAlone}) {
        delay->writeBlock(&signal[block * n + 32], n);
      }
    }
    EXPECT_TRUE(same) << "mode " << mode;
  }
}

// ---- rate, safety

TEST(QLMMultiDelay, ARateChangeMakesItLikeNewWithTheSameSettings) {
  const Signal signal = noise(700);
  const auto settle = [](QLMMultiDelay& delay, int mode) {
    delay.setDelayMode(mode);
    delay.setGrainSize(33.0);
    delay.setGrainSpeed(0.3);
    delay.setGrainPosition(0.2);
    delay.setGrainFade(4.0);
    delay.setReverseFade(7.0);
    delay.setReverseMod(12.5);
  };
  for (const int mode : {0, 1, 2, 3}) {
    const ScopedRate scope(44100.0);
    QLMMultiDelay used;
    settle(used, mode);
    play(used, signal, 5000.5);
    setRateValues(96000.0);
    used.resize(maxDelay);
    QLMMultiDelay fresh;
    fresh.resize(maxDelay);
    settle(fresh, mode);
    for (QLMMultiDelay* delay : {&used, &fresh}) {
      delay->setLowpass(3000.0 / 96000.0);
      delay->setHighpass(100.0 / 96000.0);
    }
    EXPECT_EQ(play(used, signal, 5000.5), play(fresh, signal, 5000.5)) << "mode " << mode;
  }
}

TEST(QLMMultiDelay, NothingThatIsNotFiniteComesBackInAnyMode) {
  std::mt19937 engine(11);
  for (const int mode : {0, 1, 2, 3}) {
    QLMMultiDelay delay;
    delay.setDelayMode(mode);
    delay.setLowpass(9000.0 / 44100.0);
    bool sane = true;
    for (int block = 0; block < 2000; ++block) {
      Signal bad(kVectorLength, 0.1);
      const double odd[] = {NAN, INFINITY, -INFINITY, 1e300, -1e12, 1e8, -1e8};
      for (double& x : bad) x = engine() % 4 == 0 ? odd[engine() % 7] : x;
      const double* out = delay.readTap(100.0 + static_cast<double>(engine() % 9000), n, 0);
      sane = sane && std::all_of(out, out + n, [](double x) { return std::fabs(x) <= 1e8; });
      delay.writeBlock(bad.data(), n);
    }
    EXPECT_TRUE(sane) << "mode " << mode;
  }
}

TEST(QLMMultiDelay, AReadThatRunsAwayIsSilentAndLeavesNothing) {
  QLMMultiDelay delay;
  delay.setDelayMode(Mode::kTapped);
  delay.snapTapGlide();
  Signal loud(kVectorLength);
  for (size_t i = 0; i < loud.size(); ++i) loud[i] = i % 4 < 2 ? 1e8 : -1e8;
  play(delay, loud, 100.5);
  play(delay, Signal(3 * kVectorLength, 0.0), 100.5);  // comes out beyond the limit here
  const Signal zeros(100 * kVectorLength, 0.0);
  EXPECT_EQ(play(delay, zeros, 100.5), zeros);
}

TEST(QLMMultiDelay, ModesSwitchedAtRandomStayFinite) {
  std::mt19937 engine(21);
  const Signal signal = noise(500);
  QLMMultiDelay delay;
  bool sane = true;
  for (int block = 0; block < 20000; ++block) {
    if (engine() % 50 == 0) delay.setDelayMode(static_cast<int>(engine() % 5));
    if (engine() % 90 == 0) delay.setGrainSpeed(0.001 * static_cast<double>(engine() % 2000) - 1.0);
    if (engine() % 90 == 0) delay.setGrainSize(1.0 + static_cast<double>(engine() % 400));
    if (engine() % 90 == 0) delay.setGrainPosition(0.01 * static_cast<double>(engine() % 101));
    if (engine() % 90 == 0) delay.setReverseMod(static_cast<double>(engine() % 20000));
    if (engine() % 90 == 0) delay.setReverseFade(static_cast<double>(engine() % 1000));
    if (engine() % 20 == 0) delay.triggerReverse();
    if (engine() % 60 == 0) delay.snapTapGlide();
    const int tap = static_cast<int>(engine() % 16);
    const double* out = delay.readTap(static_cast<double>(engine() % 12000), n, tap);
    sane = sane && std::all_of(out, out + n, [](double x) { return std::fabs(x) < 1e6; });
    delay.writeBlock(&signal[engine() % 480 * kVectorLength], n);
  }
  EXPECT_TRUE(sane);
}

}  // namespace
}  // namespace orvantesco
