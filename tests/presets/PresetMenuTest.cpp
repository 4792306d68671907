#include "presets/PresetMenu.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

using Texts = std::vector<std::string>;

/// A library of these paths; those of folders end in "/".
PresetCatalogue catalogueOf(const Texts& paths) {
  PresetCatalogue catalogue;
  catalogue.hasRoot = true;
  const auto nameIn = [](const std::string& path) { return path.substr(path.rfind('/') + 1); };
  for (const std::string& path : paths) {
    if (path.ends_with('/')) {
      catalogue.presetFolders.push_back({nameIn(path.substr(0, path.size() - 1)), path});
    } else {
      catalogue.presetFiles.push_back({nameIn(path), path, ".txt"});
    }
  }
  arrange(catalogue);
  return catalogue;
}

const PresetCatalogue& library() {
  static const PresetCatalogue catalogue =
      catalogueOf({"/Factory Presets/", "/Factory Presets/Echo/", "/Factory Presets/Echo/Slap",
                   "/Factory Presets/Wide", "/User Presets/", "/User Presets/Echo/",
                   "/User Presets/Echo/Deep/", "/User Presets/Echo/Deep/Well",
                   "/User Presets/Echo/Slap", "/User Presets/Wide", "/User Presets/Mine"});
  return catalogue;
}

PresetMenu builtMenu() {
  PresetMenu menu;
  menu.build(library());
  return menu;
}

/// Texts of a menu; those of a submenu with ">".
Texts textsOf(const PresetMenu& menu, std::size_t node) {
  Texts texts;
  for (const PopupItem& item : menu.nodes().at(node).menu.items) {
    texts.push_back(item.submenu == kNoNode ? item.text : item.text + ">");
  }
  return texts;
}

Texts checkedPaths(const PresetMenu& menu) {
  Texts paths;
  for (const PresetMenuNode& node : menu.nodes()) {
    for (const PopupItem& item : node.menu.items) {
      if (item.isChecked()) paths.push_back(item.relativePath);
    }
  }
  return paths;
}

TEST(PresetMenu, TheRootShowsBothTreesUnderTheirHeadings) {
  const PresetMenu menu = builtMenu();
  EXPECT_EQ(textsOf(menu, 0), (Texts{"--  User  Presets  --", "Mine", "Wide", "Echo>",
                                     "--  Factory  Presets  --", "Wide", "Echo>"}));
  EXPECT_EQ(menu.nodes()[0].name, "");
  EXPECT_EQ(menu.nodes()[0].relativePath, "/User Presets/");
  EXPECT_EQ(menu.nodes()[0].menu.items[0].flags, kPopupHeading);
  EXPECT_EQ(menu.nodes()[0].menu.items[4].flags, kPopupHeading);
}

TEST(PresetMenu, EachFolderBelowATreeHasAMenuInThatOfItsParent) {
  const PresetMenu menu = builtMenu();
  ASSERT_EQ(menu.nodes().size(), 4u);
  EXPECT_EQ(menu.nodes()[1].relativePath, "/User Presets/Echo/");
  EXPECT_EQ(menu.nodes()[1].name, "Echo");
  EXPECT_EQ(textsOf(menu, 1), (Texts{"Slap", "Deep>"}));
  EXPECT_EQ(textsOf(menu, 2), Texts{"Well"});
  EXPECT_EQ(menu.nodes()[1].menu.items[1].submenu, 2);
  EXPECT_EQ(menu.nodes()[3].relativePath, "/Factory Presets/Echo/");
  EXPECT_EQ(menu.nodes()[0].menu.items[6].submenu, 3);
}

TEST(PresetMenu, AnEmptyTreeIsItsHeadingAlone) {
  PresetMenu menu;
  menu.build(catalogueOf({"/Factory Presets/", "/User Presets/"}));
  EXPECT_EQ(textsOf(menu, 0), (Texts{"--  User  Presets  --", "--  Factory  Presets  --"}));
}

TEST(PresetMenu, WithoutItsRootFolderTheMenuIsEmpty) {
  PresetMenu menu = builtMenu();
  menu.build({});
  ASSERT_EQ(menu.nodes().size(), 1u);
  EXPECT_EQ(textsOf(menu, 0), Texts{});
  EXPECT_EQ(menu.nodes()[0].relativePath, "/User Presets/");
}

