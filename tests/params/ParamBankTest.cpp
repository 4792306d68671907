#include "params/ParamBank.h"

#include <gtest/gtest.h>

#include <map>

#include "params/BankReading.h"

namespace orvantesco {
namespace {

class ParamBankTest : public testing::Test {
 protected:
  ParamBankTest() { bank.buildParameterBank(); }
  const IParam& at(int index) const { return *bank.getParam(index); }
  std::string nameAt(int index) const { return at(index).name(); }

  ParamBank bank;
};

const std::map<std::string, ParamType>& typesByWord() {
  static const std::map<std::string, ParamType> types{{"bool", ParamType::boolean},
                                                      {"int", ParamType::integer},
                                                      {"enum", ParamType::enumeration},
                                                      {"double", ParamType::real}};
  return types;
}

std::vector<std::string> textsOf(LabelList labels) { return {labels.begin(), labels.end()}; }

std::vector<std::string> listNamed(const std::string& name, int member) {
  const std::map<std::string, LabelList> lists{{"OffOnLabels", OffOnLabels},
                                               {"LimiterLabels", LimiterLabels},
                                               {"DirectOutLabels", DirectOutLabels},
                                               {"MasterFxSourceLabels", MasterFxSourceLabels},
                                               {"OutputModeLabels", OutputModeLabels},
                                               {"DelayModeLabels", DelayModeLabels},
                                               {"DelayRouteLabels", DelayRouteLabels},
                                               {"TapCountLabels", TapCountLabels},
                                               {"TapFbLabels", TapFbLabels},
                                               {"TimebaseLabels", TimebaseLabels},
                                               {"TapFxParamLabels", TapFxParamLabels},
                                               {"StepQuantLabels", StepQuantLabels},
                                               {"TapPanModeLabels", TapPanModeLabels},
                                               {"TapDiOutLabels", TapDiOutLabels},
                                               {"ReverseTriggerLabels", ReverseTriggerLabels},
                                               {"LfoWaveLabels", LfoWaveLabels},
                                               {"PolarityLabels", PolarityLabels},
                                               {"LfoSyncLabels", LfoSyncLabels},
                                               {"LfoModeLabels", LfoModeLabels},
                                               {"TriggerLabels", TriggerLabels},
                                               {"GateTimebaseLabels", GateTimebaseLabels},
                                               {"GateDirectionLabels", GateDirectionLabels},
                                               {"EnvModeLabels", EnvModeLabels},
                                               {"EnvSourceLabels", EnvSourceLabels},
                                               {"EnvOutputLabels", EnvOutputLabels},
                                               {"ModSourceLabels", ModSourceLabels},
                                               {"LogicTypeLabels", LogicTypeLabels},
                                               {"MasterFxLabels", MasterFxLabels},
                                               {"FxTypeLabels", FxTypeLabels},
                                               {"FbFxTypeLabels", FbFxTypeLabels}};
  if (name == "InputLabels") return textsOf(InputLabels.at(static_cast<std::size_t>(member)));
  return textsOf(lists.at(name));
}

std::vector<std::string> expectedTexts(const reading::Family& family, int member) {
  if (family.type == "bool") return {"off", "on"};
  if (family.labels.empty()) return {};
  return listNamed(family.labels, member);
}

void expectTexts(const IParam& param, const std::vector<std::string>& expected) {
  std::vector<std::string> texts;
  for (const DisplayText& entry : param.form().displayTexts) {
    ASSERT_EQ(entry.value, static_cast<int>(texts.size()));
    texts.emplace_back(entry.text.get());
  }
  EXPECT_EQ(texts, expected);
}

void expectMember(const IParam& param, const reading::Family& family, int member) {
  EXPECT_EQ(param.name(), family.nameOf(member));
  EXPECT_EQ(param.type(), typesByWord().at(family.type));
  EXPECT_EQ(param.value(), family.defaultOf(member));
  EXPECT_EQ(param.defaultValue(), family.defaultOf(member));
  EXPECT_EQ(param.min(), family.min);
  EXPECT_EQ(param.max(), family.maxOf(member));
  EXPECT_EQ(param.step(), family.step);
  EXPECT_EQ(param.shape(), family.shape);
  EXPECT_EQ(param.label(), family.unit);
  EXPECT_STREQ(param.group(), "");
  EXPECT_EQ(param.displayPrecision(), family.step == 0.01 ? 2 : family.step == 0.1 ? 1 : 0);
  EXPECT_TRUE(param.canAutomate());
  EXPECT_FALSE(param.negateDisplay());
  expectTexts(param, expectedTexts(family, member));
}

TEST_F(ParamBankTest, EveryParameterIsWhatWasWrittenDownForIt) {
  for (const reading::Family& family : reading::families())
    for (int member = 0; member < family.count(); ++member) {
      SCOPED_TRACE(family.first + member);
      expectMember(at(family.first + member), family, member);
    }
}

TEST_F(ParamBankTest, TheFamiliesCoverEveryIndexOnce) {
  int next = 0;
  for (const reading::Family& family : reading::families()) {
    EXPECT_EQ(family.constant, family.first);
    EXPECT_EQ(family.first, next);
    next = family.last + 1;
  }
  EXPECT_EQ(next, 1095);
  EXPECT_EQ(kNumParams, 1095);
}

TEST_F(ParamBankTest, AMembersLastNameIsTheOneWrittenDown) {
  for (const reading::Family& family : reading::families())
    EXPECT_EQ(nameAt(family.last), family.lastName);
}

TEST_F(ParamBankTest, NamesAreTakenWhole) {
  std::size_t longest = 0;
  for (int index = 0; index < kNumParams; ++index)
    longest = std::max(longest, nameAt(index).size());
  EXPECT_EQ(longest, 26u);
}

TEST_F(ParamBankTest, AnIndexOutOfRangeHasNoRecord) {
  EXPECT_EQ(bank.getParam(-1), nullptr);
  EXPECT_EQ(bank.getParam(1095), nullptr);
  EXPECT_NE(bank.getParam(1094), nullptr);
}

TEST_F(ParamBankTest, AFreshBankHasOneSlotOnAndAllDelaysOn) {
  EXPECT_EQ(at(kSlotOn).value(), 1.0);
  for (int slot = 1; slot < 4; ++slot) EXPECT_EQ(at(kSlotOn + slot).value(), 0.0);
  for (int slot = 0; slot < 4; ++slot) EXPECT_EQ(at(kDelayOn + slot).value(), 1.0);
}

TEST_F(ParamBankTest, KeysAreTheNamesWithoutBlanks) {
  ASSERT_EQ(bank.keys().size(), 1095u);
  EXPECT_EQ(bank.keys()[kDelayTimeL], "DelayTimeL1");
  EXPECT_EQ(bank.keys()[kFxTypePre], "FX1PR");
  EXPECT_EQ(bank.keys()[kLfoFreqModDepth], "LFOFreqModDepth1");
  EXPECT_EQ(bank.keys()[kLROffset + 3], "L/ROffset4");
  EXPECT_EQ(bank.keys()[kBypass], "BP");
  for (const std::string& key : bank.keys()) EXPECT_EQ(key.find(' '), key.npos) << key;
}

TEST_F(ParamBankTest, TheSecondLogicUnitSharesFiveKeysWithTheThirdAndNothingElseIsShared) {
  const std::map<std::size_t, std::size_t> twins{
      {1022, 1021}, {1030, 1029}, {1038, 1037}, {1042, 1041}, {1046, 1045}};
  std::map<std::string, std::size_t> firstOf;
  for (std::size_t index = 0; index < bank.keys().size(); ++index) {
    const auto [first, isNew] = firstOf.emplace(bank.keys()[index], index);
    if (twins.contains(index)) {
      EXPECT_EQ(first->second, twins.at(index));
    } else {
      EXPECT_TRUE(isNew) << bank.keys()[index];
    }
  }
  EXPECT_EQ(nameAt(1021), "Logic3 Source1 Depth");
  EXPECT_EQ(nameAt(1022), "Logic3 Source1 Depth");
  EXPECT_FALSE(firstOf.contains("Logic2Source1Depth"));
  EXPECT_TRUE(firstOf.contains("Logic2Source1"));
}

TEST_F(ParamBankTest, AValueBeyondASlotsInputListIsHeldByItsRange) {
  IParam& input = *bank.getParam(kInput);
  input.setValue(11.0);
  EXPECT_EQ(input.value(), 11.0);
  EXPECT_EQ(input.getNormalized(), 1.0);
  input.setNormalized(1.0);
  EXPECT_EQ(input.value(), 4.0);
  EXPECT_EQ(at(kInput + 3).form().displayTexts.size(), 12u);
}

TEST_F(ParamBankTest, AnEnumThatIsMadeAgainKeepsItsValueAndTakesTheNewTexts) {
  bank.getParam(kDelayMode)->setValue(2.0);
  bank.addEnum(kDelayMode, {"Other"}, {OutputModeLabels, 1, KeepValue::yes});
  EXPECT_EQ(at(kDelayMode).value(), 2.0);
  EXPECT_EQ(at(kDelayMode).defaultValue(), 1.0);
  expectTexts(at(kDelayMode), {"NORM", "SWAP", "MUTE"});
  bank.addEnum(kNumParams, {"Nowhere"}, {OutputModeLabels});
}

}  // namespace
}  // namespace orvantesco
