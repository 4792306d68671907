// How the effects of a position are run and mixed with their dry signal.

#include <gtest/gtest.h>

#include <memory>
#include <numbers>

#include "core/EngineRate.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr int kPosition = 0;
constexpr int kMix = 4;
constexpr int kPair = -1;
constexpr int kFilterId = 31, kPhaserId = 3;

/// Turns its input over and doubles it, beside its centre line: unlike the dry signal everywhere.
class Marked : public DSPShell {
 public:
  explicit Marked(bool isRight) : DSPShell(isRight) {}
  static double of(double x) { return 0.25 - 2.0 * x; }
  void processBlock() noexcept override {
    for (int i = 0; i < blockSize; ++i) output[i] = of(input[i]);
  }
};

/// Smoothed as a plain recursion does it, 200 ms.
struct PlainGlide {
  double y = 0.0;
  double tick(double x) {
    const double a = std::exp(-2.0 * std::numbers::pi / (0.2 * engineRate()));
    y = x * (1.0 - a) + a * y;
    return y;
  }
};

double mixed(double dry, double share) { return share * Marked::of(dry) + (1.0 - share) * dry; }

class EffectRunner : public testing::Test {
 protected:
  EffectRunner() {
    rig.warmUp(0.05);
    position().on = true;
    position().source[kMix] = nullptr;
    chooseType(kFilterId);
    for (int i = 0; i < kVectorLength; ++i) {
      const auto at = static_cast<std::size_t>(i);
      in.left[at] = std::sin(0.3 * i);
      in.right[at] = std::cos(0.2 * i);
    }
  }

  EffectPosition& position() { return probe.position(kPosition); }
  DSPShell& instance(int index) {
    return *position().running->list[static_cast<std::size_t>(index)];
  }

  void chooseType(int typeId) {
    auto instances = std::make_unique<EffectInstances>();
    instances->typeId = typeId;
    instances->builtAtRate = engineRate();
    for (int i = 0; i < 4; ++i) instances->list.push_back(std::make_shared<Marked>(i % 2 != 0));
    position().handOver(std::move(instances));
    probe.carryOutRequests();
  }

  /// A modulator at a steady value; its depth is that of the position.
  void modulateMix(double value, double depth) {
    modulator.fill(value);
    position().source[kMix] = modulator.data();
    position().depth[kMix] = depth;
    probe.carryOutRequests();
  }

  StereoVector run(int index = kPair) {
    StereoVector out{}, dry = in;
    out.left.fill(kUntouched);
    out.right.fill(kUntouched);
    probe.runEffect({dry.left.data(), dry.right.data()}, {out.left.data(), out.right.data()},
                    kPosition, index);
    return out;
  }

  /// Vectors of both channels against the glide of a plain smoother towards `target`.
  double largestDifferenceFromGlide(double target, int vectors) {
    double largest = 0.0;
    for (int v = 0; v < vectors; ++v) {
      const StereoVector out = run();
      for (std::size_t i = 0; i < out.left.size(); ++i) {
        const double share = glide.tick(target);
        largest = std::max({largest, std::fabs(out.left[i] - mixed(in.left[i], share)),
                            std::fabs(out.right[i] - mixed(in.right[i], share))});
      }
    }
    return largest;
  }

  static bool isWholly(const AudioVector& out, const AudioVector& dry, double share) {
    for (std::size_t i = 0; i < out.size(); ++i) {
      const double expected = share == 1.0 ? Marked::of(dry[i]) : mixed(dry[i], share);
      if (std::fabs(out[i] - expected) > (share == 1.0 ? 0.0 : 1e-15)) return false;
    }
    return true;
  }

  static bool isUntouched(const AudioVector& out) {
    return std::all_of(out.begin(), out.end(), [](double x) { return x == kUntouched; });
  }

  static constexpr double kUntouched = 77.0;

  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
  StereoVector in;
  AudioVector modulator{};
  PlainGlide glide;
};

TEST_F(EffectRunner, FullyWetIsTheEffectBitForBit) {
  const StereoVector pair = run();
  EXPECT_TRUE(isWholly(pair.left, in.left, 1.0));
  EXPECT_TRUE(isWholly(pair.right, in.right, 1.0));
  EXPECT_TRUE(isWholly(run(0).left, in.left, 1.0));
  EXPECT_TRUE(isWholly(run(1).right, in.right, 1.0));
}

TEST_F(EffectRunner, AMixOfZeroGlidesToTheDrySignal) {
  instance(0).setMix(0.5);
  EXPECT_LT(largestDifferenceFromGlide(0.5, 3000), 1e-11);
  instance(0).setMix(0.0);
  EXPECT_LT(largestDifferenceFromGlide(0.0, 3000), 1e-11);
  const StereoVector dry = run();
  for (std::size_t i = 0; i < dry.left.size(); ++i) {
    EXPECT_NEAR(dry.left[i], in.left[i], 1e-11);
    EXPECT_NEAR(dry.right[i], in.right[i], 1e-11);
  }
}

