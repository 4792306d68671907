#include <gtest/gtest.h>

#include "master/EQ_ST.h"
#include "master/EqModel.h"

namespace orvantesco {
namespace {

using testing_support::kEngineRates;
using testing_support::kInfinity;
using testing_support::kNaN;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::PlainEq;
using testing_support::runStereo;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::Stereo;
using testing_support::stereoNoise;

constexpr int kForms[] = {EQ_M::kFixEq, EQ_M::kTwoBandEq, EQ_M::kShelfEq};
constexpr double kLn10Over20 = 0.1151292546497;

double shelf(double db) { return std::exp(db * 0.5 * kLn10Over20); }
double peak(double db) { return db / 36.0 + 0.5; }

/// The four parameters of a form, for two gains in dB and two frequencies.
std::array<double, 4> settingsOf(int form, double dbA, double dbB, double hzA, double hzB) {
  if (form == EQ_M::kFixEq) return {shelf(dbA), hzA, peak(dbB), shelf(-dbA)};
  if (form == EQ_M::kTwoBandEq) return {peak(dbA), hzA, peak(dbB), hzB};
  return {shelf(dbA), hzA, shelf(dbB), hzB};
}

template <class Eq>
void take(Eq& eq, const std::array<double, 4>& settings) {
  for (int i = 0; i < 4; ++i) eq.setParam(i, settings[static_cast<size_t>(i)]);
}

Signal impulseAnswer(EQ_M& eq) {
  testing_support::run(eq, Signal(4000 * kVectorLength, 0.0));  // the controls come to rest
  return testing_support::run(eq, testing_support::impulse(2000));
}

double responseDb(const Signal& answer, double hz) {
  std::complex<double> sum = 0.0;
  for (size_t n = 0; n < answer.size(); ++n) {
    sum += answer[n] *
           std::polar(1.0, -2.0 * std::numbers::pi * hz * static_cast<double>(n) / sampleRate);
  }
  return 20.0 * std::log10(std::abs(sum));
}

TEST(EQ_M, IsItsModelInEveryFormAtEveryRate) {
  for (double rate : kEngineRates) {
    ScopedRate scope(rate);
    for (int form : kForms) {
      EQ_M eq(form);
      PlainEq model(form);
      Signal in = testing_support::noise(300, 7);
      Signal out(in.size()), expected(in.size());
      for (size_t vector = 0; vector < 300; ++vector) {
        if (vector == 0) take(eq, settingsOf(form, 9, -12, 700, 6000));
        if (vector == 0) take(model, settingsOf(form, 9, -12, 700, 6000));
        if (vector == 120) take(eq, settingsOf(form, -18, 18, 5000, 12000));
        if (vector == 120) take(model, settingsOf(form, -18, 18, 5000, 12000));
        const size_t first = vector * kVectorLength;
        eq.process(&in[first], &out[first]);
        for (size_t i = first; i < first + kVectorLength; ++i) expected[i] = model.tick(in[i]);
      }
      double scale = 1.0;
      for (double y : expected) scale = std::max(scale, std::fabs(y));
      EXPECT_LT(largestDifference(out, expected) / scale, 1e-12) << form << " at " << rate;
    }
  }
}

TEST(EQ_M, HasTheResponseOfItsFormulas) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int form : kForms) {
      EQ_M eq(form);
      PlainEq model(form);
      take(eq, settingsOf(form, 12, -9, 900, 4000));
      take(model, settingsOf(form, 12, -9, 900, 4000));
      const Signal answer = impulseAnswer(eq);
      for (double hz = 25.0; hz < 20000.0; hz *= 1.5) {
        EXPECT_NEAR(responseDb(answer, hz), model.responseDb(hz), 1e-4) << form << " " << hz;
      }
    }
  }
}

TEST(EQ_M, PeaksReachTheirGainAtTheirFrequency) {
  for (double db : {-18.0, -6.0, 6.0, 18.0}) {
    EQ_M two(EQ_M::kTwoBandEq);
    take(two, {peak(db), 2000.0, peak(0.0), 9000.0});
    EXPECT_NEAR(responseDb(impulseAnswer(two), 2000.0), db, 0.01);
    EQ_M fixed(EQ_M::kFixEq);
    take(fixed, {shelf(0.0), 3000.0, peak(db), shelf(0.0)});
    EXPECT_NEAR(responseDb(impulseAnswer(fixed), 3000.0), db, 0.01);
  }
}

TEST(EQ_M, ShelvesReachTheirGainFarOutAndHalfOfItAtTheCorner) {
  for (double db : {-18.0, 6.0, 18.0}) {
    EQ_M eq(EQ_M::kShelfEq);
    take(eq, {shelf(db), 300.0, shelf(-db), 6000.0});
    const Signal answer = impulseAnswer(eq);
    EXPECT_NEAR(responseDb(answer, 1.0), db, 0.05);
    EXPECT_NEAR(responseDb(answer, 300.0), db / 2, 0.35);
    EXPECT_NEAR(responseDb(answer, 6000.0), -db / 2, 0.35);
    EXPECT_NEAR(responseDb(answer, 22000.0), -db, 0.05);
  }
}

