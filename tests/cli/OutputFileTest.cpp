#include "cli/OutputFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "cli/AudioFiles.h"
#include "cli/Failing.h"
#include "cli/ProgramRun.h"

namespace orvantesco::cli {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
 protected:
  void writeNew(const std::string& name) {
    OutputFile file(folder.file(name));
    file.write("new", 3);
    file.commit();
  }
  TemporaryFolder folder;
};

TEST_F(OutputFileTest, TakesItsNameOnlyWhenItIsComplete) {
  OutputFile file(folder.file("out"));
  file.write("new", 3);
  EXPECT_FALSE(fs::exists(folder.file("out")));
  EXPECT_EQ(folder.entries().size(), 1u);
  file.commit();
  EXPECT_EQ(bytesOf(folder.file("out")), "new");
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"out"});
}

TEST_F(OutputFileTest, LeavesWhatWasThereWhenItIsGivenUp) {
  writeBytes(folder.file("out"), "old");
  { OutputFile(folder.file("out")).write("new", 3); }
  EXPECT_EQ(bytesOf(folder.file("out")), "old");
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"out"});
}

TEST_F(OutputFileTest, ReplacesAFileAndKeepsItsPermissions) {
  writeBytes(folder.file("out"), "old and longer");
  fs::permissions(folder.file("out"), fs::perms::owner_read | fs::perms::owner_write);
  writeNew("out");
  EXPECT_EQ(bytesOf(folder.file("out")), "new");
  EXPECT_EQ(fs::status(folder.file("out")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(OutputFileTest, ReplacesTheFileThatALinkLeadsToAndKeepsTheLink) {
  writeBytes(folder.file("target"), "old");
  fs::create_symlink("target", folder.file("link"));
  writeNew("link");
  EXPECT_TRUE(fs::is_symlink(folder.file("link")));
  EXPECT_EQ(bytesOf(folder.file("target")), "new");
}

TEST_F(OutputFileTest, RefusesWhatIsNoRegularFile) {
  ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
  fs::create_directory(folder.file("folder"));
  fs::create_symlink("nowhere", folder.file("broken"));
  fs::create_symlink("/dev/null", folder.file("null"));
  for (const char* name : {"pipe", "folder", "broken", "null"}) {
    const std::string path = folder.file(name);
    const std::string why = failureOf(ExitCode::workFailed, [&] { OutputFile{path}; });
    EXPECT_NE(why.find("regular file"), std::string::npos) << why;
    EXPECT_EQ(why.rfind(path, 0), 0u) << why;
  }
  EXPECT_EQ(folder.entries().size(), 4u);
}

TEST_F(OutputFileTest, RefusesAFolderThatIsNotThere) {
  const std::string why =
      failureOf(ExitCode::workFailed, [&] { OutputFile{folder.file("absent/out")}; });
  EXPECT_NE(why.find("No such file"), std::string::npos) << why;
}

TEST_F(OutputFileTest, TakesNamesAsLongAsTheSystemDoes) {
  const std::string longest(255, 'x');
  writeNew(longest);
  EXPECT_EQ(bytesOf(folder.file(longest)), "new");
}

}  // namespace
}  // namespace orvantesco::cli
