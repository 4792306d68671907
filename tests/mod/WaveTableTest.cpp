#include "mod/WaveTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "mod/ModTestSupport.h"
#include "params/Labels.h"

namespace orvantesco {
namespace {

const double* wave(const std::string& name) {
  for (const WaveRecord* record : waveList) {
    if (name == record->name) return record->samples;
  }
  ADD_FAILURE() << "no wave " << name;
  return waveList[0]->samples;
}

TEST(WaveTable, bearsTheNamesOfTheMenuInItsOrder) {
  ASSERT_EQ(LfoWaveLabels.size(), waveList.size());
  for (std::size_t i = 0; i < waveList.size(); ++i) {
    ASSERT_NE(waveList[i], nullptr) << i;
    EXPECT_STREQ(waveList[i]->name, LfoWaveLabels[i]);
  }
  EXPECT_EQ(waveList.back()->id, kSampleAndHoldWave);
}

TEST(WaveTable, givesEachRecordAnIdAndANameOfItsOwn) {
  std::set<int> ids;
  std::set<std::string> names;
  for (const WaveRecord& record : waveTable()) {
    ids.insert(record.id);
    names.insert(record.name);
  }
  EXPECT_EQ(ids.size(), waveTable().size());
  EXPECT_EQ(names.size(), waveTable().size());
  for (const char* unused : {"TRAPEZOID", "WAVE1", "WAVE2", "WAVE6", "WAVE9", "WAVE10"}) {
    EXPECT_EQ(names.count(unused), 1u) << unused;
    for (const WaveRecord* offered : waveList) EXPECT_STRNE(offered->name, unused);
  }
}

TEST(WaveTable, keepsEveryWaveWithinItsRangeAndUsesMostOfIt) {
  for (const WaveRecord& record : waveTable()) {
    const auto [low, high] =
        std::minmax_element(record.samples, record.samples + WaveRecord::kLength);
    EXPECT_GE(*low, -1.0) << record.name;
    EXPECT_LE(*high, 1.0) << record.name;
    EXPECT_GT(*high - *low, 1.4) << record.name;
  }
}

TEST(WaveTable, keepsWavesClearlyApart) {
  for (std::size_t a = 0; a < waveTable().size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      double sum = 0.0;
      for (int i = 0; i < WaveRecord::kLength; ++i) {
        const double difference = waveTable()[a].samples[i] - waveTable()[b].samples[i];
        sum += difference * difference;
      }
      EXPECT_GT(std::sqrt(sum / WaveRecord::kLength), 0.1)
          << waveTable()[a].name << " and " << waveTable()[b].name;
    }
  }
}

TEST(WaveTable, drawsWhatTheNamesPromise) {
  double worst = 0.0;
  for (int i = 0; i < WaveRecord::kLength; ++i) {
    worst = std::fmax(worst,
                      std::fabs(wave("SIN1")[i] - std::sin(2.0 * std::numbers::pi * i / 4096.0)));
    worst = std::fmax(worst, std::fabs(wave("RAMP")[i] - (-1.0 + 2.0 * i / 4095.0)));
    const int duties[] = {2, 3, 4, 8, 16};
    const char* names[] = {"HALFPULSE", "1/3 PULSE", "1/4 PULSE", "1/8 PULSE", "1/16 PULSE"};
    for (int k = 0; k < 5; ++k) {
      const double expected = i < 4096.0 / duties[k] ? 1.0 : -1.0;
      worst = std::fmax(worst, std::fabs(wave(names[k])[i] - expected));
    }
  }
  EXPECT_LT(worst, 1e-12);
  EXPECT_EQ(wave("TRIANGLE")[0], -1.0);
  EXPECT_EQ(wave("TRIANGLE")[2048], 1.0);
  EXPECT_NEAR(wave("EXPFALL")[0], 0.97, 1e-12);
  EXPECT_NEAR(wave("EXPFALL")[4095], -1.0, 1e-12);
  EXPECT_EQ(wave("SAWSIN")[0], 1.0);
  EXPECT_NEAR(wave("SAWSIN")[4095], -1.0, 1e-12);
  EXPECT_EQ(wave("SAW2")[0], 1.0);
  EXPECT_EQ(wave("SAW2")[4095], -1.0);
}

TEST(WaveTable, climbsStairsInAsManySteps) {
  const auto levels = [](const char* name) {
    return std::set<double>(wave(name), wave(name) + WaveRecord::kLength).size();
  };
  EXPECT_EQ(levels("STAIR3"), 3u);
  EXPECT_EQ(levels("STEP8"), 8u);
  EXPECT_EQ(levels("HALFPULSE"), 2u);
}

}  // namespace
}  // namespace orvantesco
