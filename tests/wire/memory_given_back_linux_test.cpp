#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/process_state.h"
#include "tests/wire/server_process.h"

// A server lives as long as its client: what a message took must be there again for others.

namespace halvane {
namespace {

class MemoryGivenBack : public testing::Test {
 protected:
  MemoryGivenBack() {
    path_ = home_.write("2025/a.md", EntryFile{.tags = "work", .body = "The harbour."}.text());
    callEveryTool();
    memory_ = residentMemory(server_.id());
    files_ = openFiles(server_.id());
  }

  void callEveryTool() {
    askTool(server_, "search_entries", R"({"query":"harbour","tag":"Work"})");
    askTool(server_, "list_recent", R"({"days":365})");
    askTool(server_, "read_entry", "{\"path\":" + jsonString(path_) + "}");
  }

  // Sees that the server holds hardly more than at the start, now that the next message has been served.
  void TearDown() override {
    EXPECT_TRUE(answersPing(server_));
    EXPECT_LE(residentMemory(server_.id()), memory_ + mebibyte);
    EXPECT_EQ(openFiles(server_.id()), files_);
    EXPECT_EQ(server_.finish(), quietEnding);
  }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
  std::string path_;
  std::size_t memory_;
  std::size_t files_;
};

TEST_F(MemoryGivenBack, AfterManyCalls) {
  for (int call = 0; call < 200; ++call) callEveryTool();
}

TEST_F(MemoryGivenBack, AfterALongLine) {
  server_.send(R"({"id":1,"method":"ping","params":")" + std::string(64 * mebibyte, 'x') + "\"}");
  EXPECT_TRUE(server_.receive());
}

// After a large block, the C library takes smaller ones from a store of its own, and keeps them there.
TEST_F(MemoryGivenBack, AfterALongLineAndAShorterOne) {
  for (const std::size_t size : {24 * mebibyte, 4 * mebibyte}) {
    server_.send(R"({"id":1,"method":"ping","params":")" + std::string(size, 'x') + "\"}");
    EXPECT_TRUE(server_.receive());
  }
}

TEST_F(MemoryGivenBack, AfterALongLineThatIsDropped) {
  server_.send(std::string(64 * mebibyte, '['));
}

TEST_F(MemoryGivenBack, AfterALongReply) {
  const std::string name(64 * mebibyte, 'x');
  EXPECT_EQ(askTool(server_, name, "{}"), "Unknown tool: " + name);
}

TEST_F(MemoryGivenBack, AfterALargeEntry) {
  const std::string large =
      home_.write("large.md", EntryFile{.body = std::string(32 * mebibyte, 'x')}.text());
  EXPECT_TRUE(askTool(server_, "read_entry", "{\"path\":" + jsonString(large) + "}").ends_with("xxx"));
  EXPECT_EQ(askTool(server_, "search_entries", R"({"query":"y"})"), "No entries match \"y\".");
}

TEST_F(MemoryGivenBack, AfterALargeEntryAndASmallerOne) {
  for (const std::size_t size : {24 * mebibyte, 4 * mebibyte}) {
    const std::string path = home_.write("large.md", EntryFile{.body = std::string(size, 'x')}.text());
    EXPECT_TRUE(askTool(server_, "read_entry", "{\"path\":" + jsonString(path) + "}").ends_with("xxx"));
  }
}

}  // namespace
}  // namespace halvane
