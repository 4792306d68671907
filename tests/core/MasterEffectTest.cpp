// The master effect within the engine: choice, knobs, bypass, level, and slots that listen to it.

#include <gtest/gtest.h>

#include "core/MasterEffectScale.h"
#include "fx/RateValues.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr double kKnobs[] = {35.0, 20.0, 60.0, 45.0};
constexpr double kRates[] = {44100.0, 48000.0, 96000.0};

void append(const StereoVector& vector, StereoBuffer& to) {
  to.left.insert(to.left.end(), vector.left.begin(), vector.left.end());
  to.right.insert(to.right.end(), vector.right.begin(), vector.right.end());
}

double largestDifference(const StereoBuffer& a, const StereoBuffer& b) {
  double largest = a.size() == b.size() ? 0.0 : HUGE_VAL;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    largest =
        std::max({largest, std::fabs(a.left[i] - b.left[i]), std::fabs(a.right[i] - b.right[i])});
  }
  return largest;
}

double peak(const StereoBuffer& audio) {
  return largestDifference(audio, StereoBuffer(audio.size()));
}

/// Slot 1 alone is on, and sends all of its input.
struct MasterRig : EngineRig {
  explicit MasterRig(double rate = 48000.0) : EngineRig(rate) {
    set(kSlotOn, 1);
    set(kMasterFxSource, kStageInput);
    set(kMasterFxSend, 100.0);
  }

  void choose(int menuPosition) {
    for (int knob = 0; knob < 4; ++knob) set(kMasterFxParam + knob, kKnobs[knob]);
    set(kMasterFx, menuPosition);
  }

  /// What the master effect gave back, sub-block by sub-block.
  StereoBuffer returned(const StereoBuffer& in) {
    StereoBuffer audio = in;
    StereoBuffer heard;
    for (std::size_t at = 0; at < audio.size(); at += kVectorLength) {
      block(audio, at, kVectorLength);
      append(probe.buses().masterReturn, heard);
    }
    return heard;
  }

  OrvantescoProbe probe{effect};
};

/// What an effect by itself makes of a signal.
StereoBuffer alone(int menuPosition, StereoBuffer signal) {
  const std::unique_ptr<DSPShell> effect = createMasterEffect(menuPosition - 1);
  for (int knob = 0; knob < 4; ++knob) {
    effect->setParam(knob, masterFxScale(menuPosition, knob, kKnobs[knob] * 0.01).native);
  }
  for (std::size_t at = 0; at < signal.size(); at += kVectorLength) {
    effect->process(&signal.left[at], &signal.right[at], nullptr, nullptr);
  }
  return signal;
}

/// What the slots send: the return of a bypassed effect, which lets it pass.
StereoBuffer sent(const StereoBuffer& in, double rate = 48000.0) {
  MasterRig rig(rate);
  rig.set(kMasterFxBypass, 1);
  rig.choose(kMasterRoom);
  return rig.returned(in);
}

TEST(MasterEffect, EachOfTheMenuAnswersTheSendAsItDoesAlone) {
  for (const double rate : kRates) {
    const StereoBuffer in = noise(9600);
    const StereoBuffer send = sent(in, rate);
    EXPECT_GT(peak(send), 0.1);
    for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
      MasterRig rig(rate);
      rig.choose(menuPosition);
      const StereoBuffer answer = rig.returned(in);
      EXPECT_EQ(largestDifference(answer, alone(menuPosition, send)), 0.0)
          << rate << " " << menuPosition;
      EXPECT_GT(largestDifference(answer, send), 0.01) << menuPosition;
    }
  }
}

TEST(MasterEffect, AfterAChangeOfRateItAnswersAsANewOne) {
  const StereoBuffer in = noise(9600);
  for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
    const auto changed = [&](bool bypass) {
      MasterRig rig(48000.0);
      rig.set(kMasterFxBypass, bypass ? 1 : 0);
      rig.choose(menuPosition);
      rig.returned(in);
      rig.host.setSampleRate(96000.0);
      return rig.returned(in);
    };
    EXPECT_EQ(largestDifference(changed(false), alone(menuPosition, changed(true))), 0.0)
        << menuPosition;
  }
}

TEST(MasterEffect, AtOffNothingIsSentAndNothingComesBack) {
  MasterRig rig, without;
  without.set(kMasterFxSend, 0.0);
  const StereoBuffer in = noise(9600);
  const auto expectNothing = [&] {
    for (MasterRig* each : {&rig, &without}) each->returned(StereoBuffer(320));  // the latency
    StereoBuffer heard = in, expected = in;
    rig.render(heard);
    without.render(expected);
    EXPECT_EQ(largestDifference(heard, expected), 0.0);
    EXPECT_GT(peak(heard), 0.01);
    EXPECT_EQ(peak(rig.returned(in)), 0.0);
    without.returned(in);
  };
  expectNothing();
  rig.choose(kMasterReverb);
  EXPECT_GT(peak(rig.returned(in)), 0.01);
  without.returned(in);
  rig.set(kMasterFx, kMasterOff);
  expectNothing();
}

TEST(MasterEffect, AnotherThatIsChosenStraightAwayAnswersAsANewOne) {
  const StereoBuffer in = noise(1600);
  const auto changed = [&](int from, int to, bool bypass) {
    MasterRig rig;
    rig.set(kMasterFxBypass, bypass ? 1 : 0);
    rig.choose(from);
    rig.returned(in);
    rig.choose(to);
    return rig.returned(in);
  };
  for (int from = 1; from < kMasterFxMenuEntries; ++from) {
    for (int to = 1; to < kMasterFxMenuEntries; ++to) {
      if (to == from) continue;
      EXPECT_EQ(largestDifference(changed(from, to, false), alone(to, changed(from, to, true))),
                0.0)
          << from << " " << to;
    }
  }
}

