// The model brings its own list of defaults. The bank has to tell the same.

#include <gtest/gtest.h>

#include <map>

#include "model/Settings.h"
#include "params/ParamBank.h"

namespace orvantesco {
namespace {

TEST(ModelDefaults, AreThoseOfTheBank) {
  ParamBank bank;
  bank.buildParameterBank();
  std::map<std::string, double> known;
  for (int i = 0; i < kNumParams; ++i)
    known.emplace(bank.getParam(i)->name(), bank.getParam(i)->defaultValue());
  for (const auto& [name, value] : model::defaultSettings()) {
    ASSERT_EQ(known.count(name), 1U) << name;
    EXPECT_EQ(known.at(name), value) << name;
  }
}

}  // namespace
}  // namespace orvantesco
