#include <gtest/gtest.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

TEST(EntriesInICloud, ThatAreNotDownloadedAreCounted) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  for (const char* name :
       {".b.md.icloud", "2025/.c.md.icloud", "2025/.picture.jpg.icloud", ".hidden/.d.md.icloud"})
    home.write(name, "bplist00");
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("Entries among them: 1\n")) << given.output;
  EXPECT_TRUE(
      given.says("\n! Entries that iCloud Drive has not downloaded: 2. The server can't see them.\n"
                 "  In the Finder, control-click "))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST(EntriesInICloud, AreNotSpokenOfWhereAllAreHere) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_FALSE(given.says("iCloud")) << given.output;
  EXPECT_EQ(given.status, 0);
}

}  // namespace
}  // namespace halvane
