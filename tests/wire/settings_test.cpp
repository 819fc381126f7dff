#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// What the companion application's settings may say. The plain ones are among the conversations.

namespace halvane {
namespace {

class Settings : public testing::Test {
 protected:
  Settings() {
    home_.write("a.md", EntryFile{.body = "The usual folder."}.text());
    writeFile(home_.below("Journal/a.md"), EntryFile{.body = "The folder from the settings."}.text());
    writeFile(home_.below("Earlier/a.md"), EntryFile{.body = "The folder from the earlier settings."}.text());
    writeFile(home_.below("Zoë's 日記/a.md"), EntryFile{.body = "The folder with a name."}.text());
  }

  void write(const std::string& content) const { writeFile(home_.settings(primarySuite), content); }

  static std::string firstLine(ServerProcess& server) {
    const std::string text = askTool(server, "search_entries", "{}");
    return text.substr(text.find('\n') + 1);
  }
  // The first line of the one entry of the journal that is found.
  std::string found() const {
    ServerProcess server({.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
    const std::string line = firstLine(server);
    EXPECT_EQ(server.finish(), quietEnding);
    return line;
  }

  const TemporaryHome home_;
};

TEST_F(Settings, MayNameAFolderInAnyScript) {
  home_.setJournalRoot(primarySuite, "~/Zoë's 日記");
  EXPECT_EQ(found(), "The folder with a name.");
}

TEST_F(Settings, WithAValueThatIsNoTextLeadOn) {
  home_.setJournalRoot(legacySuite, "~/Earlier");
  for (const char* value :
       {"<integer>5</integer>", "<true/>", "<array/>", "<dict/>", "<data>fi9Kb3VybmFs</data>",
        "<date>2025-11-03T09:14:00Z</date>", "<real>1.5</real>"}) {
    SCOPED_TRACE(value);
    write(propertyListWith("journalRoot", value));
    EXPECT_EQ(found(), "The folder from the earlier settings.");
  }
}

TEST_F(Settings, WithoutTheKeyLeadOn) {
  home_.setJournalRoot(legacySuite, "~/Earlier");
  write(propertyListOfText("JournalRoot", "~/Journal"));
  EXPECT_EQ(found(), "The folder from the earlier settings.");
}

TEST_F(Settings, MayChangeBetweenTwoCallsOfOneServer) {
  ServerProcess server({.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
  EXPECT_EQ(firstLine(server), "The usual folder.");
  home_.setJournalRoot(legacySuite, "~/Earlier");
  EXPECT_EQ(firstLine(server), "The folder from the earlier settings.");
  home_.setJournalRoot(primarySuite, "~/Journal");
  EXPECT_EQ(firstLine(server), "The folder from the settings.");
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
