#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <filesystem>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/deep_folder.h"
#include "tests/support/file_names.h"
#include "tests/support/process_limits.h"
#include "tests/support/sanitizers.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "walk/file_walk.h"

namespace halvane {
namespace {

using Names = std::vector<std::string>;

// The paths below `root` of the files that the walk shows, in the order of their bytes.
Names walked(const std::string& root, const Beginning& beginning = {}) {
  Names names;
  readFilesBelow(root, ".md", beginning, [&](std::string_view path, std::string_view) {
    names.emplace_back(path.substr(root.size() + (root.ends_with('/') ? 0 : 1)));
  });
  std::sort(names.begin(), names.end());
  return names;
}

std::string joined(const Names& names) {
  std::string text;
  for (const std::string& name : names) text.append(name).append("\n");
  return text;
}

TEST(Walk, ShowsEachFileWithItsPathAndItsContent) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "first");
  writeFile(folder.below("2025/11/b.md"), "second");
  std::vector<std::pair<std::string, std::string>> shown;
  readFilesBelow(folder.path(), ".md", {},
                 [&](std::string_view path, std::string_view content) { shown.emplace_back(path, content); });
  EXPECT_EQ(shown, (std::vector<std::pair<std::string, std::string>>{
                       {folder.below("a.md"), "first"}, {folder.below("2025/11/b.md"), "second"}}));
}

TEST(Walk, TakesAFoldersFilesFirstThenItsFoldersAgainstTheOrderOfTheirBytes) {
  const TemporaryFolder folder;
  for (const char* name : {"2025.md", "2024/12.md", "2024/12/x.md", "2025/01/x.md", "2025/10/x.md",
                           "2025/9/x.md", "2025-26/x.md", "é/x.md", "z/x.md", "Z/x.md"}) {
    writeFile(folder.below(name), "");
  }
  Names names;
  readFilesBelow(folder.path(), ".md", {}, [&](std::string_view path, std::string_view) {
    names.emplace_back(path.substr(folder.path().size() + 1));
  });
  EXPECT_EQ(names, (Names{"2025.md", "é/x.md", "z/x.md", "Z/x.md", "2025-26/x.md", "2025/9/x.md",
                          "2025/10/x.md", "2025/01/x.md", "2024/12.md", "2024/12/x.md"}));
}

TEST(Walk, TakesFilesWithTheSuffixOnly) {
  const TemporaryFolder folder;
  for (const char* name : {"a.md", "b.MD", "c.Md", "d.markdown", "e", "md", "f.md.txt", "g.md~", "h.md ",
                           "i..md", "j .md", "k.mdx", "lmd"}) {
    writeFile(folder.below(name), "");
  }
  EXPECT_EQ(walked(folder.path()), (Names{"a.md", "i..md", "j .md"}));
}

TEST(Walk, LeavesOutHiddenFilesAndWhatHiddenFoldersHold) {
  const TemporaryFolder folder;
  for (const char* name :
       {".a.md", ".md", ".hidden/a.md", ".hidden/b/c.md", "shown/.a.md", "shown/b.md", "..c.md"}) {
    writeFile(folder.below(name), "");
  }
  EXPECT_EQ(walked(folder.path()), (Names{"shown/b.md"}));
}

TEST(Walk, EntersPackagesAndFoldersWithTheSuffix) {
  const TemporaryFolder folder;
  writeFile(folder.below("Notes.app/Contents/a.md"), "");
  writeFile(folder.below("folder.md/a.md"), "");
  EXPECT_EQ(walked(folder.path()), (Names{"Notes.app/Contents/a.md", "folder.md/a.md"}));
}

TEST(Walk, ReadsALinkToAFileAndEntersNoLinkToAFolder) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeFile(elsewhere.below("outside.md"), "");
  writeFile(elsewhere.below("plain"), "");
  writeFile(folder.below("a.md"), "");
  makeLink(folder.below("link.md"), elsewhere.below("outside.md"));
  makeLink(folder.below("renamed.md"), elsewhere.below("plain"));
  makeLink(folder.below("folder"), elsewhere.path());
  makeLink(folder.below("folder.md"), elsewhere.path());
  makeLink(folder.below("loop"), folder.path());
  makeLink(folder.below("dangling.md"), elsewhere.below("missing.md"));
  makeLink(folder.below("plain"), elsewhere.below("outside.md"));
  EXPECT_EQ(walked(folder.path()), (Names{"a.md", "link.md", "renamed.md"}));
}

