#include "journal/journal_location.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/current_folder.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

TEST(JournalLocation, IsBelowTheDocumentsWhereNoSettingsNameIt) {
  const TemporaryHome home;
  EXPECT_EQ(journalRoot().path, home.below("Documents/Halvane"));
}

TEST(JournalLocation, IsNotLookedForOnTheDisk) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, "/no/such/folder");
  EXPECT_EQ(journalRoot().path, "/no/such/folder");
}

TEST(JournalLocation, IsWhatTheApplicationsSettingsSay) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, "/journals/mine");
  EXPECT_EQ(journalRoot().path, "/journals/mine");
}

TEST(JournalLocation, IsWhatTheEarlierSettingsSayWhereThePresentOnesSayNothing) {
  const TemporaryHome home;
  home.setJournalRoot(legacySuite, "/journals/old");
  EXPECT_EQ(journalRoot().path, "/journals/old") << "no present settings";
  writeFile(home.settings(primarySuite), propertyListOfText("theme", "dark"));
  EXPECT_EQ(journalRoot().path, "/journals/old") << "present settings without the key";
}

TEST(JournalLocation, IsWhatThePresentSettingsSayWhereBothSaySomething) {
  const TemporaryHome home;
  home.setJournalRoot(legacySuite, "/journals/old");
  home.setJournalRoot(primarySuite, "/journals/new");
  EXPECT_EQ(journalRoot().path, "/journals/new");
}

TEST(JournalLocation, PassesOverSettingsThatAreNoPropertyList) {
  const TemporaryHome home;
  home.setJournalRoot(legacySuite, "/journals/old");
  writeFile(home.settings(primarySuite), "garbage");
  EXPECT_EQ(journalRoot().path, "/journals/old");
  writeFile(home.settings(legacySuite), "garbage");
  EXPECT_EQ(journalRoot().path, home.below("Documents/Halvane"));
}

TEST(JournalLocation, PassesOverAValueThatIsNoText) {
  const TemporaryHome home;
  home.setJournalRoot(legacySuite, "/journals/old");
  for (const char* value :
       {"<true/>", "<integer>5</integer>", "<array><string>/journals/new</string></array>"}) {
    writeFile(home.settings(primarySuite), propertyListWith("journalRoot", value));
    EXPECT_EQ(journalRoot().path, "/journals/old") << value;
  }
}

TEST(JournalLocation, MayBeginWithATilde) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, "~/Journal");
  EXPECT_EQ(journalRoot().path, home.below("Journal"));
  home.setJournalRoot(primarySuite, "~");
  EXPECT_EQ(journalRoot().path, home.path());
}

TEST(JournalLocation, OfTheEmptyTextIsTheCurrentDirectory) {
  const TemporaryHome home;
  makeFolder(home.below("here"));
  home.setJournalRoot(primarySuite, "");
  const CurrentFolder current(home.below("here"));
  EXPECT_EQ(journalRoot().path, home.below("here"));
}

TEST(JournalLocation, OfARelativePathLiesBelowTheCurrentDirectory) {
  const TemporaryHome home;
  makeFolder(home.below("here"));
  home.setJournalRoot(primarySuite, "journal/mine");
  const CurrentFolder current(home.below("here"));
  EXPECT_EQ(journalRoot().path, home.below("here/journal/mine"));
}

TEST(JournalLocation, IsTakenAsItIsStored) {
  const TemporaryHome home;
  makeFolder(home.below("here"));
  const CurrentFolder current(home.below("here"));
  home.setJournalRoot(primarySuite, "  /journals/mine  ");
  EXPECT_EQ(journalRoot().path, home.below("here/  /journals/mine  ")) << "blanks are part of the path";
  home.setJournalRoot(primarySuite, "/journals/../x/./mine/");
  EXPECT_EQ(journalRoot().path, "/journals/../x/./mine/") << "not standardised";
  makeLink(home.below("link"), home.below("here"));
  home.setJournalRoot(primarySuite, home.below("link"));
  EXPECT_EQ(journalRoot().path, home.below("link")) << "links are not resolved";
}

TEST(JournalLocation, ChangesShowAtOnce) {
  const TemporaryHome home;
  EXPECT_EQ(journalRoot().path, home.below("Documents/Halvane"));
  home.setJournalRoot(primarySuite, "/journals/a");
  EXPECT_EQ(journalRoot().path, "/journals/a");
  home.setJournalRoot(primarySuite, "/journals/b");
  EXPECT_EQ(journalRoot().path, "/journals/b");
}

TEST(JournalLocation, IsToldWithWhoNamesItAndWhoWasAskedInVain) {
  const TemporaryHome home;
  const std::string primary(primarySuite), legacy(legacySuite);
  JournalLocation location = locateJournal();
  EXPECT_EQ(location.root, journalRoot());
  EXPECT_EQ(location.namedBy, std::nullopt);
  EXPECT_EQ(location.askedBefore, (std::vector<std::string>{primary, legacy}));
  home.setJournalRoot(legacySuite, "/journals/old");
  location = locateJournal();
  EXPECT_EQ(location.root, journalRoot());
  EXPECT_EQ(location.namedBy, legacy);
  EXPECT_EQ(location.askedBefore, std::vector<std::string>{primary});
  home.setJournalRoot(primarySuite, "/journals/new");
  location = locateJournal();
  EXPECT_EQ(location.root, journalRoot());
  EXPECT_EQ(location.namedBy, primary);
  EXPECT_EQ(location.askedBefore, std::vector<std::string>{});
}

TEST(AppDefaults, AreReadByTheNameOfTheApplication) {
  const TemporaryHome home;
  home.setJournalRoot("org.example.a", "/journals/a");
  home.setJournalRoot("org.example.b", "/journals/b");
  EXPECT_EQ(appDefaults("org.example.a").value().string("journalRoot"), "/journals/a");
  EXPECT_EQ(appDefaults("org.example.b").value().string("journalRoot"), "/journals/b");
}

TEST(AppDefaults, OfAnApplicationWithoutSettingsSayNothing) {
  const TemporaryHome home;
  const std::optional<Preferences> defaults = appDefaults("org.example.c");
  EXPECT_EQ(defaults ? defaults->string("journalRoot") : std::nullopt, std::nullopt);
}

}  // namespace
}  // namespace halvane
