#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/cold_file.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/process_limits.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "walk/file_walk.h"

// Files that are not in memory are opened ahead of their turn. Nothing but the time shows it.

namespace halvane {
namespace {

using Lines = std::vector<std::string>;

constexpr std::array<std::string_view, 1> openings = {"---\n"};
constexpr const char* noFilter = "the kernel offers no filter to make a slow disk with";

// What a walk tells, in order: the files with their contents, and what is passed over.
Lines told(
    const std::string& root, const std::function<void(std::string_view path)>& onFile = [](auto) {}) {
  Lines lines;
  readFilesBelow(
      root, ".md", {openings},
      [&](std::string_view path, std::string_view content) {
        onFile(path);
        lines.push_back(std::string(path.substr(root.size())) + "\t" + std::string(content));
      },
      [&](std::string_view path) { lines.push_back("not " + std::string(path.substr(root.size()))); });
  return lines;
}

std::string inOneText(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text.append(line).append("\n\n");
  return text;
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all))) - 1;  // without the one that looks
}

// What `act` says in a process whose disk has never brought a file before the question for it is answered. A
// real disk may be quick enough, now and then.
std::string fromSlowDisk(const std::function<std::string()>& act) {
  return inChildProcess([&] {
    refuseCalls({{SYS_preadv2, EAGAIN}});
    return act();
  });
}

class ColdFiles : public testing::Test {
 protected:
  // A year of folders with few files and many, a file longer than one read, an empty one, links, and others
  // that are passed over.
  void SetUp() override {
    for (int month = 1; month <= 12; ++month) {
      const std::string folder = std::to_string(100 + month);
      const int days = month % 3 == 0 ? 50 : 3;
      for (int day = 1; day <= days; ++day)
        writeFile(folder_.below(folder + "/" + std::to_string(100 + day) + ".md"),
                  "---\n" + folder + " " + std::to_string(day));
      writeFile(folder_.below(folder + "/deeper/" + folder + ".md"), "---\ndeep");
    }
    writeFile(folder_.below("103/110-long.md"), "---\n" + std::string(200'000, 'x'));
    writeFile(folder_.below("103/111-empty.md"), "");
    writeFile(folder_.below("103/112-other.md"), "other");
    makeLink(folder_.below("103/113-link.md"), folder_.below("101/101.md"));
    makeLink(folder_.below("103/114-nowhere.md"), folder_.below("missing"));
    makeLink(folder_.below("103/115-folder.md"), folder_.below("101"));
    if (!forgetFilesBelow(folder_.path())) GTEST_SKIP() << "this file system keeps its files in memory";
  }

  // What is told when nothing comes from the disk.
  Lines toldWarm() const {
    told(folder_.path());
    return told(folder_.path());
  }

  const TemporaryFolder folder_;
};

TEST_F(ColdFiles, AreToldLikeThoseInMemoryAndInTheSameOrder) {
  const Lines cold = told(folder_.path());
  EXPECT_EQ(cold.size(), 4U * 50 + 8 * 3 + 12 + 6);
  EXPECT_EQ(inOneText(cold), inOneText(toldWarm()));
}

TEST_F(ColdFiles, AmongOthersInMemoryAreToldInTheSameOrder) {
  const Lines warm = toldWarm();
  for (const char* name : {"103/150.md", "106/deeper/106.md", "112/102.md"}) {
    ASSERT_TRUE(forgetFile(folder_.below(name)));
    EXPECT_EQ(inOneText(told(folder_.path())), inOneText(warm)) << name;
  }
}

TEST_F(ColdFiles, AreAllToldHoweverFewDescriptorsThereAre) {
  if (!canRefuseCalls()) GTEST_SKIP() << noFilter;
  const std::string warm = inOneText(toldWarm());
  for (const std::size_t descriptors : {3U, 4U, 5U, 6U, 8U, 13U, 34U, 36U}) {
    ASSERT_TRUE(forgetFilesBelow(folder_.path()));
    EXPECT_EQ(fromSlowDisk([&] {
                limitFurtherDescriptors(descriptors);
                return inOneText(told(folder_.path()));
              }),
              warm)
        << descriptors;
  }
}

// Here the descriptor that is missing first is one for a folder.
TEST_F(ColdFiles, InFoldersOfTheirOwnAreAllToldHoweverFewDescriptorsThereAre) {
  if (!canRefuseCalls()) GTEST_SKIP() << noFilter;
  const TemporaryFolder alone;
  for (int number = 100; number < 140; ++number)
    writeFile(alone.below(std::to_string(number) + "/deeper/a.md"), "---\n" + std::to_string(number));
  const std::string warm = inOneText(told(alone.path()));
  for (std::size_t descriptors = 3; descriptors <= 12; ++descriptors) {
    ASSERT_TRUE(forgetFilesBelow(alone.path()));
    EXPECT_EQ(fromSlowDisk([&] {
                limitFurtherDescriptors(descriptors);
                return inOneText(told(alone.path()));
              }),
              warm)
        << descriptors;
  }
}

TEST_F(ColdFiles, TakeMoreDescriptorsThanThoseInMemoryButNotMany) {
  if (!canRefuseCalls()) GTEST_SKIP() << noFilter;
  const std::size_t before = openDescriptors();
  const auto mostDuringAWalk = [&] {
    std::size_t most = 0;
    told(folder_.path(), [&](std::string_view) { most = std::max(most, openDescriptors() - before); });
    return most;
  };
  const std::size_t cold = std::stoul(fromSlowDisk([&] { return std::to_string(mostDuringAWalk()); }));
  EXPECT_GT(cold, 16U);
  EXPECT_LE(cold, 40U);
  mostDuringAWalk();
  EXPECT_LE(mostDuringAWalk(), 3U) << "in memory";
  EXPECT_EQ(openDescriptors(), before);
}

TEST_F(ColdFiles, LeaveDescriptorsToOthersWhereThereAreFew) {
  if (!canRefuseCalls()) GTEST_SKIP() << noFilter;
  const auto opened = [] { return Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)); };
  EXPECT_EQ(fromSlowDisk([&] {
              limitFurtherDescriptors(8);
              std::size_t onlyOne = 0;
              std::size_t refused = 0;
              const Lines lines = told(folder_.path(), [&](std::string_view) {
                const Descriptor one = opened();
                const Descriptor another = opened();
                // The walk learns at first how many there are.
                refused += one.isOpen() && (another.isOpen() || ++onlyOne < 10) ? 0 : 1;
              });
              return std::to_string(lines.size()) + " told, " + std::to_string(refused) + " refused";
            }),
            "242 told, 0 refused");
}

