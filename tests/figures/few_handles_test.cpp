#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>

#include "tests/figures/figure.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// A client that gives its servers hardly any file handles.

namespace halvane {
namespace {

constexpr int levels = 100;
constexpr int entriesInEach = 10;

void allowEightHandles() {
  const rlimit eight{8, 8};
  setrlimit(RLIMIT_NOFILE, &eight);
}

std::size_t countOf(const std::string& word, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++count;
  return count;
}

TEST(FewHandles, AreEnoughForEveryEntryOfANestedJournal) {
  const TemporaryHome home;
  std::string folder;
  for (int level = 0; level < levels; ++level) {
    folder += "f/";
    for (int entry = 0; entry < entriesInEach; ++entry)
      home.write(folder + std::to_string(entry) + "/a.md",
                 EntryFile{.date = "2099-11-03T09:14:00Z", .body = "The harbour."}.text());
  }
  ServerProcess server({.home = home.path(), .before = allowEightHandles});
  const std::size_t found = countOf("The harbour.", askTool(server, "list_recent", "{}"));
  EXPECT_EQ(server.finish(), quietEnding);
  expectExactly("entries found with 8 file handles, 100 folders deep", static_cast<double>(found), "entries",
                levels * entriesInEach);
}

}  // namespace
}  // namespace halvane
