#include <gtest/gtest.h>

#include "journal/journal_location.h"
#include "tests/support/property_list.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// Settings are files that the program reads by itself.

namespace halvane {
namespace {

TEST(JournalLocation, PassesOverAPipeInPlaceOfSettings) {
  const TemporaryHome home;
  home.setJournalRoot(legacySuite, "/journals/old");
  makeNamedPipe(home.settings(primarySuite));
  EXPECT_EQ(journalRoot().path, "/journals/old");
}

TEST(JournalLocation, SettingsLieWhereTheUserKeepsThem) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, "/journals/of-home");
  writeFile(home.below("settings/" + std::string(primarySuite) + ".plist"),
            propertyListOfText("journalRoot", "/journals/of-settings"));
  const ScopedVariable folder("XDG_CONFIG_HOME", home.below("settings"));
  EXPECT_EQ(journalRoot().path, "/journals/of-settings");
}

TEST(AppDefaults, OfAnApplicationWithoutAFileAreNone) {
  const TemporaryHome home;
  EXPECT_FALSE(appDefaults("org.example.c"));
}

}  // namespace
}  // namespace halvane
