#include "host/binding/ParameterSymbol.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

TEST(ParameterSymbol, IsAnIdentifier) {
  const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
  for (int index = 0; index < kNumParams; ++index) {
    const std::string& symbol = parameterSymbol(index);
    ASSERT_FALSE(symbol.empty()) << index;
    EXPECT_NE(letters.find(symbol[0]), std::string::npos) << symbol;
    EXPECT_EQ(symbol.find_first_not_of(letters + "0123456789"), std::string::npos) << symbol;
  }
}

TEST(ParameterSymbol, NamesOneParameterEach) {
  std::set<std::string> seen;
  for (int index = 0; index < kNumParams; ++index) {
    EXPECT_TRUE(seen.insert(parameterSymbol(index)).second) << parameterSymbol(index);
  }
}

TEST(ParameterSymbol, IsTheKeyWherePresetsKnowOneParameterByIt) {
  EXPECT_EQ(parameterSymbol(kDelayTimeL), "DelayTimeL1");
  EXPECT_EQ(parameterSymbol(kLROffset + 1), "L_ROffset2");
  EXPECT_EQ(parameterSymbol(kMasterFxSend + 3), "M_FXSend4");
  // The third logic unit keeps the name that the second one bears too.
  EXPECT_EQ(parameterSymbol(kLogicSmooth + 1),
            parameterSymbol(kLogicSmooth + 2) + "_" + std::to_string(kLogicSmooth + 1));
}

/// FNV-1a (G. Fowler, L. Noll, K.-P. Vo), 64 bits, over all symbols, one a line.
std::uint64_t hashOfAll() {
  std::uint64_t hash = 0xcbf29ce484222325u;
  for (int index = 0; index < kNumParams; ++index) {
    for (const char c : parameterSymbol(index) + "\n") {
      hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    }
  }
  return hash;
}

TEST(ParameterSymbol, NeverChanges) {
  // Users' sessions hold these names: another value here loses their settings and automation.
  EXPECT_EQ(hashOfAll(), 3706275706585056496u);
}

}  // namespace
}  // namespace orvantesco
