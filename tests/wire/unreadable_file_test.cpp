#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/child_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// What the user may not read is not there for the server, which is an ordinary user's here.

namespace halvane {
namespace {

class UnreadableFile : public testing::Test {
 protected:
  UnreadableFile() {
    entry_ = home_.write("entry.md", EntryFile{.body = "The harbour."}.text());
    closed_ = home_.write("closed/entry.md", EntryFile{.body = "Nobody's business."}.text());
    chmod(home_.path().c_str(), 0755);
  }

  void expectOnlyTheOther() {
    ServerProcess server(surroundings());
    EXPECT_EQ(askTool(server, "search_entries", "{}"),
              "[Nov 3, 2025 at 9:14 AM] " + entry_ + "\nThe harbour.");
    EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(closed_) + "}"),
              "No entry found at " + closed_ + ".");
    EXPECT_EQ(server.finish(), quietEnding);
  }

  Surroundings surroundings() const {
    return {
        .home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}, .before = becomeOrdinaryUser};
  }

  const TemporaryHome home_;
  std::string entry_;
  std::string closed_;
};

TEST_F(UnreadableFile, IsPassedOver) {
  chmod(closed_.c_str(), 0);
  expectOnlyTheOther();
}

TEST_F(UnreadableFile, MayBeAFolder) {
  const std::string folder = home_.journal() + "/closed";
  chmod(folder.c_str(), 0);
  expectOnlyTheOther();
  chmod(folder.c_str(), 0755);
}

// Its names can be listed, but nothing in it can be opened.
TEST_F(UnreadableFile, MayBeInAFolderThatCanOnlyBeListed) {
  const std::string folder = home_.journal() + "/closed";
  chmod(folder.c_str(), 0444);
  expectOnlyTheOther();
  chmod(folder.c_str(), 0755);
}

// It can't be listed, so a search doesn't find what is in it; whoever knows the path can read that.
TEST_F(UnreadableFile, IsNoneInAFolderThatCanOnlyBeEntered) {
  const std::string folder = home_.journal() + "/closed";
  chmod(folder.c_str(), 0111);
  ServerProcess server(surroundings());
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"nobody"})"), "No entries match \"nobody\".");
  EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(closed_) + "}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nNobody's business.");
  EXPECT_EQ(server.finish(), quietEnding);
  chmod(folder.c_str(), 0755);
}

TEST_F(UnreadableFile, MayBeTheJournal) {
  chmod(home_.journal().c_str(), 0);
  ServerProcess server(surroundings());
  EXPECT_EQ(askTool(server, "search_entries", "{}"), "No entries match \"\".");
  EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(entry_) + "}"),
            "No entry found at " + entry_ + ".");
  chmod(home_.journal().c_str(), 0755);
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"harbour"})"),
            "[Nov 3, 2025 at 9:14 AM] " + entry_ + "\n…The harbour.…");
  EXPECT_EQ(server.finish(), quietEnding);
}

// Settings that can't be read are none: the usual folder is the journal.
TEST_F(UnreadableFile, MayBeTheSettings) {
  home_.setJournalRoot("app.halvane.Halvane", "~/Elsewhere");
  chmod(home_.settings("app.halvane.Halvane").c_str(), 0);
  chmod(closed_.c_str(), 0);
  expectOnlyTheOther();
}

}  // namespace
}  // namespace halvane
