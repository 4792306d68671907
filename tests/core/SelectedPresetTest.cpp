// The selected preset of the library's menu, which a host's state carries.

#include <gtest/gtest.h>

#include "support/EngineRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// A state with the fourth preset of a folder.
StateBytes known() {
  StateBytes state;
  state.name = "Slap";
  state.folder = "U:Know";
  state.item = 3;
  state.folderPath = "/User Presets/Known/";
  state.values = defaultValues();
  return state;
}

/// A menu that knows one folder.
class OneFolderMenu : public PresetMenuPort {
 public:
  bool select(const PresetSelection& wanted) override {
    asked = wanted;
    const bool isThere = wanted.folderPath.empty() || wanted.folderPath == "/User Presets/Known/";
    if (isThere) selected = wanted;
    return isThere;
  }
  bool selectFile(const std::string& path) override {
    const bool isThere = path == "/User Presets/Known/Slap.txt";
    if (isThere) selected = {"/User Presets/Known/", 3};
    return isThere;
  }
  PresetSelection selection() const override { return selected; }

  PresetSelection asked, selected;
};

class SelectedPreset : public ::testing::Test {
 protected:
  void restore(const StateBytes& state) { rig.effect.UnserializeState(state.chunk(), 0); }
  Bytes saved() {
    StateChunk chunk;
    EXPECT_TRUE(rig.effect.SerializeState(chunk));
    return StateBytes::bytesOf(chunk);
  }

  OneFolderMenu menu;
  EngineRig rig;
};

TEST_F(SelectedPreset, AFolderThatIsGoneLeavesTheSelection) {
  rig.effect.settings().setPresetMenu(&menu);
  const StateBytes state = known();
  restore(state);
  EXPECT_EQ(saved(), state.bytes());
  StateBytes gone = state;
  gone.folderPath = "/User Presets/Gone/";
  gone.item = 9;
  restore(gone);
  EXPECT_EQ(menu.asked.folderPath, "/User Presets/Gone/");
  EXPECT_EQ(menu.asked.itemIndex, 9);
  EXPECT_EQ(saved(), state.bytes());
  rig.effect.settings().setPresetMenu(nullptr);
  EXPECT_EQ(saved(), state.bytes()) << "also when the menu has gone";
}

TEST_F(SelectedPreset, NothingSelectedClearsTheSelectionOfAMenuToo) {
  rig.effect.settings().setPresetMenu(&menu);
  const StateBytes state = known();
  restore(state);
  StateBytes nothing = state;
  nothing.folderPath.clear();
  nothing.item = -1;
  restore(nothing);
  EXPECT_EQ(saved(), nothing.bytes());
}

TEST_F(SelectedPreset, ABlockThatEndsBeforeTheFolderLeavesTheSelection) {
  restore(known());
  const Bytes whole = known().bytes();
  Bytes cut(whole.begin(), whole.begin() + 42);  // behind the place in the menu
  cut[38] = 9;
  rig.effect.UnserializeState(StateBytes::chunkOf(cut), 0);
  EXPECT_EQ(rig.effect.settings().presetSelection().itemIndex, 3);
  EXPECT_EQ(rig.effect.settings().presetSelection().folderPath, "/User Presets/Known/");
}

TEST_F(SelectedPreset, AMenuTakesTheSelectionOfTheStateBeforeIt) {
  const StateBytes state = known();
  restore(state);
  rig.effect.settings().setPresetMenu(&menu);
  EXPECT_EQ(menu.selected.folderPath, "/User Presets/Known/");
  EXPECT_EQ(menu.selected.itemIndex, 3);
  EXPECT_EQ(saved(), state.bytes());
}

TEST_F(SelectedPreset, APresetFromOutsideTheLibraryIsSelectedNowhere) {
  restore(known());
  rig.effect.settings().applyPreset(Preset{});
  EXPECT_EQ(rig.effect.settings().presetSelection().folderPath, "");
  EXPECT_EQ(rig.effect.settings().presetSelection().itemIndex, -1);
  rig.effect.settings().setPresetMenu(&menu);
  restore(known());
  rig.effect.settings().applyPreset(Preset{});
  EXPECT_EQ(menu.selected.folderPath, "");
}

}  // namespace
}  // namespace orvantesco
