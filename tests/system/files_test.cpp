#include "system/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdint>
#include <new>
#include <set>
#include <string>
#include <string_view>

#include "tests/support/child_process.h"
#include "tests/support/deep_folder.h"
#include "tests/support/process_limits.h"
#include "tests/support/sanitizers.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using namespace std::string_literals;

// The file's content, or "nothing".
std::string contentOf(const std::string& path, const Beginning& beginning = {},
                      std::size_t limit = SIZE_MAX) {
  ByteBuffer buffer;
  const std::optional<std::string_view> content = readFile(path, beginning, buffer, limit);
  return content ? std::string(*content) : "nothing";
}

TEST(ReadingAFile, GivesItsBytesAsTheyAre) {
  const TemporaryFolder folder;
  for (const std::string& content :
       {""s, "a"s, "a\r\nb\n"s, "\0\xFF\xFE"s, std::string(65535, 'x'), std::string(65536, 'x'),
        std::string(65537, 'x'), std::string(5000000, 'y')}) {
    writeFile(folder.below("a.md"), content);
    EXPECT_EQ(contentOf(folder.below("a.md")), content) << content.size();
  }
}

TEST(ReadingAFile, UsesItsBufferAgain) {
  const TemporaryFolder folder;
  writeFile(folder.below("long"), std::string(200000, 'x'));
  writeFile(folder.below("short"), "y");
  ByteBuffer buffer;
  EXPECT_EQ(readFile(folder.below("long"), {}, buffer)->size(), 200000U);
  const std::size_t capacity = buffer.capacity();
  EXPECT_EQ(readFile(folder.below("short"), {}, buffer), "y");
  EXPECT_EQ(buffer.capacity(), capacity);
}

// Else a long file would be copied again for each piece that is read.
TEST(ReadingAFile, EnlargesItsBufferInProportionToTheFile) {
  const TemporaryFolder folder;
  ByteBuffer buffer;
  std::set<std::size_t> capacities;
  for (std::size_t size = 65536; size <= 4U << 20; size += 65536) {
    writeFile(folder.below("a.md"), "");
    ASSERT_EQ(truncate(folder.below("a.md").c_str(), static_cast<off_t>(size)), 0);
    ASSERT_EQ(readFile(folder.below("a.md"), {}, buffer)->size(), size);
    capacities.insert(buffer.capacity());
    EXPECT_LE(buffer.capacity(), 2 * size) << "no more than that either";
  }
  EXPECT_LE(capacities.size(), 8U) << "it doubles seven times";
}

TEST(ReadingAFile, FollowsLinks) {
  const TemporaryFolder folder;
  writeFile(folder.below("inside/a.md"), "content");
  makeLink(folder.below("link.md"), folder.below("inside/a.md"));
  makeLink(folder.below("relative.md"), "inside/a.md");
  makeLink(folder.below("folder"), folder.below("inside"));
  EXPECT_EQ(contentOf(folder.below("link.md")), "content");
  EXPECT_EQ(contentOf(folder.below("relative.md")), "content");
  EXPECT_EQ(contentOf(folder.below("folder/a.md")), "content");
}

TEST(ReadingAFile, ThatIsNotThereOrNotRegularGivesNothing) {
  const TemporaryFolder folder;
  makeFolder(folder.below("folder.md"));
  makeNamedPipe(folder.below("pipe.md"));
  makeSocket(folder.below("socket.md"));
  makeLink(folder.below("dangling.md"), folder.below("missing"));
  makeLink(folder.below("loop.md"), folder.below("loop.md"));
  makeLink(folder.below("to-pipe.md"), folder.below("pipe.md"));
  makeLink(folder.below("to-folder.md"), folder.below("folder.md"));
  makeLink(folder.below("to-device.md"), "/dev/zero");
  writeFile(folder.below("file"), "x");
  for (const char* name : {"missing.md", "folder.md", "pipe.md", "socket.md", "dangling.md", "loop.md",
                           "to-pipe.md", "to-folder.md", "to-device.md", "file/a.md", "file/"}) {
    EXPECT_EQ(contentOf(folder.below(name)), "nothing") << name;
  }
  EXPECT_EQ(contentOf("/dev/null"), "nothing");
  EXPECT_EQ(contentOf("/"), "nothing");
}

