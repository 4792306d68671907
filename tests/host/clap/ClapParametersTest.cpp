// The parameters as a host lists, shows and sets them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

#include "core/EffectMenu.h"
#include "host/clap/ClapInstance.h"
#include "host/clap/ClapParameters.h"

namespace orvantesco {
namespace {

constexpr clap_id kBypass = ClapParameters::bypassId;

clap_param_info_t infoAt(const ClapInstance& instance, std::uint32_t place) {
  clap_param_info_t info{};
  EXPECT_TRUE(instance.params().get_info(instance.plugin, place, &info));
  return info;
}

bool isStepped(const clap_param_info_t& info) { return info.flags & CLAP_PARAM_IS_STEPPED; }

double fromText(const ClapInstance& instance, clap_id id, const char* text) {
  double value = -1e9;
  instance.params().text_to_value(instance.plugin, id, text, &value);
  return value;
}

TEST(ClapParameters, TheBankIsListedByIndexAndTheBypassBehindIt) {
  const ClapInstance instance;
  ASSERT_EQ(instance.params().count(instance.plugin), 1096u);
  for (std::uint32_t place = 0; place < 1095; ++place) {
    EXPECT_EQ(infoAt(instance, place).id, place);
  }
  const clap_param_info_t bypass = infoAt(instance, 1095);
  EXPECT_EQ(bypass.id, 0x10000u);
  EXPECT_TRUE(bypass.flags & CLAP_PARAM_IS_BYPASS);
  clap_param_info_t none{};
  EXPECT_FALSE(instance.params().get_info(instance.plugin, 1096, &none));
}

TEST(ClapParameters, AreListedAlikeWhateverTheySayNow) {
  ClapInstance instance;
  const clap_param_info_t before = infoAt(instance, kLfoRate + 1);
  instance.in.value(0, kLfoSync + 1, 1.0);
  instance.flush();
  const clap_param_info_t after = infoAt(instance, kLfoRate + 1);
  EXPECT_STREQ(after.name, "LFO Rate 2");
  EXPECT_STREQ(after.name, before.name);
  EXPECT_EQ(after.default_value, before.default_value);
  EXPECT_EQ(after.flags, before.flags);
  EXPECT_NE(instance.text(kLfoRate + 1, 0.5).find('/'), std::string::npos)
      << "the rate is in notes";
}

TEST(ClapParameters, EachHasAnAutomatableRangeAndAPlaceOfItsOwn) {
  const ClapInstance instance;
  std::set<std::string> places;
  for (std::uint32_t place = 0; place < 1096; ++place) {
    const clap_param_info_t info = infoAt(instance, place);
    EXPECT_TRUE(info.flags & CLAP_PARAM_IS_AUTOMATABLE) << info.name;
    EXPECT_LT(info.min_value, info.max_value) << info.name;
    EXPECT_GE(info.default_value, info.min_value) << info.name;
    EXPECT_LE(info.default_value, info.max_value) << info.name;
    EXPECT_TRUE(places.insert(std::string(info.module) + "/" + info.name).second) << info.name;
    EXPECT_TRUE(!isStepped(info) || info.min_value == std::floor(info.min_value)) << info.name;
  }
  EXPECT_STREQ(infoAt(instance, kFeedback).name, "Feedback 1");
  EXPECT_STREQ(infoAt(instance, kDelayMode + 2).name, "Delay Mode 3");
}

TEST(ClapParameters, AFreshInstanceStandsAtItsDefaults) {
  const ClapInstance instance;
  for (std::uint32_t place = 0; place < 1096; ++place) {
    const clap_param_info_t info = infoAt(instance, place);
    EXPECT_NEAR(instance.value(info.id), info.default_value, 1e-12) << info.name;
  }
}

TEST(ClapParameters, ChoicesAreNamedAndSmoothOnesAreNot) {
  const ClapInstance instance;
  EXPECT_TRUE(infoAt(instance, kDelayMode).flags & kClapParamIsEnum);
  EXPECT_TRUE(isStepped(infoAt(instance, kDelayMode)));
  EXPECT_FALSE(isStepped(infoAt(instance, kFeedback)));
  EXPECT_EQ(infoAt(instance, kFeedback).max_value, 1.0);
  EXPECT_EQ(instance.text(kDelayMode, 0.0), "FORWARD");
  EXPECT_EQ(instance.text(kFeedback, 0.5), "80.0 %");
  EXPECT_EQ(instance.text(kBypass, 1.0), "on");
}

/// Text and value lead to each other: what is shown can be typed in again.
TEST(ClapParameters, WhatIsShownCanBeTypedIn) {
  const ClapInstance instance;
  for (std::uint32_t place = 0; place < 1096; ++place) {
    const clap_param_info_t info = infoAt(instance, place);
    for (int part = 0; part <= 10; ++part) {
      const double value = info.min_value + (info.max_value - info.min_value) * part / 10.0;
      const std::string text = instance.text(info.id, value);
      double typed = -1e9;
      ASSERT_FALSE(text.empty()) << info.name;
      ASSERT_TRUE(instance.params().text_to_value(instance.plugin, info.id, text.c_str(), &typed))
          << info.name << ": " << text;
      EXPECT_EQ(instance.text(info.id, typed), text) << info.name;
    }
  }
}

TEST(ClapParameters, AnEffectHasTheNameThatTheMenuOfItsStageGivesIt) {
  const ClapInstance instance;
  for (const int index : {kFxTypePre, kFxTypeFeedback + 1, kFxTypePost + 3}) {
    const auto id = static_cast<clap_id>(index);
    const LabelList menu = effectMenuOf(index);
    for (std::size_t entry = 0; entry < menu.size(); ++entry) {
      EXPECT_EQ(instance.text(id, static_cast<double>(entry)), menu[entry]);
      EXPECT_EQ(fromText(instance, id, menu[entry]), static_cast<double>(entry));
    }
  }
}

TEST(ClapParameters, TextsAreCutToTheRoomOfTheHost) {
  const ClapInstance instance;
  char room[5] = "????";
  EXPECT_TRUE(instance.params().value_to_text(instance.plugin, kDelayMode, 0.0, room, 4));
  EXPECT_STREQ(room, "FOR");
  EXPECT_FALSE(instance.params().value_to_text(instance.plugin, kDelayMode, 0.0, room, 0));
  EXPECT_FALSE(instance.params().value_to_text(instance.plugin, kDelayMode, std::nan(""), room, 5));
}

TEST(ClapParameters, WhatIsNoTextOfTheParameterIsRefused) {
  const ClapInstance instance;
  EXPECT_EQ(fromText(instance, kDelayMode, "SIDEWAYS"), -1e9);
  EXPECT_EQ(fromText(instance, kBypass, "perhaps"), -1e9);
  EXPECT_EQ(fromText(instance, kBypass, " ON "), 1.0);
  EXPECT_EQ(fromText(instance, kBypass, "0"), 0.0);
}

TEST(ClapParameters, UnknownIdsAreRefusedAndTouchNothing) {
  ClapInstance instance;
  const auto before = instance.state();
  double value = 0.0;
  for (const clap_id id : {1095u, 1096u, kBypass - 1, kBypass + 1, CLAP_INVALID_ID}) {
    EXPECT_FALSE(instance.params().get_value(instance.plugin, id, &value)) << id;
    EXPECT_EQ(instance.text(id, 0.0), "") << id;
    EXPECT_EQ(fromText(instance, id, "1"), -1e9) << id;
    instance.in.value(0, id, 1.0);
  }
  instance.flush();
  EXPECT_EQ(instance.state(), before);
}

TEST(ClapParameters, ValuesArriveWithoutAudio) {
  ClapInstance instance;
  instance.in.value(0, kFeedback, 0.25);
  instance.in.value(0, kDelayMode, 2.0);
  instance.in.value(0, kBypass, 1.0);
  instance.flush();
  EXPECT_EQ(instance.value(kFeedback), 0.25);
  EXPECT_EQ(instance.value(kDelayMode), 2.0);
  EXPECT_EQ(instance.value(kBypass), 1.0);
}

TEST(ClapParameters, ValuesOutsideAreHeldAndWhatIsNoNumberIsIgnored) {
  ClapInstance instance;
  instance.in.value(0, kFeedback, 7.0);
  instance.in.value(0, kDelayMode, -3.0);
  instance.flush();
  EXPECT_EQ(instance.value(kFeedback), 1.0);
  EXPECT_EQ(instance.value(kDelayMode), 0.0);
  instance.in.value(0, kFeedback, std::nan(""));
  instance.in.value(0, kBypass, std::nan(""));
  instance.flush();
  EXPECT_EQ(instance.value(kFeedback), 1.0);
}

TEST(ClapParameters, AStepCountsFromItsWholeNumberOn) {
  ClapInstance instance;
  for (const double sent : {2.0, 2.0 - 1e-9, 2.7}) {
    instance.in.value(0, kDelayMode, 0.0);
    instance.in.value(0, kDelayMode, sent);
    instance.flush();
    EXPECT_EQ(instance.value(kDelayMode), 2.0) << sent;
  }
}

/// A host that sends back all that it has read changes nothing, down to the last bit.
TEST(ClapParameters, BringingBackWhatWasReadChangesNothing) {
  ClapInstance instance;
  for (clap_id id = 0; id < 1095; ++id) {
    instance.in.value(0, id, 0.1 + 0.0007 * id - std::floor(0.1 + 0.0007 * id));
  }
  instance.flush();
  const auto before = instance.state();
  for (clap_id id = 0; id < 1095; ++id) instance.in.value(0, id, instance.value(id));
  instance.flush();
  EXPECT_EQ(instance.state(), before);
}

/// The range of this one changes with the LFO's mode; for a host it must not.
TEST(ClapParameters, TheRateOfAnLfoKeepsItsRangeInNotes) {
  ClapInstance instance;
  const clap_param_info_t inHz = infoAt(instance, kLfoRate);
  instance.in.value(0, kLfoSync, 1.0);
  instance.flush();
  const clap_param_info_t inNotes = infoAt(instance, kLfoRate);
  EXPECT_EQ(inNotes.min_value, inHz.min_value);
  EXPECT_EQ(inNotes.max_value, inHz.max_value);
  EXPECT_EQ(inNotes.flags, inHz.flags);
  EXPECT_NE(instance.text(kLfoRate, 0.0), "0.00 Hz");
  EXPECT_GT(instance.host.callbacks, 0);
  instance.plugin->on_main_thread(instance.plugin);
  EXPECT_TRUE(instance.host.rescanned & CLAP_PARAM_RESCAN_TEXT);
}

}  // namespace
}  // namespace orvantesco