TEST_F(ColdFiles, ThatAreReplacedByLinksMeanwhileLeadNowhereElse) {
  const TemporaryFolder elsewhere;
  writeFile(elsewhere.below("outside.md"), "---\nsecret");
  bool areReplaced = false;
  const Lines lines = told(folder_.path(), [&](std::string_view path) {
    if (areReplaced || path.find("/109/") == std::string_view::npos) return;
    areReplaced = true;
    for (int day = 101; day <= 150; ++day) {
      const std::string name = folder_.below("109/" + std::to_string(day) + ".md");
      if (name == path) continue;
      std::filesystem::remove(name);
      makeLink(name, elsewhere.below("outside.md"));
    }
    std::filesystem::remove_all(folder_.below("101"));
    makeLink(folder_.below("101"), elsewhere.path());
  });
  EXPECT_EQ(inOneText(lines).find("secret"), std::string::npos);
  EXPECT_NE(inOneText(lines).find("not /109/"), std::string::npos);
  EXPECT_EQ(lines.back(), "not /101/");
}

TEST_F(ColdFiles, ThatAreRemovedMeanwhileAreToldWholeOrNotAtAll) {
  const Lines warm = toldWarm();
  ASSERT_TRUE(forgetFilesBelow(folder_.path()));
  const Lines lines = told(folder_.path(), [&](std::string_view path) {
    if (path.ends_with("0.md"))
      std::filesystem::remove(std::string(path.substr(0, path.size() - 4)) + "9.md");
  });
  EXPECT_GT(lines.size(), warm.size() / 2);
  for (const std::string& line : lines) {
    const bool isWhole = std::find(warm.begin(), warm.end(), line) != warm.end();
    EXPECT_TRUE(isWhole || line.starts_with("not ")) << line.substr(0, 100);
  }
}

}  // namespace
}  // namespace halvane
