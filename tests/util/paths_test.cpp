#include <lpconv/util/paths.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace lpconv {
namespace {

TEST(BaseNameTest, Table) {
  struct Case {
    const char* path;
    std::string base, dir;
  };
  const std::vector<Case> cases = {
      {"/usr/x/prog", "prog", "/usr/x/"},
      {"prog", "prog", ""},
      {"dir/", "", "dir/"},
      {"/", "", "/"},
      {"", "", ""},
      {"a/b/c.lp", "c.lp", "a/b/"},
      {"./m.lp", "m.lp", "./"},
      {"//x", "x", "//"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(std::string(baseName(c.path)), c.base);
    EXPECT_EQ(dirName(c.path), c.dir);
  }
}

TEST(BaseNameTest, PointsIntoThePath) {
  const char* path = "a/bc";
  EXPECT_EQ(baseName(path), path + 2);
  EXPECT_EQ(baseName("abc"), std::string("abc"));
}

TEST(FindSubstringTest, Table) {
  const char* text = "Subject To";
  EXPECT_EQ(findSubstring(text, "ject"), text + 3);
  EXPECT_EQ(findSubstring(text, "Subject To!"), nullptr);
  EXPECT_EQ(findSubstring(text, "to"), nullptr);  // case matters
  EXPECT_EQ(findSubstring(text, ""), text);
  EXPECT_EQ(findSubstring("", "a"), nullptr);
  const char* overlap = "aaab";
  EXPECT_EQ(findSubstring(overlap, "aab"), overlap + 1);  // restarts after a partial match
}

// Files with chosen modification times in a fresh temporary directory.
class FileTimeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/lpconv-paths-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    dir = pattern;
  }
  void TearDown() override {
    for (const std::string& f : made) std::remove(f.c_str());
    rmdir(dir.c_str());
  }
  std::string makeFile(const std::string& name, long mtime) {
    const std::string path = dir + "/" + name;
    std::ofstream(path) << "x";
    utimbuf times{mtime, mtime};
    EXPECT_EQ(utime(path.c_str(), &times), 0);
    made.push_back(path);
    return path;
  }
  std::string dir;
  std::vector<std::string> made;
};

TEST_F(FileTimeTest, ModificationTimeInSecondsOrMinusOne) {
  EXPECT_EQ(fileModificationTime(makeFile("a", 1000000007)), 1000000007);
  EXPECT_EQ(fileModificationTime(makeFile("b", 0)), 0);
  EXPECT_EQ(fileModificationTime(dir + "/missing"), -1);
}

TEST_F(FileTimeTest, FileExists) {
  EXPECT_TRUE(fileExists(makeFile("a", 5)));
  EXPECT_FALSE(fileExists(dir + "/missing"));
  EXPECT_FALSE(fileExists(""));
}

TEST_F(FileTimeTest, UnreadableFileCountsAsMissing) {
  if (geteuid() == 0) GTEST_SKIP() << "root can open any file";
  const std::string path = makeFile("locked", 5);
  chmod(path.c_str(), 0);
  EXPECT_FALSE(fileExists(path));
  EXPECT_EQ(fileModificationTime(path), -1);
}

TEST_F(FileTimeTest, IsNewerThanTable) {
  const std::string old = makeFile("old", 1000);
  const std::string young = makeFile("young", 2000);
  const std::string twin = makeFile("twin", 2000);
  const std::string missing = dir + "/missing";
  EXPECT_TRUE(isNewerThan(young, old));
  EXPECT_FALSE(isNewerThan(old, young));
  EXPECT_FALSE(isNewerThan(young, twin));  // strictly newer only
  EXPECT_TRUE(isNewerThan(old, missing));
  EXPECT_FALSE(isNewerThan(missing, old));
  EXPECT_FALSE(isNewerThan(missing, missing));
}

}  // namespace
}  // namespace lpconv
