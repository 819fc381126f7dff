#include "tools/read_entry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/current_folder.h"
#include "tests/support/deep_folder.h"
#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tools/list_recent.h"

namespace halvane {
namespace {

using namespace std::string_literals;

const std::string refusal = "Refused: path is outside the journal.";

std::string noEntryAt(const std::string& path) {
  return "No entry found at " + path + ".";
}

// What is read of an entry that has nothing but a date and a body.
std::string shownWithBody(const std::string& body) {
  return "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\n" + body;
}

TEST(ReadEntry, ShowsTheWholeEntry) {
  const TemporaryHome home;
  const std::string path =
      home.write("2025/11-03.md", EntryFile{.durationSeconds = "754",
                                            .cleaned = "true",
                                            .edited = "2025-11-03T10:00:00Z",
                                            .cleanupModel = "example-model-1",
                                            .language = "en",
                                            .tags = "[Work, #Ideas]",
                                            .body = "Walked to the harbour.\nWrote the plan."}
                                      .text());
  EXPECT_EQ(readEntry(path),
            "Date: Nov 3, 2025 at 9:14 AM\n"
            "Duration: 754s\n"
            "Cleaned: true\n"
            "Tags: work, ideas\n"
            "\n"
            "Walked to the harbour.\n"
            "Wrote the plan.");
}

TEST(ReadEntry, ShowsAbsentFieldsByTheirDefaultsAndNoTagsByNoLine) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody("Text"));
  EXPECT_EQ(readEntry(path),
            "Date: Nov 3, 2025 at 9:14 AM\n"
            "Duration: 0s\n"
            "Cleaned: false\n"
            "\n"
            "Text");
}

TEST(ReadEntry, EndsWithTheEmptyLineWhereThereIsNoBody) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody(""));
  EXPECT_EQ(readEntry(path), "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\n");
}

TEST(ReadEntry, ShowsANegativeOrLongDurationAsItIs) {
  const TemporaryHome home;
  const std::string negative = home.write("a.md", EntryFile{.durationSeconds = "-5"}.text());
  EXPECT_NE(readEntry(negative).find("\nDuration: -5s\n"), std::string::npos);
  const std::string large = home.write("b.md", EntryFile{.durationSeconds = "1234567"}.text());
  EXPECT_NE(readEntry(large).find("\nDuration: 1234567s\n"), std::string::npos) << "without grouping";
}

TEST(ReadEntry, ShowsTheBodyUntouched) {
  const TemporaryHome home;
  for (const std::string& body :
       {"one\n\n\ntwo"s, "Date: tomorrow\nTags: none"s, "Text\n\nDate: tomorrow\n---\nmore"s, "one\r\ntwo"s,
        "\"quoted\" \\ / <b>"s, "nul\0nul"s, "👩\u200D👩\u200D👧 e\u0301"s, std::string(1000000, 'x')}) {
    const std::string path = home.write("a.md", entryWithBody(body));
    EXPECT_EQ(readEntry(path), shownWithBody(body));
  }
}

TEST(ReadEntry, ShowsTheDateInTheUsersLanguage) {
  TemporaryHome home;
  home.setLocale("de_DE");
  EXPECT_TRUE(readEntry(home.write("a.md", entryWithBody("Text"))).starts_with("Date: 3. Nov. 2025, 9:14\n"));
}