TEST(MasterEffect, ChoosingAnEffectAgainBringsNoOldTailBack) {
  for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
    for (const int between : {int{kMasterOff}, menuPosition % 7 + 1}) {
      MasterRig rig;
      rig.choose(menuPosition);
      rig.returned(noise(9600));
      rig.set(kMasterFxSend, 0.0);
      rig.set(kMasterFx, between);
      rig.returned(StereoBuffer(9600));
      rig.set(kMasterFx, menuPosition);
      EXPECT_LT(peak(rig.returned(StereoBuffer(9600))), 1e-12) << menuPosition << " " << between;
    }
  }
}

TEST(MasterEffect, BypassLetsTheSendPassAndDropsTheTail) {
  MasterRig rig;
  rig.choose(kMasterReverb);
  rig.returned(noise(9600));
  rig.set(kMasterFxSend, 0.0);
  EXPECT_GT(peak(rig.returned(StereoBuffer(3200))), 1e-3);
  rig.set(kMasterFxBypass, 1);
  EXPECT_EQ(peak(rig.returned(StereoBuffer(3200))), 0.0);
  rig.set(kMasterFxBypass, 0);
  EXPECT_LT(peak(rig.returned(StereoBuffer(6400))), 1e-12);
}

TEST(MasterEffect, AKnobThatTurnsDoesNotCutTheTail) {
  MasterRig rig;
  rig.choose(kMasterReverb);
  rig.returned(noise(9600));
  rig.set(kMasterFxSend, 0.0);
  rig.set(kMasterFxParam, 40.0);
  EXPECT_GT(peak(rig.returned(StereoBuffer(3200))), 1e-3);
}

TEST(MasterEffect, AKnobThatTurnsReachesTheSelectedEffect) {
  const auto tail = [](double decayKnob) {
    MasterRig rig;
    rig.choose(kMasterRoom);
    rig.set(kMasterFxParam, decayKnob);
    rig.returned(noise(9600));
    rig.set(kMasterFxSend, 0.0);
    rig.returned(StereoBuffer(64000));
    return peak(rig.returned(StereoBuffer(3200)));
  };
  EXPECT_GT(tail(100.0), 10.0 * tail(0.0));
}

TEST(MasterEffect, LevelScalesWhatIsHeardAndNotTheReturn) {
  const StereoBuffer in = noise(6400);
  const auto render = [&](double level, StereoBuffer& heard) {
    MasterRig rig;
    rig.set(kDryLevel, 0.0);
    rig.set(kWetLevel, 100.0);
    rig.set(kMasterFxLevel, level);
    rig.choose(kMasterRoom);
    StereoBuffer returned;
    heard = in;
    for (std::size_t at = 0; at < in.size(); at += kVectorLength) {
      rig.block(heard, at, kVectorLength);
      append(rig.probe.buses().masterReturn, returned);
    }
    return returned;
  };
  StereoBuffer none, single, twice;
  const StereoBuffer returned = render(0.0, none);
  EXPECT_EQ(largestDifference(render(100.0, single), returned), 0.0);
  EXPECT_EQ(largestDifference(render(200.0, twice), returned), 0.0);
  StereoBuffer line(in.size());
  for (std::size_t i = 0; i < in.size(); ++i) {
    line.left[i] = 2.0 * single.left[i] - none.left[i];
    line.right[i] = 2.0 * single.right[i] - none.right[i];
  }
  EXPECT_LT(largestDifference(line, twice), 1e-12);
  EXPECT_GT(largestDifference(none, single), 0.01);
}

TEST(MasterEffect, ASlotThatListensHearsTheUnscaledReturnOneSubBlockLate) {
  MasterRig rig;
  rig.choose(kMasterRoom);
  rig.set(kMasterFxLevel, 30.0);
  rig.set(kSlotOn + 1, 1);
  rig.set(kInput + 1, 4);  // "MASTER-FX"
  rig.set(kInputGain + 1, 0.0);
  rig.warmUp(0.5);
  StereoBuffer audio = noise(6400);
  StereoBuffer returned, heard;
  for (std::size_t at = 0; at < audio.size(); at += kVectorLength) {
    append(rig.probe.buses().masterReturn, returned);
    rig.block(audio, at, kVectorLength);
    append(rig.probe.engineSlot(1).stage[kStageInput], heard);
  }
  EXPECT_GT(peak(heard), 0.01);
  EXPECT_LT(largestDifference(returned, heard), 1e-12);
}

TEST(MasterEffect, TheCornersOfEveryKnobStayFinite) {
  for (int menuPosition = 1; menuPosition < kMasterFxMenuEntries; ++menuPosition) {
    MasterRig rig(96000.0);
    rig.choose(menuPosition);
    const StereoBuffer in = noise(6400, 1.0);
    double highest = 0.0;
    for (int corner = 0; corner < 16; ++corner) {
      for (int knob = 0; knob < 4; ++knob) {
        rig.set(kMasterFxParam + knob, ((corner >> knob) & 1) != 0 ? 100.0 : 0.0);
      }
      highest = std::max(highest, peak(rig.returned(in)));
    }
    EXPECT_LT(highest, 100.0) << menuPosition;
  }
}

}  // namespace
}  // namespace orvantesco
