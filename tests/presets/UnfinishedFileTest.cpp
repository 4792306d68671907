#include "presets/UnfinishedFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "support/FolderRig.h"

namespace orvantesco {
namespace {

using Names = std::vector<std::string>;

TEST(UnfinishedFile, GoesWithoutATraceWhereItIsGivenUp) {
  const FolderRig folder;
  folder.write("a", "old");
  {
    UnfinishedFile file(folder.file("a"));
    EXPECT_EQ(file.write("new", 3), 3);
    EXPECT_EQ(folder.files().size(), 2u) << "it has a name of its own meanwhile";
  }
  EXPECT_EQ(folder.files(), Names{"a"});
  EXPECT_EQ(folder.read("a"), "old");
}

TEST(UnfinishedFile, IsReadAndChangedBeforeItTakesItsName) {
  const FolderRig folder;
  UnfinishedFile file(folder.file("a"));
  file.write("abcdef", 6);
  EXPECT_EQ(file.seek(2, SEEK_SET), 2);
  char two[2] = {};
  EXPECT_EQ(file.read(two, 2), 2);
  EXPECT_EQ(std::string(two, 2), "cd");
  file.write("E", 1);
  EXPECT_EQ(file.size(), 6);
  EXPECT_TRUE(file.replaceTarget());
  EXPECT_EQ(file.temporaryName(), "");
  EXPECT_EQ(folder.read("a"), "abcdEf");
  EXPECT_EQ(folder.files(), Names{"a"});
}

TEST(UnfinishedFile, TellsWhatFailedFirstAndTakesNoNameAfterIt) {
  const FolderRig folder;
  UnfinishedFile file(folder.file("absent/a"));
  EXPECT_EQ(file.fault(), ENOENT);
  EXPECT_EQ(file.write("x", 1), 0);
  EXPECT_FALSE(file.replaceTarget());
  EXPECT_FALSE(file.becomeTarget());
  EXPECT_EQ(file.faultText(), "No such file or directory");
  EXPECT_EQ(file.temporaryName(), "");
}

TEST(UnfinishedFile, TakesOnlyAFreeNameWhereItIsToBecomeANewFile) {
  const FolderRig folder;
  folder.write("a", "old");
  {
    UnfinishedFile file(folder.file("a"));
    EXPECT_FALSE(file.becomeTarget());
    EXPECT_EQ(file.fault(), EEXIST);
  }
  EXPECT_EQ(folder.read("a"), "old");
  EXPECT_EQ(folder.files(), Names{"a"});
}

TEST(FileTarget, IsWhereALinkLeadsTo) {
  const FolderRig folder;
  folder.write("deep/target", "old");
  ASSERT_EQ(::symlink("deep/target", folder.file("link").c_str()), 0);
  EXPECT_EQ(fileTargetOf(folder.file("link")).path, folder.file("deep/target"));
  EXPECT_EQ(fileTargetOf(folder.file("new")).path, folder.file("new"));
  EXPECT_EQ(fileTargetOf(folder.file("new")).fault, "");
  EXPECT_NE(fileTargetOf(folder.path()).fault, "");
}

}  // namespace
}  // namespace orvantesco
