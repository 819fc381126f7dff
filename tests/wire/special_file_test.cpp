#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Pipes, sockets and the like with an entry's name: the server doesn't wait for them, read them or show them.

namespace halvane {
namespace {

class SpecialFile : public testing::Test {
 protected:
  SpecialFile() {
    entry_ = home_.write("entry.md", EntryFile{.body = "The harbour."}.text());
    special_ = home_.journal() + "/special.md";
  }

  // Checks that the journal has the one entry, and none under the special file's name.
  void expectPassedOver() {
    EXPECT_EQ(askTool(server_, "search_entries", "{}"),
              "[Nov 3, 2025 at 9:14 AM] " + entry_ + "\nThe harbour.");
    EXPECT_EQ(askTool(server_, "read_entry", "{\"path\":" + jsonString(special_) + "}"),
              "No entry found at " + special_ + ".");
    EXPECT_EQ(server_.finish(), quietEnding);
  }

  const TemporaryHome home_;
  std::string entry_;
  std::string special_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

TEST_F(SpecialFile, APipeIsPassedOver) {
  makeNamedPipe(special_);
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToAPipeIsPassedOver) {
  makeNamedPipe(home_.below("pipe"));
  makeLink(special_, home_.below("pipe"));
  expectPassedOver();
}

TEST_F(SpecialFile, ASocketIsPassedOver) {
  makeSocket(special_);
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToADeviceWithoutEndIsPassedOver) {
  makeLink(special_, "/dev/zero");
  expectPassedOver();
}

TEST_F(SpecialFile, AFolderIsPassedOver) {
  makeFolder(special_);
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToNothingIsPassedOver) {
  makeLink(special_, "nothing.md");
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToItselfIsPassedOver) {
  makeLink(special_, special_);
  expectPassedOver();
}

TEST_F(SpecialFile, AnEmptyFileIsPassedOver) {
  writeFile(special_, "");
  expectPassedOver();
}

TEST_F(SpecialFile, AFileThatIsNoTextIsPassedOver) {
  writeFile(special_, EntryFile{.body = "caf\xE9"}.text());
  expectPassedOver();
}

TEST_F(SpecialFile, AFileWithTheLineEndsOfAnotherSystemIsPassedOver) {
  writeFile(special_, "---\r\ndate: 2025-11-03T09:14:00Z\r\n---\r\nText");
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToAFolderIsNotEnteredButAPathMayGoThroughIt) {
  const std::string outside = home_.below("Outside/b.md");
  writeFile(outside, EntryFile{.body = "Beyond the link."}.text());
  makeLink(home_.journal() + "/link", home_.below("Outside"));
  makeLink(home_.journal() + "/round and round", home_.journal());
  EXPECT_EQ(askTool(server_, "read_entry", "{\"path\":" + jsonString(home_.journal() + "/link/b.md") + "}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nBeyond the link.");
  expectPassedOver();
}

TEST_F(SpecialFile, ALinkToAFileIsReadLikeTheFile) {
  const std::string outside = home_.below("outside.txt");
  writeFile(outside, EntryFile{.body = "Beyond the link."}.text());
  makeLink(special_, outside);
  EXPECT_EQ(askTool(server_, "search_entries", R"({"query":"beyond"})"),
            "[Nov 3, 2025 at 9:14 AM] " + special_ + "\n…Beyond the link.…");
  EXPECT_EQ(askTool(server_, "read_entry", "{\"path\":" + jsonString(special_) + "}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nBeyond the link.");
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(SpecialFile, AByteOrderMarkBeforeAnEntryIsSkipped) {
  writeFile(special_, "\xEF\xBB\xBF" + EntryFile{.body = "Marked."}.text());
  EXPECT_EQ(askTool(server_, "search_entries", R"({"query":"marked"})"),
            "[Nov 3, 2025 at 9:14 AM] " + special_ + "\n…Marked.…");
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(SpecialFile, ANameThatIsNoTextIsShownWithReplacements) {
  if (!takesName("caf\xE9.md")) GTEST_SKIP() << "the file system takes no such name";
  home_.write("caf\xE9.md", EntryFile{.body = "Coffee."}.text());
  EXPECT_EQ(askTool(server_, "search_entries", R"({"query":"coffee"})"),
            "[Nov 3, 2025 at 9:14 AM] " + home_.journal() + "/caf\uFFFD.md\n…Coffee.…");
  EXPECT_EQ(server_.finish(), quietEnding);
}

// The journal itself may be a link, and its path is the link's.
TEST_F(SpecialFile, TheJournalMayBeALinkToAFolder) {
  makeFolder(home_.below("Journals"));
  std::filesystem::rename(home_.journal(), home_.below("Journals/mine"));
  makeLink(home_.journal(), home_.below("Journals/mine"));
  expectPassedOver();
}

}  // namespace
}  // namespace halvane