TEST(ReadingAFile, WhoseNameHoldsANulGivesNothing) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "content");
  EXPECT_EQ(contentOf(folder.below("a.md\0"s)), "nothing");
  EXPECT_EQ(contentOf(folder.below("a.md\0.txt"s)), "nothing");
}

TEST(ReadingAFile, ThatTheUserMayNotReadGivesNothing) {
  const TemporaryFolder folder;
  writeFile(folder.below("closed.md"), "content");
  writeFile(folder.below("closed/a.md"), "content");
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(folder.below("closed.md").c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0), 0);
  EXPECT_EQ(inChildProcess([&] {
              becomeOrdinaryUser();
              return contentOf(folder.below("closed.md")) + " " + contentOf(folder.below("closed/a.md"));
            }),
            "nothing nothing");
  ASSERT_EQ(chmod(folder.below("closed").c_str(), 0700), 0);
}

TEST(ReadingAFile, ThatFailsGivesNothing) {
  // A regular file by its kind, but its first page is nobody's memory.
  EXPECT_EQ(contentOf("/proc/self/mem"), "nothing");
}

TEST(ReadingAFile, WhosePathIsLongerThanTheSystemTakesWorksAllTheSame) {
  const TemporaryFolder folder;
  const std::string path = writeFileDeepBelow(folder.path(), std::string(200, 'd'), 50, "a.md", "deep");
  ASSERT_GT(path.size(), 2U * PATH_MAX);
  EXPECT_EQ(contentOf(path), "deep");
  EXPECT_EQ(contentOf(path + "x"), "nothing");
  EXPECT_EQ(contentOf(path.substr(0, path.rfind('/'))), "nothing") << "a folder";
}

TEST(ReadingAFile, WhosePathIsAboutAsLongAsTheSystemTakesWorksAtEveryLength) {
  const TemporaryFolder folder;
  for (std::size_t length = PATH_MAX - 3; length <= PATH_MAX + 2; ++length) {
    const std::string name = "l" + std::to_string(length);
    makeFolder(folder.below(name));
    // Twenty folders, and a file's name that brings the path to the length.
    const std::string top = folder.below(name);
    const std::size_t levels = 20;
    const std::size_t each = (length - top.size() - 100) / levels - 1;
    const std::size_t rest = length - top.size() - levels * (each + 1) - 1;
    const std::string path =
        writeFileDeepBelow(top, std::string(each, 'd'), levels, std::string(rest, 'f'), name);
    ASSERT_EQ(path.size(), length);
    EXPECT_EQ(contentOf(path), name);
  }
}

TEST(ReadingAFile, WithANameLongerThanAnyFileHasGivesNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(contentOf(folder.below(std::string(300, 'x'))), "nothing");
  EXPECT_EQ(contentOf(folder.below(std::string(2 * PATH_MAX, 'x'))), "nothing");
  EXPECT_EQ(contentOf("/" + std::string(2 * PATH_MAX, 'x')), "nothing");
}

TEST(ReadingAFile, MayHaveRepeatedSlashesInItsPath) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "content");
  EXPECT_EQ(contentOf(folder.below(std::string(2 * PATH_MAX, '/') + "a.md")), "content");
}

