// The output does not depend on how a host cuts the audio into blocks: not in a single bit.

#include <gtest/gtest.h>

#include <random>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;

std::vector<int> randomBlocks(unsigned seed, int longest) {
  std::mt19937 generator(seed);
  std::vector<int> blocks(4000);
  for (int& frames : blocks)
    frames = 1 + static_cast<int>(generator() % static_cast<unsigned>(longest));
  return blocks;
}

const std::vector<std::vector<int>>& cuttings() {
  static const std::vector<std::vector<int>> all = {{1},
                                                    {31},
                                                    {32},
                                                    {33},
                                                    {4096},
                                                    {0, 7, 0, 64},
                                                    {1 << 20},
                                                    randomBlocks(7, 4096),
                                                    randomBlocks(8, 70)};
  return all;
}

void expectSameBits(const Settings& settings, double rate, bool transportRuns = true) {
  const model::HostSetup setup{rate, 133.7, false, transportRuns};
  const model::Signal input = model::noise(static_cast<size_t>(rate), 9);
  const model::Signal expected = EngineUnderTest(setup, settings).render(input, {512});
  EXPECT_GT(model::peak(expected), 0.01);
  for (const std::vector<int>& blocks : cuttings()) {
    const model::Signal out = EngineUnderTest(setup, settings).render(input, blocks);
    EXPECT_EQ(out.left, expected.left) << "first block " << blocks.front();
    EXPECT_EQ(out.right, expected.right) << "first block " << blocks.front();
  }
}

Settings everySlotDifferent() {
  Settings settings = baseSettings();
  for (int slot = 0; slot < 4; ++slot) {
    settings[model::slotName("SlotOn", slot)] = 1;
    settings[model::slotName("Input", slot)] = 3;
    settings[model::slotName("Delay Mode", slot)] = slot;
    settings[model::slotName("Feedback", slot)] = 60;
    settings[model::slotName("Delay Lopass", slot)] = 5000;
    settings[model::slotName("FB Matrix", slot)] = 1;
    settings[model::slotName("Slot1 FB", slot)] = 40;
    settings[model::slotName("Slot3 FB", slot)] = -30;
    settings[model::slotName("Delay Taps Swell", slot)] = 40;
    settings[model::slotName("Reverse Delay Trigger", slot)] = 1;
  }
  return settings;
}

TEST(BlockCutting, ChangesNoBitOfADefaultInstance) { expectSameBits({}, 44100); }

TEST(BlockCutting, ChangesNoBitOfFourSlotsInFourModes) {
  for (const double rate : kComparedRates) expectSameBits(everySlotDifferent(), rate);
}

TEST(BlockCutting, ChangesNoBitWhileTheTransportStands) {
  expectSameBits(everySlotDifferent(), 48000, false);
}

}  // namespace
}  // namespace orvantesco