TEST(EQ_M, FixedShelvesStandAt500And3000Hz) {
  EQ_M eq(EQ_M::kFixEq);
  take(eq, {shelf(12.0), 1000.0, peak(0.0), shelf(-12.0)});
  const Signal answer = impulseAnswer(eq);
  EXPECT_NEAR(responseDb(answer, 2.0), 12.0, 0.05);
  EXPECT_NEAR(responseDb(answer, 22000.0), -12.0, 0.05);
  EXPECT_NEAR(responseDb(answer, 500.0), 6.0, 0.6);
  EXPECT_NEAR(responseDb(answer, 3000.0), -6.0, 0.6);
}

TEST(EQ_M, PassesTheSignalWhereAllGainsAreZeroDb) {
  for (int form : kForms) {
    EQ_M eq(form);
    take(eq, settingsOf(form, 0, 0, 500, 3000));
    testing_support::run(eq, Signal(400 * kVectorLength, 0.0));
    const Signal in = testing_support::noise(100);
    EXPECT_LT(largestDifference(testing_support::run(eq, in), in), 1e-12) << form;
  }
}

/// The last magnitude that an equaliser gives of full scale at 0 Hz after some vectors.
double heldAfter(EQ_M& eq, int vectors) {
  return std::fabs(testing_support::run(eq, Signal(vectors * kVectorLength, 1.0)).back());
}

TEST(EQ_M, ATurnedGainArrivesInTenMilliseconds) {
  for (double rate : kEngineRates) {
    ScopedRate scope(rate);
    EQ_M eq(EQ_M::kShelfEq);
    take(eq, {shelf(0.0), 1000.0, shelf(0.0), 7500.0});
    const auto vectorsIn = [&](double ms) { return static_cast<int>(ms * rate / 32000.0); };
    EXPECT_NEAR(heldAfter(eq, vectorsIn(500.0)), 1.0, 1e-6);
    eq.setParam(0, shelf(18.0));
    EXPECT_LT(heldAfter(eq, vectorsIn(3.0)), 0.9 * std::pow(10.0, 0.9)) << rate;
    EXPECT_NEAR(heldAfter(eq, vectorsIn(8.0)), std::pow(10.0, 0.9), 0.15) << rate;
  }
}

TEST(EQ_M, ATurnedFrequencyArrivesIn64Milliseconds) {
  for (double rate : kEngineRates) {
    ScopedRate scope(rate);
    EQ_M eq(EQ_M::kTwoBandEq);
    take(eq, {peak(18.0), 200.0, peak(0.0), 200.0});
    const auto vectorsIn = [&](double ms) { return static_cast<int>(ms * rate / 32000.0); };
    testing_support::run(eq, Signal(vectorsIn(500.0) * kVectorLength, 0.0));
    eq.setParam(1, 4000.0);
    Signal tone(vectorsIn(200.0) * kVectorLength);
    for (size_t n = 0; n < tone.size(); ++n) {
      tone[n] = std::sin(2.0 * std::numbers::pi * 4000.0 / rate * static_cast<double>(n));
    }
    const Signal out = testing_support::run(eq, tone);
    const auto peakFrom = [&](double ms) {
      const auto first = out.begin() + static_cast<long>(ms * 0.001 * rate);
      return testing_support::peakOf({first, first + static_cast<long>(0.004 * rate)});
    };
    EXPECT_LT(peakFrom(4.0), 0.8 * peakFrom(190.0)) << rate;
    EXPECT_NEAR(peakFrom(64.0), peakFrom(190.0), 0.02) << rate;
  }
}

TEST(EQ_M, ANewOneComesUpFromBelowItsGain) {
  EQ_M eq(EQ_M::kShelfEq);
  take(eq, {shelf(0.0), 1000.0, shelf(0.0), 250.0});
  const Signal out = testing_support::run(eq, Signal(600 * kVectorLength, 1.0));
  // Both shelves: the high one, whose corner has hardly left 0 Hz, takes a part as well.
  EXPECT_LT(out.front(), 0.4);
  EXPECT_NEAR(out.back(), 1.0, 1e-6);
  eq.reset();
  EXPECT_NEAR(heldAfter(eq, 1), 1.0, 1e-6);
}

TEST(EQ_M, StaysStableWithItsHighestCornersAtEveryRate) {
  for (double rate : {32000.0, 44100.0, 96000.0}) {
    ScopedRate scope(rate);
    for (int form : kForms) {
      for (double db : {-18.0, 18.0}) {
        EQ_M eq(form);
        take(eq, settingsOf(form, db, db, 20000, 20000));
        const Signal out = testing_support::run(eq, testing_support::noise(3000));
        EXPECT_LT(testing_support::peakOf(out), 200.0) << form << " " << db << " at " << rate;
        const Signal tail = testing_support::run(eq, Signal(3000 * kVectorLength, 0.0));
        EXPECT_LT(testing_support::peakOf({tail.end() - 320, tail.end()}), 1e-9);
      }
    }
  }
}

