#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/own_system.h"
#include "tests/wire/server_process.h"

// The home directory is HOME where that is set and begins at the root, otherwise the account's. The accounts
// are the ones that the system keeps itself.

namespace halvane {
namespace {

class HomeDirectory : public testing::Test {
 protected:
  void SetUp() override {
    if (!OwnSystem::isAllowed()) GTEST_SKIP() << "the system lets us have no /etc of our own: be root";
    writeFile(folder_.below("account/Documents/Halvane/a.md"), EntryFile{.body = "The account's."}.text());
    writeFile(folder_.below("anna/Documents/Halvane/a.md"), EntryFile{.body = "Anna's."}.text());
    writeFile(system_.etc("passwd"), "anna:x:54321:54321:Anna,,,:" + folder_.below("anna") + ":/bin/sh\n" +
                                         "me:x:" + std::to_string(geteuid()) +
                                         ":0:me:" + folder_.below("account") + ":/bin/sh\n");
  }

  ServerProcess serverWith(std::vector<std::string> variables) const {
    variables.insert(variables.end(), {"LC_ALL=en_US.UTF-8", "TZ=UTC"});
    return ServerProcess({.variables = variables, .before = system_.enter()});
  }

  void expectTheAccounts(std::vector<std::string> variables) const {
    ServerProcess server = serverWith(std::move(variables));
    EXPECT_EQ(
        askTool(server, "search_entries", "{}"),
        "[Nov 3, 2025 at 9:14 AM] " + folder_.below("account/Documents/Halvane/a.md") + "\nThe account's.");
    EXPECT_EQ(askTool(server, "read_entry", R"({"path":"~/Documents/Halvane/a.md"})"),
              "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nThe account's.");
    EXPECT_EQ(server.finish(), quietEnding);
  }

  const TemporaryFolder folder_;
  const OwnSystem system_;
};

TEST_F(HomeDirectory, IsTheAccountsWithoutHome) {
  expectTheAccounts({});
}

TEST_F(HomeDirectory, IsTheAccountsWhenHomeIsEmpty) {
  expectTheAccounts({"HOME="});
}

TEST_F(HomeDirectory, IsTheAccountsWhenHomeDoesNotBeginAtTheRoot) {
  expectTheAccounts({"HOME=Documents"});
}

TEST_F(HomeDirectory, IsHomeWhereItBeginsAtTheRoot) {
  ServerProcess server = serverWith({"HOME=" + folder_.below("anna")});
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"anna"})"),
            "[Nov 3, 2025 at 9:14 AM] " + folder_.below("anna/Documents/Halvane/a.md") + "\n…Anna's.…");
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(HomeDirectory, OfAnotherUserComesFromTheAccounts) {
  ServerProcess server = serverWith({"HOME=" + folder_.below("anna")});
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"~anna/Documents/Halvane/a.md"})"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nAnna's.");
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"~me/Documents/Halvane/a.md"})"),
            "Refused: path is outside the journal.");
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"~nobody-at-all/Documents/Halvane/a.md"})"),
            "Refused: path is outside the journal.");
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(HomeDirectory, IsTheRootForSomebodyWithoutAnAccount) {
  writeFile(system_.etc("passwd"), "");
  ServerProcess server = serverWith({});
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"~/Documents/Halvane/nothing.md"})"),
            "No entry found at ~/Documents/Halvane/nothing.md.");
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"/Documents/Halvane/nothing.md"})"),
            "No entry found at /Documents/Halvane/nothing.md.");
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