TEST(Walk, PassesOverWhatIsNoRegularFileWithoutWaitingForIt) {
  const TemporaryFolder folder;
  makeNamedPipe(folder.below("pipe.md"));
  makeSocket(folder.below("socket.md"));
  makeFolder(folder.below("empty.md"));
  makeLink(folder.below("to-pipe.md"), folder.below("pipe.md"));
  makeLink(folder.below("to-device.md"), "/dev/zero");
  makeLink(folder.below("to-memory.md"), "/proc/self/mem");
  writeFile(folder.below("z.md"), "");
  EXPECT_EQ(walked(folder.path()), (Names{"z.md"}));
}

TEST(Walk, PassesOverWhatTheUserMayNotRead) {
  const TemporaryFolder folder;
  for (const char* name : {"a.md", "closed.md", "closed/b.md", "open/c.md", "unlisted/d.md"})
    writeFile(folder.below(name), "");
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(folder.below("closed.md").c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.below("unlisted").c_str(), 0711), 0);
  EXPECT_EQ(inChildProcess([&] {
              becomeOrdinaryUser();
              return joined(walked(folder.path()));
            }),
            "a.md\nopen/c.md\n");
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0700), 0);
}

TEST(Walk, TellsWhatItPassesOver) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "---");
  writeFile(folder.below("begins-otherwise.md"), "text");
  writeFile(folder.below("closed.md"), "---");
  writeFile(folder.below("closed/b.md"), "---");
  writeFile(folder.below("no-such-name.txt"), "text");
  makeLink(folder.below("link.md"), folder.below("nowhere"));
  chmod(folder.path().c_str(), 0755);
  chmod(folder.below("closed.md").c_str(), 0);
  chmod(folder.below("closed").c_str(), 0);
  const std::string passedOver = inChildProcess([&] {
    becomeOrdinaryUser();
    Names names;
    const std::array<std::string_view, 1> openings = {"---"};
    readFilesBelow(
        folder.path(), ".md", {openings}, [](std::string_view, std::string_view) {},
        [&](std::string_view path) { names.emplace_back(path.substr(folder.path().size() + 1)); });
    std::sort(names.begin(), names.end());
    return joined(names);
  });
  chmod(folder.below("closed").c_str(), 0755);
  EXPECT_EQ(passedOver, "begins-otherwise.md\nclosed.md\nclosed/\nlink.md\n");
}

TEST(Opening, IsAnsweredByTheSystem) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "text");
  EXPECT_EQ(errorOpening(folder.below("a.md")), std::error_code());
  EXPECT_EQ(errorOpening(folder.path()), std::error_code());
  EXPECT_EQ(errorOpeningFolder(folder.path()), std::error_code());
  EXPECT_EQ(errorOpening(folder.below("b.md")), std::errc::no_such_file_or_directory);
  EXPECT_EQ(errorOpening(folder.path() + std::string("/a.md\0", 6)), std::errc::no_such_file_or_directory);
  EXPECT_EQ(errorOpeningFolder(folder.below("a.md")), std::errc::not_a_directory);
}

TEST(Walk, OfARootThatIsMissingOrNoFolderOrClosedShowsNothing) {
  const TemporaryFolder folder;
  writeFile(folder.below("file.md"), "");
  writeFile(folder.below("closed/a.md"), "");
  makeNamedPipe(folder.below("pipe"));
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0), 0);
  EXPECT_EQ(walked(folder.below("missing")), Names{});
  EXPECT_EQ(walked(folder.below("file.md")), Names{});
  EXPECT_EQ(walked(folder.below("pipe")), Names{});
  EXPECT_EQ(walked(folder.below("file.md/x")), Names{});
  EXPECT_EQ(walked(folder.path() + std::string("\0x", 2)), Names{});
  EXPECT_EQ(inChildProcess([&] {
              becomeOrdinaryUser();
              return joined(walked(folder.below("closed")));
            }),
            "");
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0700), 0);
}

TEST(Walk, OfARootThatIsMissingShowsNoFolderEither) {
  const TemporaryFolder folder;
  int shown = 0;
  readFilesBelow(
      folder.below("missing"), ".md", {}, [&](std::string_view, std::string_view) { ++shown; },
      [&](std::string_view) { ++shown; }, [&](std::string_view, const Directory&) { ++shown; });
  EXPECT_EQ(shown, 0);
}

TEST(Walk, OfAnEmptyRootShowsNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(walked(folder.path()), Names{});
}

TEST(Walk, MayBeginAtAHiddenFolderOrAtALinkToAFolder) {
  const TemporaryFolder folder;
  writeFile(folder.below(".hidden/a.md"), "");
  makeLink(folder.below("link"), folder.below(".hidden"));
  EXPECT_EQ(walked(folder.below(".hidden")), (Names{"a.md"}));
  EXPECT_EQ(walked(folder.below("link")), (Names{"a.md"}));
}

