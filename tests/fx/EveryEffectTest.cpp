// What holds for every effect of the catalogue, whatever it does to the sound.

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <memory>

#include "FxTestSupport.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"

namespace orvantesco {
namespace {

using testing_support::largestDifference;
using testing_support::noise;
using testing_support::run;
using testing_support::ScopedRate;
using testing_support::Signal;

using Knobs = std::array<double, kFxParamCount>;

std::vector<int> everyTypeId() {
  std::vector<int> ids;
  for (int id = 1; id < kFirstMasterEffect; ++id) {
    if (effectRecord(id).build.kind != EffectClass::none) ids.push_back(id);
  }
  for (int id = kLastMasterEffect + 1; id < 64; ++id) {
    if (effectRecord(id).build.kind != EffectClass::none) ids.push_back(id);
  }
  return ids;
}

Knobs defaultKnobs(int typeId) {
  Knobs knobs{};
  for (int k = 0; k < kFxParamCount; ++k) {
    knobs[static_cast<size_t>(k)] = fxParameter(typeId, k).initial;
  }
  return knobs;
}

void turn(DSPShell& effect, int typeId, int k, double position) {
  double control = 0.0;
  fxParamScale(typeId, k, &position, &control);
  effect.setParam(k, control);
}

/// As a slot gets it: its knobs are set, then it is switched on, which resets it.
std::shared_ptr<DSPShell> build(int typeId, bool isRight, const Knobs& knobs) {
  auto effect = createEffect(typeId, isRight, nullptr);
  for (int k = 0; k < kFxParamCount; ++k) {
    turn(*effect, typeId, k, knobs[static_cast<size_t>(k)]);
  }
  effect->setBypass(false);
  return effect;
}

bool isFinite(const Signal& signal) {
  return std::all_of(signal.begin(), signal.end(), [](double x) { return std::isfinite(x); });
}

double peak(const Signal& signal) {
  double largest = 0.0;
  for (const double x : signal) largest = std::max(largest, std::fabs(x));
  return largest;
}

struct Input {
  const char* name;
  Signal samples;
};

/// What a slot may be fed with, from nothing to what never should come.
std::vector<Input> inputs(int vectors) {
  const auto length = static_cast<size_t>(vectors) * kVectorLength;
  Signal square(length), spike(length, 0.0), faulty = noise(vectors, 4);
  for (size_t i = 0; i < length; ++i) square[i] = i / 50 % 2 == 0 ? 1.0 : -1.0;
  spike[40] = 1e6;
  for (size_t i = 64; i < 96; ++i) faulty[i] = std::numeric_limits<double>::quiet_NaN();
  faulty[130] = std::numeric_limits<double>::infinity();
  return {{"silence", Signal(length, 0.0)},   {"noise", noise(vectors, 3)},
          {"an offset", Signal(length, 1.0)}, {"a square", square},
          {"a spike of a million", spike},    {"what is no number", faulty}};
}

/// Without its sources it hears noise as ever. Silence is finite too: an effect that went on
/// dropping every vector would pass for a healthy one.
void expectItSoundsOnItsOwn(DSPShell& effect, const std::string& after) {
  for (int k = 0; k < kFxParamCount; ++k) effect.setModSource(k, nullptr);
  // Longer than the longest delay of an effect.
  static const Signal before = noise(200, 21), now = noise(20, 22);
  run(effect, before);
  const Signal heard = run(effect, now);
  EXPECT_TRUE(isFinite(heard)) << after;
  EXPECT_GT(peak(heard), 1e-9) << after;  // a low-pass at 50 Hz leaves little of it
}

class EveryEffect : public testing::TestWithParam<int> {
 protected:
  int typeId() const { return GetParam(); }
};

std::string testName(const testing::TestParamInfo<int>& info) {
  std::string name = std::to_string(info.param) + "_";
  for (const char* c = effectRecord(info.param).menuName; *c != '\0'; ++c) {
    if (std::isalnum(static_cast<unsigned char>(*c)) != 0) name += *c;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Types, EveryEffect, testing::ValuesIn(everyTypeId()), testName);

TEST_P(EveryEffect, CanBeBuiltForBothChannels) {
  EXPECT_TRUE(effectExists(typeId()));
  EXPECT_NE(createEffect(typeId(), false, nullptr), nullptr);
  EXPECT_NE(createEffect(typeId(), true, nullptr), nullptr);
}

TEST_P(EveryEffect, StaysFiniteWithEveryKnobAtItsEndsAndInTheMiddle) {
  const std::vector<Input> signals = inputs(24);
  for (const bool isRight : {false, true}) {
    for (int k = 0; k < kFxParamCount; ++k) {
      for (const double position : {0.0, 0.5, 1.0}) {
        Knobs knobs = defaultKnobs(typeId());
        knobs[static_cast<size_t>(k)] = position;
        for (const Input& input : signals) {
          const auto effect = build(typeId(), isRight, knobs);
          EXPECT_TRUE(isFinite(run(*effect, input.samples)))
              << input.name << ", knob " << k << " at " << position;
          expectItSoundsOnItsOwn(*effect, input.name);
        }
      }
    }
  }
}

TEST_P(EveryEffect, StaysFiniteInEveryCornerOfItsKnobs) {
  const Signal input = noise(64, 5);
  for (unsigned corner = 0; corner < 1u << kFxParamCount; ++corner) {
    Knobs knobs{};
    for (unsigned k = 0; k < kFxParamCount; ++k) knobs[k] = (corner >> k) & 1u;
    const auto effect = build(typeId(), false, knobs);
    const Signal output = run(*effect, input);
    EXPECT_TRUE(isFinite(output)) << corner;
    EXPECT_LT(peak(output), 1e4) << corner;
  }
}

TEST_P(EveryEffect, StaysFiniteWhileKnobsSweepWithEveryVector) {
  for (int k = 0; k < kFxParamCount; ++k) {
    for (const Input& input : inputs(128)) {
      const auto effect = build(typeId(), false, defaultKnobs(typeId()));
      Signal output(input.samples.size());
      Signal in = input.samples;
      for (size_t at = 0; at < in.size(); at += kVectorLength) {
        turn(*effect, typeId(), k, 0.5 - 0.5 * std::cos(static_cast<double>(at) * 0.003));
        effect->process(&in[at], &output[at]);
      }
      EXPECT_TRUE(isFinite(output)) << input.name << ", knob " << k;
      expectItSoundsOnItsOwn(*effect, input.name);
    }
  }
}

TEST_P(EveryEffect, StaysFiniteUnderFullModulationByNoise) {
  const double depth = 1.0;
  for (const Input& input : inputs(128)) {
    const auto effect = build(typeId(), false, defaultKnobs(typeId()));
    const Signal modulation = noise(128, 6);
    double modulator[kVectorLength];
    for (int k = 0; k < kFxParamCount; ++k) {
      effect->setModSource(k, modulator);
      effect->setModDepth(k, &depth);
    }
    Signal in = input.samples, output(in.size());
    for (size_t at = 0; at < in.size(); at += kVectorLength) {
      std::copy_n(&modulation[at], kVectorLength, modulator);
      effect->process(&in[at], &output[at]);
    }
    EXPECT_TRUE(isFinite(output)) << input.name;
    expectItSoundsOnItsOwn(*effect, input.name);
  }
}

TEST_P(EveryEffect, SoundsAgainAfterWhatIsNoNumberHasLeft) {
  const auto effect = build(typeId(), false, defaultKnobs(typeId()));
  for (const double fault : {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), 1e300, 1e6}) {
    run(*effect, Signal(kVectorLength, fault));
    run(*effect, Signal(static_cast<size_t>(kVectorLength) * 3000, 0.0));
    const double level = peak(run(*effect, noise(100, 7)));
    EXPECT_GT(level, 1e-3) << fault;
    EXPECT_LT(level, 100.0) << fault;
  }
}

TEST_P(EveryEffect, WorksInPlaceAsItDoesFromOneVectorToAnother) {
  const auto apart = build(typeId(), false, defaultKnobs(typeId()));
  const auto inPlace = build(typeId(), false, defaultKnobs(typeId()));
  const Signal wanted = run(*apart, noise(40, 8));
  Signal signal = noise(40, 8);
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    inPlace->process(&signal[at], nullptr);
  }
  EXPECT_EQ(largestDifference(signal, wanted), 0.0);
}

TEST_P(EveryEffect, LeavesItsInputAsItIs) {
  const auto effect = build(typeId(), false, defaultKnobs(typeId()));
  const Signal before = noise(40, 8);
  Signal in = before, out(in.size());
  for (size_t at = 0; at < in.size(); at += kVectorLength) effect->process(&in[at], &out[at]);
  EXPECT_TRUE(in == before);
}

TEST_P(EveryEffect, IsAsNewAfterAChangeOfRate) {
  const Knobs knobs = defaultKnobs(typeId());
  for (const bool isRight : {false, true}) {
    for (const double rate : {22050.0, 96000.0, 192000.0}) {
      const auto travelled = build(typeId(), isRight, knobs);
      run(*travelled, noise(300, 9));
      const ScopedRate scoped(rate);
      travelled->rateChanged();
      travelled->reset();
      const auto fresh = build(typeId(), isRight, knobs);
      EXPECT_EQ(largestDifference(run(*travelled, noise(100, 10)), run(*fresh, noise(100, 10))),
                0.0)
          << rate << " Hz";
    }
  }
}

TEST_P(EveryEffect, StaysFiniteAtEveryRate) {
  for (const double rate : {8000.0, 32000.0, 192000.0, 768000.0}) {
    const ScopedRate scoped(rate);
    for (const double position : {0.0, 1.0}) {
      Knobs knobs{};
      knobs.fill(position);
      const auto effect = build(typeId(), true, knobs);
      EXPECT_TRUE(isFinite(run(*effect, noise(100, 11)))) << rate << " Hz, knobs at " << position;
    }
  }
}

/// How many samples of silence pass after a reset until an effect is silent: the curves join the
/// first one to what came before, and the filters behind a drive ring with that.
size_t samplesToSilence(int typeId) {
  switch (typeId) {
    case 6:
    case 14:
    case 15:
    case 16:
    case 17:
      return 1;
    case 56:
      return 9600;
    default:
      return 0;
  }
}

TEST_P(EveryEffect, FallsSilentAfterBypass) {
  const auto effect = build(typeId(), false, defaultKnobs(typeId()));
  run(*effect, noise(3000, 12));
  effect->setBypass(true);
  effect->setBypass(false);
  const Signal tail = run(*effect, Signal(static_cast<size_t>(kVectorLength) * 400, 0.0));
  const auto first = static_cast<std::ptrdiff_t>(samplesToSilence(typeId()));
  EXPECT_LT(peak(Signal(tail.begin() + first, tail.end())), 1e-6);
}

/// What a slot that was switched off has heard must not sound when it is switched on again.
TEST_P(EveryEffect, IsSilentAtOnceWhenItsStateIsCleared) {
  const Signal sound = noise(3000, 12);
  std::vector<Knobs> settings{defaultKnobs(typeId())};
  for (const double position : {0.4, 0.6, 0.9}) {
    settings.emplace_back().fill(position);
  }
  for (const Knobs& knobs : settings) {
    const auto effect = build(typeId(), false, knobs);
    run(*effect, sound);
    effect->clearState();
    const Signal tail = run(*effect, Signal(static_cast<size_t>(kVectorLength) * 100, 0.0));
    EXPECT_LT(peak(tail), 1e-6) << "knobs at " << knobs[0];
  }
}

TEST_P(EveryEffect, HasLostItsSourcesWhenPrepared) {
  const auto driven = build(typeId(), false, defaultKnobs(typeId()));
  const auto plain = build(typeId(), false, defaultKnobs(typeId()));
  const double depth = -0.3;
  double source[kVectorLength];
  std::fill_n(source, kVectorLength, 1.0);
  for (int k = 0; k < kFxParamCount; ++k) {
    driven->setModSource(k, source);
    driven->setModDepth(k, &depth);
  }
  driven->prepare();
  plain->prepare();
  EXPECT_EQ(largestDifference(run(*driven, noise(100, 13)), run(*plain, noise(100, 13))), 0.0);
}

}  // namespace
}  // namespace orvantesco
