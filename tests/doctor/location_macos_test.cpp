#include <gtest/gtest.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// The system keeps the settings, so the doctor names no files. Settings that say nothing of a journal are
// what most people have, and not worth a word.

namespace halvane {
namespace {

TEST(Settings, ThatNameNoJournalAreNotSpokenOf) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const std::string usual = "\nWhere the journal is\n  " + home.journal() +
                            "\n  This is the default folder: no preferences name another.\n\n";
  const Answer without = callDoctor({.home = home.path()});
  EXPECT_TRUE(without.says(usual)) << without.output;
  EXPECT_EQ(without.status, 0);
  writeFile(home.settings(primarySuite), propertyListOfText("theme", "dark"));
  writeFile(home.settings(legacySuite), propertyListWith("journalRoot", "<true/>"));
  const Answer with = callDoctor({.home = home.path()});
  EXPECT_TRUE(with.says(usual)) << with.output;
}

TEST(Settings, OfTheEarlierApplicationAreNamedAlone) {
  const TemporaryHome home;
  writeFile(home.below("Journal/a.md"), EntryFile{}.text());
  home.setJournalRoot(legacySuite, "~/Journal");
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + home.below("Journal") + "\n  The preferences of " +
                         std::string(legacySuite) + " name this folder.\n\n"))
      << given.output;
}

}  // namespace
}  // namespace halvane