TEST(ReadEntry, RefusesWhateverDoesNotLieBelowTheJournal) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("inside"));
  for (const char* name : {"Documents/secret.md", "Documents/Halvane Old/a.md", "documents/halvane/a.md",
                           "secret.md", "Documents/HalvaneX.md"}) {
    writeFile(home.below(name), entryWithBody("outside"));
  }
  const std::string journal = home.journal();
  for (const std::string& path : {journal,
                                  journal + "/",
                                  journal + "//",
                                  journal + "/.",
                                  journal + "/./",
                                  journal + "/x/..",
                                  journal + "/../secret.md",
                                  journal + "/../../secret.md",
                                  journal + "/../Halvane",
                                  journal + "/../Halvane Old/a.md",
                                  journal + " Old/a.md",
                                  journal + "X.md",
                                  home.below("documents/halvane/a.md"),
                                  home.below("Documents/halvane/a.md"),
                                  home.path(),
                                  home.below("Documents"),
                                  home.below("Documents/secret.md"),
                                  "/"s,
                                  "/etc/passwd"s,
                                  "~"s,
                                  "~/"s,
                                  "~/secret.md"s,
                                  "~/Documents"s,
                                  "~/Documents/Halvane"s,
                                  "~/Documents/Halvane/"s,
                                  "~/Documents/Halvane/../secret.md"s,
                                  "~nobody-is-called-so/Documents/Halvane/a.md"s,
                                  journal.substr(1) + "/a.md",
                                  "file://" + journal + "/a.md",
                                  " " + journal + "/a.md",
                                  "\"" + journal + "/a.md\"",
                                  "/.." + journal,
                                  "/../../../../etc/passwd"s}) {
    EXPECT_EQ(readEntry(path), refusal) << path;
  }
}

TEST(ReadEntry, ReadsAPathThatLeadsBackIntoTheJournal) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("inside"));
  const std::string journal = home.journal();
  const std::string nameOfHome = home.path().substr(home.path().rfind('/') + 1);
  for (const std::string& path :
       {journal + "/a.md", journal + "/x/../a.md", journal + "/./a.md", journal + "//a.md",
        "/" + journal + "/a.md", journal + "/../Halvane/a.md", journal + "/x/y/../../a.md",
        home.path() + "/../" + nameOfHome + "/Documents/Halvane/a.md", "~/Documents/Halvane/a.md"s,
        "~/Documents/../Documents/Halvane/a.md"s, journal + "/a.md/", journal + "/a.md/."}) {
    EXPECT_EQ(readEntry(path), shownWithBody("inside")) << path;
  }
}

TEST(ReadEntry, SaysThatThereIsNoEntryAtThePathAsItWasSent) {
  const TemporaryHome home;
  home.write("no-entry.md", "no entry");
  home.write("folder.md/a.md", entryWithBody("inside"));
  makeNamedPipe(home.journal() + "/pipe.md");
  makeLink(home.journal() + "/dangling.md", home.journal() + "/missing.md");
  const std::string journal = home.journal();
  for (const std::string& path :
       {journal + "/missing.md", "~/Documents/Halvane/x.md"s, journal + "/no-entry.md",
        journal + "/folder.md", journal + "/folder.md/", journal + "/pipe.md", journal + "/dangling.md",
        journal + "/x/../missing.md", journal + "/A.md", journal + "/folder.md/a.md/b.md",
        journal + "/missing.md\n", journal + "/é.md", "/./" + journal + "//missing.md"}) {
    EXPECT_EQ(readEntry(path), noEntryAt(path));
  }
}

TEST(ReadEntry, DoesNotTellAFileThatItMayNotReadFromAMissingOne) {
  const TemporaryHome home;
  const std::string path = home.write("closed.md", entryWithBody("Text"));
  ASSERT_EQ(chmod(home.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  EXPECT_EQ(inChildProcess([&] {
              becomeOrdinaryUser();
              return readEntry(path);
            }),
            noEntryAt(path));
}

TEST(ReadEntry, LooksNeitherAtTheNameNorAtTheExtension) {
  const TemporaryHome home;
  for (const char* name : {"a.txt", ".hidden.md", ".hidden/a.md", "noextension", "a.MD"}) {
    EXPECT_EQ(readEntry(home.write(name, entryWithBody(name))), shownWithBody(name));
  }
}

TEST(ReadEntry, TakesARelativePathFromTheCurrentDirectory) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("top"));
  home.write("sub/b.md", entryWithBody("below"));
  {
    const CurrentFolder current(home.path());
    EXPECT_EQ(readEntry("a.md"), refusal);
    EXPECT_EQ(readEntry("Documents/Halvane/a.md"), shownWithBody("top"));
  }
  const CurrentFolder current(home.journal() + "/sub");
  EXPECT_EQ(readEntry("b.md"), shownWithBody("below"));
  EXPECT_EQ(readEntry("../a.md"), shownWithBody("top"));
  EXPECT_EQ(readEntry("../../a.md"), refusal);
  EXPECT_EQ(readEntry("a.md"), noEntryAt("a.md"));
}