TEST(ReadingAFile, GoesOnOnlyWhereItBeginsAsItShould) {
  const TemporaryFolder folder;
  constexpr std::array<std::string_view, 2> openings = {"---\n", "\uFEFF---\n"};
  struct Case {
    std::string content;
    bool read;
  };
  for (const Case& c :
       {Case{"---\n", true}, Case{"---\nrest", true}, Case{"\uFEFF---\nrest", true}, Case{"", false},
        Case{"-", false}, Case{"---", false}, Case{"--- \n", false}, Case{"---\r\n", false},
        Case{"\n---\n", false}, Case{"\uFEFF", false}, Case{"\uFEFF--", false},
        Case{"\uFEFF\uFEFF---\n", false}, Case{"---\n" + std::string(300000, 'x'), true},
        Case{"--x" + std::string(300000, 'x'), false}}) {
    writeFile(folder.below("a.md"), c.content);
    EXPECT_EQ(contentOf(folder.below("a.md"), {openings}), c.read ? c.content : "nothing")
        << c.content.substr(0, 20);
  }
}

TEST(ReadingAFile, AsksOnceWhetherItMayBeWantedByItsFirstBytes) {
  const TemporaryFolder folder;
  constexpr std::array<std::string_view, 1> openings = {"---\n"};
  const std::string longContent = "---\n" + std::string(300000, 'x');
  struct Case {
    std::string content;
    std::vector<std::string> asked;
  };
  for (const Case& c : {Case{"---\nrest", {"---\nrest"}}, Case{longContent, {longContent.substr(0, 65536)}},
                        Case{"other", {}}, Case{"--", {}}, Case{"", {}}}) {
    writeFile(folder.below("a.md"), c.content);
    std::vector<std::string> asked;
    bool answer = true;
    const Beginning beginning{openings, [&](std::string_view firstBytes) {
                                asked.emplace_back(firstBytes);
                                return answer;
                              }};
    EXPECT_EQ(contentOf(folder.below("a.md"), beginning), c.asked.empty() ? "nothing" : c.content);
    EXPECT_EQ(asked, c.asked);
    answer = false;
    EXPECT_EQ(contentOf(folder.below("a.md"), beginning), "nothing");
  }
}

TEST(ReadingAFile, OfNoBytesIsWanted) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "");
  EXPECT_EQ(contentOf(folder.below("a.md"), {{}, [](std::string_view) { return false; }}), "");
}

TEST(ReadingAFile, StopsAtItsLimit) {
  const TemporaryFolder folder;
  writeFile(folder.below("a"), std::string(100000, 'x'));
  EXPECT_EQ(contentOf(folder.below("a"), {}, 100000).size(), 100000U);
  EXPECT_EQ(contentOf(folder.below("a"), {}, 99999), "nothing");
  EXPECT_EQ(contentOf(folder.below("a"), {}, 0), "nothing");
  writeFile(folder.below("empty"), "");
  EXPECT_EQ(contentOf(folder.below("empty"), {}, 0), "");
}

TEST(ReadingAFile, ThatFindsNoMemorySaysSo) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer's own memory leaves no room for a limit";
  if (!canLimitMemory()) GTEST_SKIP() << "the system limits no memory";
  const TemporaryFolder folder;
  writeFile(folder.below("a"), "");
  ASSERT_EQ(truncate(folder.below("a").c_str(), off_t{1} << 30), 0);
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              limitFurtherMemory(64 << 20);
              try {
                return contentOf(folder.below("a"));
              } catch (const std::bad_alloc&) {
                return "no memory";
              }
            }),
            "no memory");
}

TEST(ReadingAFile, LeavesNoDescriptorOpen) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "content");
  makeFolder(folder.below("b.md"));
  const std::string deep = writeFileDeepBelow(folder.path(), std::string(200, 'd'), 50, "a.md", "deep");
  EXPECT_EQ(inChildProcess([&] {
              limitFurtherDescriptors(3);
              for (int i = 0; i < 10; ++i) {
                contentOf(folder.below("b.md"));
                contentOf(folder.below("missing.md"));
                contentOf(deep);
              }
              return contentOf(folder.below("a.md"));
            }),
            "content");
}

}  // namespace
}  // namespace halvane
