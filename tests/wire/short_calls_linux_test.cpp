#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/preload.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The system may move fewer bytes than it is asked to. However few they are, every file is read and every
// reply written to its end.

namespace halvane {
namespace {

class ShortCalls : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer replaces these calls itself";
    home_.setJournalRoot(primarySuite, "~/Documents/Halvane");
    path_ = home_.write("2099/a.md",
                        EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "work", .body = body_}.text());
  }

  Surroundings surroundings() const {
    std::vector<std::string> variables = preloaded(HALVANE_SHORT_CALLS);
    variables.insert(variables.end(),
                     {"SHORT_CALLS=" + std::to_string(GetParam()), "LC_ALL=en_US.UTF-8", "TZ=UTC"});
    return {.home = home_.path(), .variables = variables};
  }

  const TemporaryHome home_;
  const std::string body_ = "Straße zum Hafen, 港へ, " + std::string(3000, 'x');
  std::string path_;
};

TEST_P(ShortCalls, MakeEveryReplyComplete) {
  ServerProcess server(surroundings());
  const std::string shownPath = "[Nov 3, 2099 at 9:14 AM] #work " + path_;
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"STRASSE","tag":"#Work"})"),
            shownPath + "\n…" + body_.substr(0, body_.find('x')) + std::string(64, 'x') + "…");
  EXPECT_EQ(askTool(server, "list_recent", "{}"), "[Nov 3, 2099 at 9:14 AM] #work " + body_ + "\n" + path_);
  EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(path_) + "}"),
            "Date: Nov 3, 2099 at 9:14 AM\nDuration: 0s\nCleaned: false\nTags: work\n\n" + body_);
  EXPECT_TRUE(answersPing(server));
  EXPECT_EQ(server.finish(), quietEnding);
}

INSTANTIATE_TEST_SUITE_P(MostBytes, ShortCalls, testing::Values(1, 2, 3, 5, 7, 64, 1000, 4096),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace halvane
