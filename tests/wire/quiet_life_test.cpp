#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "tests/support/asleep.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The server does what it is asked to and nothing else.

namespace halvane {
namespace {

TEST(QuietLife, HasNoWordsBeforeTheFirstMessage) {
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST(QuietLife, KnowsNoArguments) {
  const TemporaryHome home;
  for (const char* argument : {"--help", "--version", "-v", "/tmp", ""}) {
    ServerProcess server({.home = home.path(), .arguments = {argument}});
    EXPECT_TRUE(answersPing(server)) << argument;
    EXPECT_EQ(server.finish(), quietEnding);
  }
}

// Every file below `folder`, with the time of its last change.
std::map<std::string, std::filesystem::file_time_type> filesBelow(const std::string& folder) {
  std::map<std::string, std::filesystem::file_time_type> files;
  for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
    files[file.path()] = file.last_write_time();
  }
  return files;
}

TEST(QuietLife, WritesNoFiles) {
  const TemporaryHome home;
  home.setJournalRoot("app.halvane.Halvane", "~/Documents/Halvane");
  const std::string path = home.write("a.md", EntryFile{.body = "The harbour."}.text());
  const auto before = filesBelow(home.path());
  ServerProcess server({.home = home.path(), .currentFolder = home.path()});
  askTool(server, "search_entries", R"({"query":"harbour"})");
  askTool(server, "list_recent", R"({"days":365})");
  askTool(server, "read_entry", "{\"path\":" + jsonString(path) + "}");
  EXPECT_EQ(server.finish(), quietEnding);
  EXPECT_EQ(filesBelow(home.path()), before);
}

}  // namespace
}  // namespace halvane
