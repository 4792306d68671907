// Every input that the fuzz targets keep holds what any input must hold.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/FuzzedEffect.h"
#include "fuzz/PresetChecks.h"
#include "fuzz/StateChecks.h"

namespace orvantesco {
namespace {

/// Runs a check over all files of a folder; their number.
int checkAll(const std::string& folder, void (*check)(std::string_view)) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(ORVANTESCO_CORPUS "/" + folder)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    check(bytes);
    ++count;
  }
  return count;
}

TEST(FuzzCorpus, EveryPresetFileIsReadSafely) {
  EXPECT_GE(checkAll("preset", checkPresetBytes), 8);
}

TEST(FuzzCorpus, EveryStateBlockIsReadSafely) { EXPECT_GE(checkAll("state", checkStateBytes), 8); }

TEST(FuzzCorpus, OneEffectPlaysAllOfThemOneAfterAnother) {
  EXPECT_GE(checkAll("preset", checkPresetPlays), 8);
  EXPECT_GE(checkAll("state", checkStatePlays), 8);
  EXPECT_GE(checkAll("preset", checkPresetPlays), 8);
}

}  // namespace
}  // namespace orvantesco