TEST(Walk, PutsOneSlashAfterARootThatEndsInOne) {
  const TemporaryFolder folder;
  writeFile(folder.below("a/b.md"), "");
  Names paths;
  readFilesBelow(folder.path() + "/", ".md", {},
                 [&](std::string_view path, std::string_view) { paths.emplace_back(path); });
  EXPECT_EQ(paths, (Names{folder.below("a/b.md")}));
}

TEST(Walk, TakesNamesThatAreNotUtf8) {
  const TemporaryFolder folder;
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such name";
  writeFile(folder.below("\xFF\xFE.md"), "");
  writeFile(folder.below("f\xC3/a.md"), "");
  EXPECT_EQ(walked(folder.path()), (Names{"f\xC3/a.md", "\xFF\xFE.md"}));
}

TEST(Walk, ReadsOnOnlyInFilesThatBeginAsTheyShould) {
  const TemporaryFolder folder;
  constexpr std::array<std::string_view, 1> openings = {"---\n"};
  writeFile(folder.below("entry.md"), "---\nentry");
  writeFile(folder.below("other.md"), "other");
  writeFile(folder.below("empty.md"), "");
  EXPECT_EQ(walked(folder.path(), {openings}), (Names{"entry.md"}));
}

// A file that is much longer than the memory shows that its rest is not read.
TEST(Walk, ReadsOnOnlyInFilesThatMayBeWanted) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "wanted");
  writeFile(folder.below("b.md"), "not");
  ASSERT_EQ(truncate(folder.below("b.md").c_str(), off_t{1} << 40), 0);
  const auto isWanted = [](std::string_view firstBytes) { return firstBytes == "wanted"; };
  EXPECT_EQ(walked(folder.path(), {{}, isWanted}), (Names{"a.md"}));
}

TEST(Walk, GoesDeeperThanThePathsThatTheSystemTakes) {
  const TemporaryFolder folder;
  const std::string name(200, 'd');
  const std::string path = writeFileDeepBelow(folder.path(), name, 50, "deep.md", "deep");
  ASSERT_GT(path.size(), 2U * PATH_MAX);
  EXPECT_EQ(walked(folder.path()), (Names{path.substr(folder.path().size() + 1)}));
  const std::string inner = path.substr(0, path.rfind('/'));
  EXPECT_EQ(walked(inner), (Names{"deep.md"})) << "from a root whose own path is too long";
}

TEST(Walk, NeedsNoMoreThanThreeDescriptorsAtAnyDepth) {
  const TemporaryFolder folder;
  std::string path = folder.path();
  for (int level = 0; level < 200; ++level) {
    writeFile(path + "/a.md", "");
    writeFile(path + "/z/a.md", "");
    path += "/f";
  }
  writeFileDeepBelow(folder.path(), std::string(200, 'd'), 50, "deep.md", "deep");
  const std::string shown = inChildProcess([&] {
    limitFurtherDescriptors(3);
    return std::to_string(walked(folder.path()).size());
  });
  EXPECT_EQ(shown, "401");
}

// Where the way back is longer than the paths that the system takes.
TEST(Walk, NeedsNoMoreThanThreeDescriptorsOnItsWayBackEither) {
  const TemporaryFolder top;
  const std::string name(200, 'd');
  constexpr int levels = 50;
  Descriptor folder = openPath(AT_FDCWD, top.path(), toReadFolder);
  for (int level = 0; level < levels; ++level) {
    ASSERT_EQ(mkdirat(folder.number(), name.c_str(), 0755), 0);
    ASSERT_EQ(mkdirat(folder.number(), "z", 0755), 0);
    ASSERT_TRUE(Descriptor(openat(folder.number(), "z/a.md", O_WRONLY | O_CREAT | O_CLOEXEC, 0644)).isOpen());
    folder = openName(folder.number(), name.c_str(), toReadFolder);
  }
  EXPECT_EQ(inChildProcess([&] {
              limitFurtherDescriptors(3);
              return std::to_string(walked(top.path()).size());
            }),
            std::to_string(levels));
}

TEST(Walk, FindsItsWayBackFromAnyDepthHoweverManyDescriptorsThereAre) {
  const TemporaryFolder folder;
  Names expected;
  std::string below;
  for (int level = 0; level < 150; ++level) {
    for (const char* name : {"a.md", "b/a.md", "z/a.md", "z/z/a.md"}) {
      writeFile(folder.below(below + name), "");
      expected.push_back(below + name);
    }
    below += "folder/";
  }
  std::sort(expected.begin(), expected.end());
  for (const std::size_t descriptors : {3U, 4U, 5U, 8U, 100U}) {
    EXPECT_EQ(inChildProcess([&] {
                limitFurtherDescriptors(descriptors);
                return joined(walked(folder.path()));
              }),
              joined(expected))
        << descriptors;
  }
}

