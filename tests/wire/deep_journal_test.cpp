#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Folders in folders, until their paths are longer than the system takes: every path that a listing shows can
// be read.

namespace halvane {
namespace {

constexpr int depth = 40;
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
  for (int level = 0; level < depth; ++level) {
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
  EXPECT_EQ(level, depth);
  EXPECT_GT(path.size(), std::size_t{PATH_MAX});
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