TEST(ReadEntry, TakesTheEmptyPathForTheCurrentDirectory) {
  const TemporaryHome home;
  home.write("sub/b.md", entryWithBody("below"));
  {
    const CurrentFolder current(home.path());
    EXPECT_EQ(readEntry(""), refusal);
  }
  {
    const CurrentFolder current(home.journal());
    EXPECT_EQ(readEntry(""), refusal) << "the journal folder itself";
  }
  const CurrentFolder current(home.journal() + "/sub");
  EXPECT_EQ(readEntry(""), "No entry found at .");
}

TEST(ReadEntry, FindsNoFileUnderAPathWithANul) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody("inside"));
  EXPECT_EQ(readEntry(path + "\0"s), noEntryAt(path + "\0"s));
  EXPECT_EQ(readEntry(path + "\0.md"s), noEntryAt(path + "\0.md"s));
  EXPECT_EQ(readEntry(home.journal() + "/b\0/../a.md"s), noEntryAt(home.journal() + "/b\0/../a.md"s));
  EXPECT_EQ(readEntry(home.journal() + "\0/a.md"s), refusal);
  EXPECT_EQ(readEntry("\0"s), refusal);
  EXPECT_EQ(readEntry(home.path() + "\0"s + path), refusal);
}

TEST(ReadEntry, ConfinesToTheFolderThatTheSettingsNameHoweverTheySpellIt) {
  const TemporaryHome home;
  writeFile(home.below("j/a.md"), entryWithBody("inside"));
  writeFile(home.below("outside.md"), entryWithBody("outside"));
  for (const std::string& setting : {home.below("j"), home.below("j/"), home.below("j//"),
                                     home.below("./j/."), home.below("j/x/.."), "~/j"s, "~/j/"s, "~/./j"s}) {
    home.setJournalRoot(primarySuite, setting);
    EXPECT_EQ(readEntry(home.below("j/a.md")), shownWithBody("inside")) << setting;
    EXPECT_EQ(readEntry("~/j/a.md"), shownWithBody("inside")) << setting;
    EXPECT_EQ(readEntry(home.below("outside.md")), refusal) << setting;
    EXPECT_EQ(readEntry(home.below("j/../outside.md")), refusal) << setting;
    EXPECT_EQ(readEntry(home.below("j")), refusal) << setting;
  }
}

TEST(ReadEntry, RefusesWhatLayInTheJournalBeforeTheSettingsChanged) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody("inside"));
  EXPECT_EQ(readEntry(path), shownWithBody("inside"));
  home.setJournalRoot(primarySuite, "~/j");
  EXPECT_EQ(readEntry(path), refusal);
}

TEST(ReadEntry, RefusesEverythingWhereTheJournalIsTheRootOfTheFileSystem) {
  const TemporaryHome home;
  writeFile(home.below("a.md"), entryWithBody("inside"));
  home.setJournalRoot(primarySuite, "/");
  // The root's path ends in a slash already, and no standard path begins with two.
  for (const std::string& path : {"/"s, home.below("a.md"), "~/a.md"s, "//a.md"s}) {
    EXPECT_EQ(readEntry(path), refusal) << path;
  }
}

TEST(ReadEntry, FollowsLinksAndResolvesNoneBeforeItsTest) {
  const TemporaryHome home;
  writeFile(home.below("elsewhere/outside.md"), entryWithBody("outside"));
  writeFile(home.below("elsewhere/a.md"), entryWithBody("not this one"));
  home.write("a.md", entryWithBody("inside"));
  makeLink(home.journal() + "/link.md", home.below("elsewhere/outside.md"));
  makeLink(home.journal() + "/folder", home.below("elsewhere"));
  makeLink(home.below("other-way"), home.journal());
  EXPECT_EQ(readEntry(home.journal() + "/link.md"), shownWithBody("outside"));
  EXPECT_EQ(readEntry(home.journal() + "/folder/outside.md"), shownWithBody("outside"));
  EXPECT_EQ(readEntry(home.journal() + "/folder/../a.md"), shownWithBody("inside"));
  EXPECT_EQ(readEntry(home.below("elsewhere/outside.md")), refusal);
  EXPECT_EQ(readEntry(home.below("other-way/a.md")), refusal);
}