TEST(EQ_M, IgnoresWhatIsNoParameterOrNoNumber) {
  EQ_M eq(EQ_M::kFixEq), same(EQ_M::kFixEq);
  for (EQ_M* each : {&eq, &same}) take(*each, settingsOf(EQ_M::kFixEq, 6, 6, 900, 0));
  for (int index : {-1, 4, 100}) eq.setParam(index, 3.0);
  for (int index = 0; index < 4; ++index) eq.setParam(index, kNaN);
  for (int index = 0; index < 4; ++index) eq.setParam(index, kInfinity);
  const Signal in = testing_support::noise(50);
  EXPECT_EQ(testing_support::run(eq, in), testing_support::run(same, in));
}

TEST(EQ_ST, TreatsBothChannelsAlikeAndKeepsThemApart) {
  for (int form : kForms) {
    EQ_ST both(form);
    EQ_M left(form), right(form);
    const auto settings = settingsOf(form, 12, -12, 800, 5000);
    take(both, settings);
    take(left, settings);
    take(right, settings);
    const Stereo in = stereoNoise(100, 0.5);
    const Stereo out = runStereo(both, in);
    EXPECT_EQ(out.left, testing_support::run(left, in.left)) << form;
    EXPECT_EQ(out.right, testing_support::run(right, in.right)) << form;
  }
}

TEST(EQ_ST, GivesTheSameBitsInPlaceAndOnOneChannel) {
  const auto settings = settingsOf(EQ_M::kShelfEq, 6, -6, 300, 4000);
  EQ_ST outOfPlace(EQ_M::kShelfEq), inPlace(EQ_M::kShelfEq), mono(EQ_M::kShelfEq);
  for (EQ_ST* each : {&outOfPlace, &inPlace, &mono}) take(*each, settings);
  Stereo signal = stereoNoise(60, 0.5);
  const Stereo expected = runStereo(outOfPlace, signal);
  EXPECT_EQ(testing_support::run(mono, signal.left), expected.left);
  for (size_t at = 0; at < signal.left.size(); at += kVectorLength) {
    inPlace.process(&signal.left[at], &signal.right[at], nullptr, nullptr);
  }
  EXPECT_EQ(signal.left, expected.left);
  EXPECT_EQ(signal.right, expected.right);
}

TEST(EQ_ST, IsAsNewAfterAChangeOfRate) {
  for (int form : kForms) {
    const auto settings = settingsOf(form, 12, -12, 800, 5000);
    EQ_ST used(form);
    take(used, settings);
    runStereo(used, stereoNoise(77, 0.9));
    ScopedRate scope(96000.0);
    used.rateChanged();
    used.reset();
    EQ_ST fresh(form);
    take(fresh, settings);
    const Stereo in = stereoNoise(100, 0.5, 3);
    EXPECT_EQ(largestDifference(runStereo(used, in), runStereo(fresh, in)), 0.0) << form;
  }
}

TEST(EQ_ST, ResetLeavesNoTailAndBypassWritesNothing) {
  EQ_ST eq(EQ_M::kFixEq);
  take(eq, settingsOf(EQ_M::kFixEq, 18, 18, 500, 0));
  runStereo(eq, stereoNoise(50, 0.9));
  eq.reset();
  const Stereo tail = runStereo(eq, {Signal(320, 0.0), Signal(320, 0.0)});
  EXPECT_EQ(testing_support::peakOf(tail.left), 0.0);
  EXPECT_EQ(testing_support::peakOf(tail.right), 0.0);
  eq.setBypass(true);
  const Stereo in = stereoNoise(10, 0.5);
  EXPECT_EQ(testing_support::peakOf(runStereo(eq, in).left), 0.0);
}

TEST(EQ_ST, IsFiniteAgainAfterWhatIsNoNumber) {
  for (int form : kForms) {
    for (double bad : {kNaN, kInfinity, 1e300, 1e6}) {
      EQ_ST eq(form);
      take(eq, settingsOf(form, 18, 18, 500, 3000));
      Stereo in = stereoNoise(200, 0.5);
      in.left[40] = bad;
      in.right[200] = -bad;
      const Stereo out = runStereo(eq, in);
      EXPECT_TRUE(testing_support::allFinite(out.left)) << form;
      EXPECT_TRUE(testing_support::allFinite(out.right)) << form;
      EXPECT_LT(testing_support::peakOf(out.left), 1e8);
      EXPECT_GT(testing_support::peakOf({out.left.end() - 320, out.left.end()}), 0.01);
    }
  }
}

}  // namespace
}  // namespace orvantesco