TEST(Walk, TakesNoFileWhoseWholeNameIsTheSuffix) {
  const TemporaryFolder folder;
  for (const char* name : {"md", "amd", "folder/md"}) writeFile(folder.below(name), "");
  Names names;
  readFilesBelow(folder.path(), "md", {},
                 [&](std::string_view path, std::string_view) { names.emplace_back(path); });
  EXPECT_EQ(names, (Names{folder.below("amd")}));
}

// The files below `folder` that the walk shows, in its order, when `change` happens as soon as it shows the
// first one. `change` is given that one's name.
Names walkedDuring(const TemporaryFolder& folder,
                   const std::function<void(const std::string& first)>& change) {
  Names names;
  readFilesBelow(folder.path(), ".md", {}, [&](std::string_view path, std::string_view) {
    names.emplace_back(path.substr(folder.path().size() + 1));
    if (names.size() == 1) change(names.front());
  });
  return names;
}

TEST(Walk, PassesOverWhatIsRemovedMeanwhile) {
  const TemporaryFolder folder;
  for (const char* name : {"a.md", "b.md", "gone/d.md", "stays/e.md"}) writeFile(folder.below(name), "");
  const Names names = walkedDuring(folder, [&](const std::string& first) {
    std::filesystem::remove(folder.below(first == "a.md" ? "b.md" : "a.md"));
    std::filesystem::remove_all(folder.below("gone"));
  });
  EXPECT_EQ(names, (Names{names.front(), "stays/e.md"}));
}

TEST(Walk, IsNotLedElsewhereByAFolderThatIsMovedMeanwhile) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeFile(elsewhere.below("outside/b/secret.md"), "");
  writeFile(elsewhere.below("outside/c/secret.md"), "");
  for (const char* name : {"d/a.md", "d/b/b.md", "c/c.md"}) writeFile(folder.below(name), "");
  const Names names = walkedDuring(folder, [&](const std::string&) {
    std::filesystem::rename(folder.below("d"), elsewhere.below("outside/d"));
  });
  for (const std::string& name : names) EXPECT_EQ(name.find("secret"), std::string::npos) << name;
  EXPECT_EQ(names.back(), "c/c.md");
}

TEST(Walk, FollowsNoLinkThatTakesThePlaceOfAFileOrAFolderMeanwhile) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeFile(elsewhere.below("outside.md"), "");
  for (const char* name : {"a.md", "b.md", "folder/d.md"}) writeFile(folder.below(name), "");
  const Names names = walkedDuring(folder, [&](const std::string& first) {
    const std::string other = folder.below(first == "a.md" ? "b.md" : "a.md");
    std::filesystem::remove(other);
    makeLink(other, elsewhere.below("outside.md"));
    std::filesystem::remove_all(folder.below("folder"));
    makeLink(folder.below("folder"), elsewhere.path());
  });
  EXPECT_EQ(names, (Names{names.front()}));
}

TEST(Walk, ShowsEachFolderAndWhatIsListedInItBeforeItsFiles) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "");
  writeFile(folder.below("b.txt"), "");
  writeFile(folder.below("2025/c.md"), "");
  Names seen;
  readFilesBelow(
      folder.path(), ".md", {}, [&](std::string_view path, std::string_view) { seen.emplace_back(path); },
      [](std::string_view) {},
      [&](std::string_view path, const Directory& listing) {
        seen.push_back(std::string(path) + ": " + std::to_string(listing.items().size()));
      });
  EXPECT_EQ(seen, (Names{folder.path() + ": 3", folder.below("a.md"), folder.below("2025") + ": 1",
                         folder.below("2025/c.md")}));
}

TEST(Walk, ThatFindsNoMemoryForAFileSaysSo) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer's own memory leaves no room for a limit";
  if (!canLimitMemory()) GTEST_SKIP() << "the system limits no memory";
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "");
  ASSERT_EQ(truncate(folder.below("a.md").c_str(), off_t{1} << 30), 0);
  writeFile(folder.below("b.md"), "");
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              limitFurtherMemory(64 << 20);
              try {
                return joined(walked(folder.path()));
              } catch (const std::bad_alloc&) {
                return "no memory";
              }
            }),
            "no memory");
}

TEST(Walk, ThatFindsNoDescriptorShowsNothing) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "");
  EXPECT_EQ(inChildProcess([&] {
              limitFurtherDescriptors(0);
              return joined(walked(folder.path()));
            }),
            "");
}

}  // namespace
}  // namespace halvane
