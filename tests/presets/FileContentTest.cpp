#include "presets/FileContent.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/FolderRig.h"

namespace orvantesco {
namespace {

std::string contentOf(const std::string& path, std::size_t limit = 1000) {
  const auto result = readFile(path, limit);
  const auto* error = std::get_if<FileError>(&result);
  return error != nullptr ? "error: " + error->message : std::get<std::string>(result);
}

TEST(FileContent, ReadsAnyBytes) {
  const FolderRig folder;
  const std::string bytes("a\0\xFF\r\n", 5);
  EXPECT_EQ(contentOf(folder.write("a", bytes)), bytes);
  EXPECT_EQ(contentOf(folder.write("empty", "")), "");
}

TEST(FileContent, RefusesWhatIsMissingNoFileOrTooLong) {
  const FolderRig folder;
  EXPECT_EQ(contentOf(folder.file("a")), "error: No such file or directory");
  EXPECT_EQ(contentOf(folder.path()), "error: is no regular file");
  ::mkfifo(folder.file("pipe").c_str(), 0600);
  EXPECT_EQ(contentOf(folder.file("pipe")), "error: is no regular file") << "without waiting";
  const std::string path = folder.write("long", std::string(1001, 'x'));
  EXPECT_EQ(contentOf(path), "error: is longer than 1000 bytes");
  EXPECT_EQ(contentOf(path, 1001).size(), 1001u);
}

TEST(FileContent, WritesUnderATemporaryNameAndLeavesNoneBehind) {
  const FolderRig folder;
  EXPECT_EQ(writeFile(folder.file("a"), "one"), "");
  EXPECT_EQ(writeFile(folder.file("a"), "two"), "");
  EXPECT_EQ(folder.read("a"), "two");
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"a"}));
}

TEST(FileContent, KeepsLinksAndPermissions) {
  const FolderRig folder;
  folder.write("target", "old");
  ::chmod(folder.file("target").c_str(), 0600);
  ASSERT_EQ(::symlink("target", folder.file("link").c_str()), 0);
  EXPECT_EQ(writeFile(folder.file("link"), "new"), "");
  EXPECT_EQ(folder.read("target"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
  struct stat status {};
  ::stat(folder.file("target").c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
}

TEST(FileContent, RefusesToReplaceWhatIsNoFile) {
  const FolderRig folder;
  const std::string refusal = "is there and no regular file, expected a file name";
  EXPECT_EQ(writeFile(folder.path(), "x"), refusal);
  EXPECT_EQ(writeFile("/dev/null", "x"), refusal);
  EXPECT_EQ(writeFile(folder.file("no folder/a"), "x"), "No such file or directory");
  ASSERT_EQ(::symlink("nowhere", folder.file("link").c_str()), 0);
  EXPECT_EQ(writeFile(folder.file("link"), "x"), refusal);
}

}  // namespace
}  // namespace orvantesco