TEST(PresetMenu, OneItemOfAllIsChecked) {
  PresetMenu menu = builtMenu();
  EXPECT_EQ(checkedPaths(menu), Texts{});
  EXPECT_TRUE(menu.choose({1, 0}));
  EXPECT_TRUE(menu.choose({3, 0}));
  EXPECT_EQ(checkedPaths(menu), Texts{"/Factory Presets/Echo/Slap"});
  EXPECT_EQ(menu.nodes()[1].menu.chosenIndex, kNoItem);
  EXPECT_EQ(menu.nodes()[3].menu.chosenIndex, 0);
  EXPECT_EQ(menu.selectedPath(), "/Factory Presets/Echo/Slap");
}

TEST(PresetMenu, WhatIsNoPresetCannotBeChosen) {
  PresetMenu menu = builtMenu();
  ASSERT_TRUE(menu.choose({0, 1}));
  for (const PresetMenuPlace place :
       {PresetMenuPlace{0, 0}, {0, 3}, {0, -1}, {0, 7}, {-1, 0}, {4, 0}, {99, 99}}) {
    EXPECT_FALSE(menu.choose(place)) << place.node << ", " << place.item;
  }
  EXPECT_EQ(checkedPaths(menu), Texts{"/User Presets/Mine"});
}

TEST(PresetMenu, EveryPresetOfTheOrderCanBeSelectedByItsPath) {
  PresetMenu menu = builtMenu();
  for (const PresetEntry& entry : library().presetOrder) {
    EXPECT_TRUE(menu.selectFile(menu.fileOf(entry.relativePath)));
    EXPECT_EQ(menu.selectedPath(), entry.relativePath);
    EXPECT_EQ(checkedPaths(menu), Texts{entry.relativePath});
  }
  EXPECT_EQ(menu.fileOf("/User Presets/Echo"), "");
  EXPECT_EQ(menu.fileOf(""), "");
  EXPECT_FALSE(menu.selectFile(""));
}

TEST(PresetMenu, ASelectionIsFolderAndItem) {
  PresetMenu menu = builtMenu();
  EXPECT_EQ(menu.selection().folderPath, "");
  EXPECT_EQ(menu.selection().itemIndex, -1);
  ASSERT_TRUE(menu.selectFile(menu.fileOf("/User Presets/Echo/Deep/Well")));
  EXPECT_EQ(menu.selection().folderPath, "/User Presets/Echo/Deep/");
  EXPECT_EQ(menu.selection().itemIndex, 0);
  PresetMenu other = builtMenu();
  EXPECT_TRUE(other.select(menu.selection()));
  EXPECT_EQ(checkedPaths(other), Texts{"/User Presets/Echo/Deep/Well"});
}

TEST(PresetMenu, ASelectionOfAnotherMachineHarmsNothing) {
  PresetMenu menu = builtMenu();
  ASSERT_TRUE(menu.selectFile(menu.fileOf("/User Presets/Mine")));
  EXPECT_FALSE(menu.select({"/User Presets/Gone/", 0}));
  EXPECT_EQ(checkedPaths(menu), Texts{"/User Presets/Mine"});
  for (const int item : {-1, 1, 2, 99, -2147483647 - 1}) {
    EXPECT_TRUE(menu.select({"/User Presets/Echo/", item}));
    EXPECT_EQ(checkedPaths(menu), Texts{});
    EXPECT_EQ(menu.selection().folderPath, "/User Presets/Echo/");
    EXPECT_EQ(menu.selectedPath(), "");
  }
}

TEST(PresetMenu, ASelectionOutlastsABuildWhileItsFileIsThere) {
  PresetMenu menu = builtMenu();
  ASSERT_TRUE(menu.selectFile(menu.fileOf("/User Presets/Wide")));
  menu.build(catalogueOf({"/User Presets/", "/User Presets/Another", "/User Presets/Wide"}));
  EXPECT_EQ(checkedPaths(menu), Texts{"/User Presets/Wide"});
  EXPECT_EQ(menu.selection().itemIndex, 2);
  menu.build(catalogueOf({"/User Presets/", "/User Presets/Another"}));
  EXPECT_EQ(menu.selectedPath(), "");
}

TEST(PresetMenu, AUsersFolderNamedAsTheOtherTreeStaysHis) {
  PresetMenu menu;
  menu.build(catalogueOf({"/User Presets/", "/User Presets/Factory Presets/",
                          "/User Presets/Factory Presets/One", "/Factory Presets/"}));
  EXPECT_EQ(textsOf(menu, 0),
            (Texts{"--  User  Presets  --", "Factory Presets>", "--  Factory  Presets  --"}));
}

}  // namespace
}  // namespace orvantesco
