#include <gtest/gtest.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// Where the journal is, and who says so.

namespace halvane {
namespace {

class Location : public testing::Test {
 protected:
  Location() {
    home_.write("a.md", EntryFile{}.text());
    writeFile(home_.below("Journal/a.md"), EntryFile{}.text());
  }

  Answer answer() const { return callDoctor({.home = home_.path()}); }

  const TemporaryHome home_;
};

TEST_F(Location, IsTheDefaultFolderWithoutSettings) {
  const Answer given = answer();
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + home_.journal() +
                         "\n  This is the default folder: no preferences name another.\n"))
      << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(Location, IsWhatThePreferencesSay) {
  home_.setJournalRoot(primarySuite, "~/Journal");
  const Answer given = answer();
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + home_.below("Journal") + "\n  The preferences of " +
                         std::string(primarySuite) + " name this folder.\n"))
      << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(Location, IsWhatTheEarlierPreferencesSay) {
  home_.setJournalRoot(legacySuite, "~/Journal");
  const Answer given = answer();
  EXPECT_TRUE(given.says("  " + home_.below("Journal") + "\n  The preferences of " +
                         std::string(legacySuite) + " name this folder.\n"))
      << given.output;
  EXPECT_EQ(given.status, 0);
}

}  // namespace
}  // namespace halvane
