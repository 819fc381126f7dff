#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Texts with the line ends of other systems.

namespace halvane {
namespace {

class CarriageReturn : public testing::Test {
 protected:
  CarriageReturn() {
    path_ = home_.write(
        "a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "one\r\ntwo\rthree\nfour\r\n"}.text());
  }

  ServerProcess& server() {
    if (!server_) {
      server_.emplace(Surroundings{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
    }
    return *server_;
  }

  void TearDown() override { EXPECT_EQ(server().finish(), quietEnding); }

  const TemporaryHome home_;
  std::string path_;
  std::optional<ServerProcess> server_;
};

TEST_F(CarriageReturn, StaysInAnEntryThatIsRead) {
  EXPECT_EQ(askTool(server(), "read_entry", "{\"path\":" + jsonString(path_) + "}"),
            "Date: Nov 3, 2099 at 9:14 AM\nDuration: 0s\nCleaned: false\n\none\r\ntwo\rthree\nfour");
}

// Together with the line feed after it, it is one character to a reader, and that character doesn't end a
// line.
TEST_F(CarriageReturn, BeforeALineFeedKeepsTheFirstLineGoing) {
  EXPECT_EQ(askTool(server(), "list_recent", "{}"), "[Nov 3, 2099 at 9:14 AM] one\r\ntwo\rthree\n" + path_);
}

TEST_F(CarriageReturn, StaysInASnippetInWhichEveryLineFeedBecomesABlank) {
  EXPECT_EQ(askTool(server(), "search_entries", R"({"query":"TWO"})"),
            "[Nov 3, 2099 at 9:14 AM] " + path_ + "\n…one\r two\rthree four…");
}

TEST_F(CarriageReturn, MayBePartOfAQuery) {
  EXPECT_EQ(askTool(server(), "search_entries", R"({"query":"one\r\ntwo"})"),
            "[Nov 3, 2099 at 9:14 AM] " + path_ + "\n…one\r two\rthree four…");
}

}  // namespace
}  // namespace halvane
