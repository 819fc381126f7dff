#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/child_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

TEST(Advice, TellsWhatShowsWhoMayReadAClosedJournal) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  chmod(home.path().c_str(), 0755);
  chmod(home.journal().c_str(), 0);
  const Answer given = callDoctor({.home = home.path(), .before = becomeOrdinaryUser});
  chmod(home.journal().c_str(), 0755);
  EXPECT_TRUE(given.says(" ls -ld shows the permissions.\n")) << given.output;
}

TEST(Advice, OfPermissionsIsForThoseWhoLackOne) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, "~/Nowhere");
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\n! The folder can't be read: No such file or directory\n")) << given.output;
  EXPECT_FALSE(given.says(" ls -ld shows the permissions.\n")) << given.output;
}

}  // namespace
}  // namespace halvane