TEST_F(EffectRunner, TheLeftInstanceHasTheMixOfThePair) {
  instance(0).setMix(0.25);
  instance(1).setMix(0.75);
  EXPECT_LT(largestDifferenceFromGlide(0.25, 100), 1e-11);
}

TEST_F(EffectRunner, AModulatedFallBelowZeroGlidesToTheDrySignal) {
  instance(0).setMix(0.5);
  EXPECT_LT(largestDifferenceFromGlide(0.5, 1000), 1e-11);
  modulateMix(-1.0, 0.9);
  EXPECT_LT(largestDifferenceFromGlide(0.0, 1000), 1e-11);
}

TEST_F(EffectRunner, AModulatedRiseAboveOneIsWetAtOnceAndTheGlideGoesOnFromWhereItWas) {
  instance(0).setMix(0.5);
  EXPECT_LT(largestDifferenceFromGlide(0.5, 100), 1e-11);
  modulateMix(1.0, 0.9);
  for (int v = 0; v < 500; ++v) {
    const StereoVector wet = run();
    ASSERT_TRUE(isWholly(wet.left, in.left, 1.0) && isWholly(wet.right, in.right, 1.0));
  }
  modulateMix(1.0, 0.2);
  EXPECT_LT(largestDifferenceFromGlide(0.7, 100), 1e-11);
}

TEST_F(EffectRunner, AModulatorWithinItsRangeMovesTheMixByItsDepth) {
  instance(0).setMix(0.5);
  modulateMix(0.5, -0.4);
  EXPECT_LT(largestDifferenceFromGlide(0.3, 100), 1e-11);
}

TEST_F(EffectRunner, OneInstanceIsMixedAtOnceAndWritesItsOwnSideAlone) {
  for (int index = 0; index < 4; ++index) {
    instance(index).setMix(0.2 + 0.1 * index);
    const StereoVector out = run(index);
    const bool isRight = index % 2 != 0;
    EXPECT_TRUE(
        isWholly(isRight ? out.right : out.left, isRight ? in.right : in.left, 0.2 + 0.1 * index))
        << index;
    EXPECT_TRUE(isUntouched(isRight ? out.left : out.right)) << index;
  }
}

TEST_F(EffectRunner, OneInstanceReadsItsOwnDepthOfTheMix) {
  modulateMix(1.0, 0.9);
  const double own = -0.25;
  instance(2).setModDepth(kMix, &own);
  instance(2).setMix(0.5);
  EXPECT_TRUE(isWholly(run(2).left, in.left, 0.25));
  instance(3).setModDepth(kMix, nullptr);
  instance(3).setMix(0.5);
  EXPECT_TRUE(isWholly(run(3).right, in.right, 0.5)) << "a tap that may not be modulated";
  const double far = -3.0;
  instance(2).setModDepth(kMix, &far);
  EXPECT_TRUE(isWholly(run(2).left, in.left, 0.0)) << "held at 0";
}

TEST_F(EffectRunner, AParkedChannelIsLeftAlone) {
  StereoVector audio = in;
  probe.runEffectInPlace(nullptr, audio.right.data(), kPosition, 1);
  EXPECT_TRUE(isWholly(audio.right, in.right, 1.0));
  EXPECT_EQ(audio.left, in.left);
  probe.runEffectInPlace(audio.left.data(), nullptr, kPosition, 0);
  EXPECT_TRUE(isWholly(audio.left, in.left, 1.0));
}

TEST_F(EffectRunner, InPlaceGivesWhatThePairGives) {
  instance(0).setMix(0.5);
  StereoVector audio = in;
  probe.runEffectInPlace(audio.left.data(), audio.right.data(), kPosition, kPair);
  for (std::size_t i = 0; i < audio.left.size(); ++i) {
    const double share = glide.tick(0.5);
    EXPECT_NEAR(audio.left[i], mixed(in.left[i], share), 1e-12);
    EXPECT_NEAR(audio.right[i], mixed(in.right[i], share), 1e-12);
  }
}

TEST_F(EffectRunner, AFifthKnobThatIsNoMixLeavesTheMixWhole) {
  for (const int id : {6, 35, 36, 37}) {
    chooseType(id);
    modulateMix(-1.0, 0.5);
    const StereoVector pair = run();
    EXPECT_TRUE(isWholly(pair.left, in.left, 1.0)) << id;
    EXPECT_TRUE(isWholly(pair.right, in.right, 1.0)) << id;
    EXPECT_TRUE(isWholly(run(1).right, in.right, 1.0)) << id;
  }
}

TEST_F(EffectRunner, AModulatorOfItsFeedbackFadesThePhaser) {
  chooseType(kPhaserId);
  modulateMix(-1.0, 0.4);
  EXPECT_LT(largestDifferenceFromGlide(0.6, 100), 1e-11);
}

}  // namespace
}  // namespace orvantesco
