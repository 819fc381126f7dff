#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/child_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// The files of settings, and what the doctor says of those that don't tell where the journal is.

namespace halvane {
namespace {

class SettingsFiles : public testing::Test {
 protected:
  SettingsFiles() {
    home_.write("a.md", EntryFile{}.text());
    writeFile(home_.below("Journal/a.md"), EntryFile{}.text());
  }

  std::string settings(std::string_view suite) const { return home_.settings(suite); }
  Answer answer() const { return callDoctor({.home = home_.path()}); }
  Answer answerToOrdinaryUser() const {
    chmod(home_.path().c_str(), 0755);
    return callDoctor({.home = home_.path(), .before = becomeOrdinaryUser});
  }

  const TemporaryHome home_;
};

TEST_F(SettingsFiles, AreNamedWhereTheyWouldBe) {
  const Answer given = answer();
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + home_.journal() +
                         "\n  This is the default folder: no preferences name another.\n  " +
                         settings(primarySuite) + ": not found.\n  " + settings(legacySuite) +
                         ": not found.\n\n"))
      << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(SettingsFiles, ThatAreMissingAreNamedWhereTheEarlierOnesCount) {
  home_.setJournalRoot(legacySuite, "~/Journal");
  const Answer given = answer();
  EXPECT_TRUE(given.says("  " + home_.below("Journal") + "\n  The preferences of " +
                         std::string(legacySuite) + " name this folder.\n"))
      << given.output;
  EXPECT_TRUE(given.says("\n  " + settings(primarySuite) + ": not found.\n")) << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(SettingsFiles, ThatNameNoJournalAreNamed) {
  writeFile(settings(primarySuite), propertyListOfText("theme", "dark"));
  writeFile(settings(legacySuite), propertyListWith("journalRoot", "<true/>"));
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n  " + settings(primarySuite) + ": it has no text under the key journalRoot.\n"))
      << given.output;
  EXPECT_TRUE(given.says("\n  " + settings(legacySuite) + ": it has no text under the key journalRoot.\n"))
      << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(SettingsFiles, ThatCannotBeReadWantAttention) {
  home_.setJournalRoot(primarySuite, "~/Journal");
  chmod(settings(primarySuite).c_str(), 0);
  const Answer given = answerToOrdinaryUser();
  EXPECT_TRUE(given.says("\n  " + home_.journal() + "\n  This is the default folder")) << given.output;
  EXPECT_TRUE(given.says("\n! " + settings(primarySuite) + ": it can't be read: Permission denied\n"))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(SettingsFiles, ThatAreNoPropertyListWantAttention) {
  writeFile(settings(primarySuite), "journalRoot=~/Journal");
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! " + settings(primarySuite) +
                         ": it is not a property list, or it is longer than 16 MiB.\n"))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(SettingsFiles, AreInTheFolderForThem) {
  writeFile(home_.below("settings/" + std::string(primarySuite) + ".plist"),
            propertyListOfText("journalRoot", "~/Journal"));
  const Answer given =
      callDoctor({.home = home_.path(), .variables = {"XDG_CONFIG_HOME=" + home_.below("settings")}});
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + home_.below("Journal") + "\n")) << given.output;
}

}  // namespace
}  // namespace halvane
