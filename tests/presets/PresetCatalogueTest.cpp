#include "presets/PresetCatalogue.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

std::vector<PresetEntry> orderOf(const std::vector<std::string>& paths) {
  std::vector<PresetEntry> order;
  for (const std::string& path : paths) order.push_back({path.substr(path.rfind('/') + 1), path});
  return order;
}

/// Where each step leads from the first preset on, until a preset comes again.
std::vector<std::string> journey(const std::vector<PresetEntry>& order, bool forward) {
  std::vector<std::string> stations;
  std::string path;
  for (std::size_t step = 0; step <= order.size(); ++step) {
    path = stepFrom(order, path, forward)->relativePath;
    if (!stations.empty() && path == stations.front()) break;
    stations.push_back(path);
  }
  return stations;
}

TEST(PresetCatalogue, StepsWrapAtBothEnds) {
  const auto order = orderOf({"/a", "/b", "/c"});
  EXPECT_EQ(journey(order, true), (std::vector<std::string>{"/a", "/b", "/c"}));
  EXPECT_EQ(journey(order, false), (std::vector<std::string>{"/c", "/b", "/a"}));
  EXPECT_EQ(stepFrom(order, "/c", true)->relativePath, "/a");
  EXPECT_EQ(stepFrom(order, "/a", false)->relativePath, "/c");
}

TEST(PresetCatalogue, WithoutASelectionForwardIsTheFirstAndBackwardTheLast) {
  const auto order = orderOf({"/a", "/b", "/c"});
  for (const char* path : {"", "/gone"}) {
    EXPECT_EQ(stepFrom(order, path, true)->relativePath, "/a");
    EXPECT_EQ(stepFrom(order, path, false)->relativePath, "/c");
  }
}

TEST(PresetCatalogue, NoStepIsPossibleWithoutPresets) {
  EXPECT_EQ(stepFrom({}, "", true), nullptr);
}

TEST(PresetCatalogue, StepsPassFilesThatDifferInTheirExtensionOnly) {
  const auto order = orderOf({"/a", "/b", "/b", "/b", "/c"});
  EXPECT_EQ(journey(order, true), (std::vector<std::string>{"/a", "/b", "/c"}));
  EXPECT_EQ(journey(order, false), (std::vector<std::string>{"/c", "/b", "/a"}));
}

TEST(PresetCatalogue, OnePresetStepsToItself) {
  const auto order = orderOf({"/a"});
  EXPECT_EQ(stepFrom(order, "/a", true)->relativePath, "/a");
  EXPECT_EQ(stepFrom(order, "/a", false)->relativePath, "/a");
}

TEST(PresetCatalogue, AParentIsTheFolderAround) {
  EXPECT_EQ(parentOf("/User Presets/Echo/"), "/User Presets/");
  EXPECT_EQ(parentOf("/User Presets/"), "/");
  EXPECT_EQ(parentOf("/User Presets/Slap"), "/User Presets/");
  EXPECT_EQ(parentOf("/"), "");
  EXPECT_EQ(parentOf(""), "");
}

TEST(PresetCatalogue, ParentsComeBeforeTheirChildrenWhateverTheirCase) {
  PresetCatalogue catalogue;
  for (const char* path : {"/User Presets/a/b/", "/User Presets/A/x/", "/User Presets/A B/",
                           "/User Presets/a/", "/User Presets/A/", "/User Presets/"}) {
    catalogue.presetFolders.push_back({"", path});
  }
  arrange(catalogue);
  const auto contents = contentOf(catalogue, "/User Presets/");
  ASSERT_EQ(contents.size(), 6u);
  std::vector<std::string> seen;
  for (const auto& content : contents) {
    const std::string_view parent = parentOf(content.folder->relativePath);
    const bool isKnown = parent == "/" || std::find(seen.begin(), seen.end(), parent) != seen.end();
    EXPECT_TRUE(isKnown) << content.folder->relativePath;
    seen.push_back(content.folder->relativePath);
  }
}

}  // namespace
}  // namespace orvantesco
