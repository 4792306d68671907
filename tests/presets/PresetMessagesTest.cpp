#include "presets/PresetMessages.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(PresetMessages, SayWhatWentWrongAndWhatToDo) {
  const auto textAt = [](int code) { return textOf(static_cast<PresetMessage>(code)); };
  EXPECT_STREQ(textAt(0), "No Error");
  EXPECT_STREQ(textAt(1),
               "Could not allocate enough memory!\nPlease close and restart ORVANTESCO after "
               "freeing up space!");
  EXPECT_STREQ(textAt(3),
               "Preset was not saved to USER PRESET Folder!\nPreset won't be visible in the Preset "
               "Menu.");
  EXPECT_STREQ(textAt(4), "Could not find the Presets folder!\nPlease re-install ORVANTESCO!");
  EXPECT_STREQ(textAt(5), "Could not write Preset file!\nPlease re-install ORVANTESCO!");
  EXPECT_STREQ(textAt(6),
               "Can't write into Fatory Preset Folder!\nPlease save to User Preset Folder!");
  EXPECT_STREQ(textAt(7),
               "Saved data is newer than the actual ORVANTESCO version!\nCan't restore saved "
               "state!");
}

}  // namespace
}  // namespace orvantesco
