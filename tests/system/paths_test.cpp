#include "system/paths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "system/accounts.h"
#include "tests/support/current_folder.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_vectors.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using namespace std::string_literals;

TEST(StandardPath, IsThePlatforms) {
  for (const auto& line : vectorsIn("standardise.jsonl")) {
    EXPECT_EQ(standardisePath(textOf(line, "path")), textOf(line, "standard"));
  }
}

TEST(StandardPath, HasNoDotsNoRepeatedSlashesAndNoSlashAtItsEnd) {
  struct Case {
    std::string path, standard;
  };
  for (const Case& c :
       {Case{"/a/./b", "/a/b"}, Case{"/./a", "/a"}, Case{"/a/..", "/"}, Case{"/a/../..", "/"},
        Case{"/../../a", "/a"}, Case{"/a/b/../../c", "/c"}, Case{"/a//b", "/a/b"},
        Case{"///a///b///", "/a/b"}, Case{"/a//../b", "/b"}, Case{"/a/...", "/a/..."}, Case{"/a/.b", "/a/.b"},
        Case{"/a/b..", "/a/b.."}, Case{"/a/ ", "/a/ "}, Case{"/a/ /..", "/a"},
        Case{"/\xFF/..//b\xFE", "/b\xFE"}, Case{"/a\0/../b"s, "/b"}, Case{"/a/~", "/a/~"}}) {
    EXPECT_EQ(standardisePath(c.path), c.standard) << c.path;
  }
}

TEST(StandardPath, LeavesLinksUnresolved) {
  const TemporaryFolder folder;
  makeFolder(folder.below("elsewhere/inside"));
  makeLink(folder.below("link"), folder.below("elsewhere/inside"));
  EXPECT_EQ(standardisePath(folder.below("link/../a")), folder.below("a"));
}

TEST(Tilde, IsTheHomeDirectoryAtTheStartOnly) {
  const ScopedVariable home("HOME", "/home/ann");
  struct Case {
    std::string path, expanded;
  };
  for (const Case& c : {Case{"~", "/home/ann"}, Case{"~/Journal", "/home/ann/Journal"},
                        Case{"~/a/~", "/home/ann/a/~"}, Case{"", ""}, Case{"/~", "/~"}, Case{"a~", "a~"},
                        Case{" ~/a", " ~/a"}, Case{"./~/a", "./~/a"}, Case{"\uFF5E/a", "\uFF5E/a"}}) {
    EXPECT_EQ(expandTilde(c.path), c.expanded) << c.path;
  }
}

TEST(Tilde, LeavesOneSlashAfterAHomeThatEndsInOne) {
  const ScopedVariable home("HOME", "/");
  EXPECT_EQ(expandTilde("~/a"), "/a");
  EXPECT_EQ(expandTilde("~"), "/");
}

TEST(Tilde, WithANameIsThatUsersHomeDirectory) {
  const std::string root = homeDirectoryOf("root").value();
  EXPECT_EQ(expandTilde("~root"), root);
  EXPECT_EQ(expandTilde("~root/a.md"), joinPath(root, "a.md"));
}

TEST(Tilde, WithANameThatNobodyHasStaysAsItIs) {
  EXPECT_EQ(expandTilde("~nobody-is-called-so/a"), "~nobody-is-called-so/a");
  EXPECT_EQ(expandTilde("~nobody-is-called-so"), "~nobody-is-called-so");
  EXPECT_EQ(expandTilde("~~"), "~~");
  EXPECT_EQ(expandTilde("~root\0x/a"s), "~root\0x/a"s);
}

TEST(AbsolutePath, OfARelativeOneLiesBelowTheCurrentDirectory) {
  const TemporaryFolder folder;
  const CurrentFolder current(folder.path());
  EXPECT_EQ(makeAbsolute("a.md"), folder.below("a.md"));
  EXPECT_EQ(makeAbsolute("../a"), folder.below("../a"));
  EXPECT_EQ(makeAbsolute("./a/"), folder.below("./a/"));
  EXPECT_EQ(makeAbsolute(" "), folder.below(" "));
  EXPECT_EQ(makeAbsolute("~x"), folder.below("~x"));
}

TEST(AbsolutePath, OfTheEmptyPathIsTheCurrentDirectory) {
  const TemporaryFolder folder;
  const CurrentFolder current(folder.path());
  EXPECT_EQ(makeAbsolute(""), folder.path());
}

TEST(AbsolutePath, OfAnAbsoluteOneIsItself) {
  EXPECT_EQ(makeAbsolute("/a/../b/"), "/a/../b/");
  EXPECT_EQ(makeAbsolute("/"), "/");
}

TEST(AbsolutePath, LiesBelowTheRootWhereThereIsNoCurrentDirectoryAnyMore) {
  const TemporaryFolder folder;
  makeFolder(folder.below("gone"));
  const CurrentFolder current(folder.below("gone"));
  ASSERT_EQ(rmdir(folder.below("gone").c_str()), 0);
  EXPECT_EQ(makeAbsolute("a"), "/a");
  EXPECT_EQ(makeAbsolute(""), "/");
}

TEST(JoinedPath, HasOneSlashBetweenFolderAndName) {
  EXPECT_EQ(joinPath("/a", "b"), "/a/b");
  EXPECT_EQ(joinPath("/a/", "b"), "/a/b");
  EXPECT_EQ(joinPath("/", "b"), "/b");
  EXPECT_EQ(joinPath("/a", "Documents/Halvane"), "/a/Documents/Halvane");
}

}  // namespace
}  // namespace halvane