TEST(ReadEntry, MayHaveALinkForAJournalFolder) {
  const TemporaryHome home;
  writeFile(home.below("elsewhere/a.md"), entryWithBody("inside"));
  makeLink(home.journal(), home.below("elsewhere"));
  EXPECT_EQ(readEntry(home.journal() + "/a.md"), shownWithBody("inside"));
  EXPECT_EQ(readEntry(home.below("elsewhere/a.md")), refusal);
}

TEST(ReadEntry, TakesALookAlikeSpellingOfTheJournalFolderForTheJournalItself) {
  const TemporaryHome home;
  if (!tellsSpellingsApart()) GTEST_SKIP() << "to the file system they are one folder";
  const std::string composed = home.below("Caf\u00E9");
  const std::string decomposed = home.below("Cafe\u0301");
  writeFile(composed + "/a.md", entryWithBody("the journal's"));
  writeFile(decomposed + "/a.md", entryWithBody("the look-alike's"));
  home.setJournalRoot(primarySuite, composed);
  EXPECT_EQ(readEntry(composed + "/a.md"), shownWithBody("the journal's"));
  EXPECT_EQ(readEntry(decomposed + "/a.md"), shownWithBody("the journal's"));
  EXPECT_EQ(readEntry(decomposed), refusal);
  EXPECT_EQ(readEntry(home.below("Cafe/a.md")), refusal);
  EXPECT_EQ(readEntry(home.below("CAF\u00C9/a.md")), refusal);
}

TEST(ReadEntry, TakesANameBelowTheJournalThatBeginsWithAMark) {
  const TemporaryHome home;
  EXPECT_EQ(readEntry(home.write("\u0301.md", entryWithBody("marked"))), shownWithBody("marked"));
  EXPECT_EQ(readEntry(home.write("\u0338/a.md", entryWithBody("marked"))), shownWithBody("marked"));
}

TEST(ReadEntry, TakesNamesBelowTheJournalAsTheyAreSpelt) {
  const TemporaryHome home;
  if (!tellsSpellingsApart()) GTEST_SKIP() << "to the file system they are one file";
  const std::string composed = home.write("caf\u00E9.md", entryWithBody("composed"));
  const std::string decomposed = home.write("cafe\u0301.md", entryWithBody("decomposed"));
  EXPECT_EQ(readEntry(composed), shownWithBody("composed"));
  EXPECT_EQ(readEntry(decomposed), shownWithBody("decomposed"));
}

TEST(ReadEntry, ReadsWhatAListingNamesInAJournalFolderThatIsNotUtf8) {
  const TemporaryHome home;
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such name";
  writeFile(home.below("j\xFF/a.md"), EntryFile{.date = "2099-11-03T09:14:00Z", .body = "Text"}.text());
  const ScopedVariable newHome("HOME", home.below("j\xFF"));
  makeLink(home.below("j\xFF/Documents/Halvane"), home.below("j\xFF"));
  const std::string listing = listRecent(1, std::nullopt);
  const std::string path = listing.substr(listing.find('\n') + 1);
  EXPECT_NE(path.find("�"), std::string::npos);
  EXPECT_EQ(readEntry(path), "Date: Nov 3, 2099 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nText");
}

TEST(ReadEntry, ReadsWhatAListingNamesAtAnyDepth) {
  const TemporaryHome home;
  makeFolder(home.journal());
  writeFileDeepBelow(home.journal(), std::string(200, 'd'), 50, "a.md",
                     EntryFile{.date = "2099-11-03T09:14:00Z", .body = "deep"}.text());
  const std::string listing = listRecent(1, std::nullopt);
  EXPECT_EQ(readEntry(listing.substr(listing.find('\n') + 1)),
            "Date: Nov 3, 2099 at 9:14 AM\nDuration: 0s\nCleaned: false\n\ndeep");
}

}  // namespace
}  // namespace halvane
