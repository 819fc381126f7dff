#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"
#include "tests/wire/tracer.h"

// Folders in folders, until their paths are longer than the system takes: every path that a listing shows can
// be read.

namespace halvane {
namespace {

constexpr int levels = 40;
const std::string folderName(200, 'd');

void writeBelow(int folder, const std::string& text) {
  const int file = openat(folder, "a.md", O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  ASSERT_EQ(write(file, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  close(file);
}

// An entry in each of the folders, which say how deep they are.
void makeDeepJournal(const std::string& journal) {
  makeFolder(journal);
  int folder = open(journal.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  for (int level = 0; level < levels; ++level) {
    writeBelow(folder, EntryFile{.body = "level " + std::to_string(level) + "."}.text());
    ASSERT_EQ(mkdirat(folder, folderName.c_str(), 0777), 0);
    const int next = openat(folder, folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    close(folder);
    folder = next;
  }
  close(folder);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(DeepJournal, IsListedToItsEndAndEveryPathOfItCanBeRead) {
  const TemporaryHome home;
  makeDeepJournal(home.journal());
  ServerProcess server({.home = home.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
  const std::string listing = askTool(server, "search_entries", R"({"query":"","limit":50})");

  const std::string date = "[Nov 3, 2025 at 9:14 AM] ";
  std::string path = home.journal();
  int level = 0;
  for (const std::string& line : linesOf(listing)) {
    if (!line.starts_with(date)) continue;
    EXPECT_EQ(line, date + path + "/a.md");
    EXPECT_EQ(
        askTool(server, "read_entry", "{\"path\":" + jsonString(line.substr(date.size())) + "}"),
        "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nlevel " + std::to_string(level) + ".");
    path += "/" + folderName;
    ++level;
  }
  EXPECT_EQ(level, levels);
  EXPECT_GT(path.size(), std::size_t{PATH_MAX});
  EXPECT_EQ(server.finish(), quietEnding);
}

// Folders one in the other, each with another one beside it that comes after all that is in the first.
void makeDeepComb(const std::string& journal, int depth) {
  makeFolder(journal);
  int folder = open(journal.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::string name(50, 'd');
  for (int level = 0; level < depth; ++level) {
    ASSERT_EQ(mkdirat(folder, "z", 0777), 0);
    ASSERT_EQ(mkdirat(folder, name.c_str(), 0777), 0);
    const int next = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    close(folder);
    folder = next;
  }
  writeBelow(folder, EntryFile{.body = "at the bottom"}.text());
  close(folder);
}

// The bytes of all paths by which a server opens something during a search in such a journal.
std::size_t pathBytesOfASearch(int depth) {
  const TemporaryHome home;
  makeDeepComb(home.journal(), depth);
  const TemporaryFolder folder;
  const std::string trace = folder.below("trace");
  ServerProcess server(
      {.home = home.path(), .before = [&] {
         becomeTracer(trace, {"-e", "trace=openat", "-s", "100000"}, {"HOME=" + home.path()});
       }});
  EXPECT_NE(askTool(server, "search_entries", R"({"query":"at the bottom"})").find("bottom"),
            std::string::npos);
  EXPECT_EQ(server.finish(), quietEnding);
  std::ifstream calls(trace);
  std::size_t bytes = 0;
  for (std::string line; std::getline(calls, line);) {
    const std::size_t begin = line.find('"');
    if (begin != std::string::npos) bytes += line.rfind('"') - begin - 1;
  }
  return bytes;
}

TEST(DeepJournal, IsWalkedByPathsThatGrowHardlyFasterThanItsDepth) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer has needs of its own";
  if (!hasTracer()) GTEST_SKIP() << "there is no strace here";
  EXPECT_LT(pathBytesOfASearch(400), 8 * pathBytesOfASearch(100));
}

}  // namespace
}  // namespace halvane
