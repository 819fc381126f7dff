#include "journal/journal_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/deep_folder.h"
#include "tests/support/entry_file.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using Names = std::vector<std::string>;

void writeEntry(const TemporaryHome& home, std::string_view name,
                const std::string& date = "2025-11-03T09:14:00Z") {
  home.write(name, EntryFile{.date = date, .body = std::string(name)}.text());
}

// The entries' paths below the journal folder.
Names namesOf(const std::vector<Entry>& entries, const TemporaryHome& home) {
  Names names;
  for (const Entry& entry : entries) names.push_back(entry.url.path.substr(home.journal().size() + 1));
  return names;
}

Names loaded(const TemporaryHome& home) {
  return namesOf(loadEntries(), home);
}

TEST(JournalStore, OfAnEmptyOrMissingOrUnreadableFolderIsEmpty) {
  const TemporaryHome home;
  EXPECT_EQ(loadEntries(), std::vector<Entry>{}) << "missing";
  makeFolder(home.journal());
  EXPECT_EQ(loadEntries(), std::vector<Entry>{}) << "empty";
  home.setJournalRoot(primarySuite, home.below("file"));
  writeFile(home.below("file"), EntryFile{}.text());
  EXPECT_EQ(loadEntries(), std::vector<Entry>{}) << "no folder";
}

TEST(JournalStore, OfAFolderThatTheUserMayNotReadIsEmpty) {
  const TemporaryHome home;
  writeEntry(home, "a.md");
  ASSERT_EQ(chmod(home.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(home.journal().c_str(), 0), 0);
  EXPECT_EQ(inChildProcess([] {
              becomeOrdinaryUser();
              return std::to_string(loadEntries().size());
            }),
            "0");
  ASSERT_EQ(chmod(home.journal().c_str(), 0700), 0);
}

TEST(JournalStore, HoldsTheNewestEntriesFirst) {
  const TemporaryHome home;
  writeEntry(home, "a.md", "2025-11-01T12:00:00Z");
  writeEntry(home, "b.md", "2025-11-03T12:00:00Z");
  writeEntry(home, "c/d.md", "2025-11-02T12:00:00Z");
  writeEntry(home, "e.md", "1999-01-01T00:00:00Z");
  writeEntry(home, "f.md", "2099-01-01T00:00:00Z");
  EXPECT_EQ(loaded(home), (Names{"f.md", "b.md", "c/d.md", "a.md", "e.md"}));
}

TEST(JournalStore, ComparesMomentsAndNotTheirSpelling) {
  const TemporaryHome home;
  writeEntry(home, "a.md", "2025-11-03T09:00:00+09:00");
  writeEntry(home, "b.md", "2025-11-03T01:00:00Z");
  writeEntry(home, "c.md", "2025-11-02T23:00:00-05:00");
  EXPECT_EQ(loaded(home), (Names{"c.md", "b.md", "a.md"}));
}

TEST(JournalStore, KeepsEntriesWithEqualDatesInTheOrderOfTheWalk) {
  const TemporaryHome home;
  writeEntry(home, "a/b/c.md");
  writeEntry(home, "a-b/c.md");
  writeEntry(home, "a/z.md");
  writeEntry(home, "é.md");
  writeEntry(home, "z.md");
  writeEntry(home, "B.md");
  writeEntry(home, "later.md", "2025-11-03T09:14:01Z");
  writeEntry(home, "earlier.md", "2025-11-03T09:13:59Z");
  EXPECT_EQ(loaded(home),
            (Names{"later.md", "B.md", "z.md", "é.md", "a/z.md", "a/b/c.md", "a-b/c.md", "earlier.md"}));
}

TEST(JournalStore, TakesFilesWithTheExtensionMdOnly) {
  const TemporaryHome home;
  for (const char* name : {"a.md", "b.MD", "c.Md", "d.markdown", "e", "f.txt", "g.md.bak", ".md"})
    writeEntry(home, name);
  EXPECT_EQ(loaded(home), (Names{"a.md"}));
}

TEST(JournalStore, LeavesOutHiddenFilesAndWhatHiddenFoldersHold) {
  const TemporaryHome home;
  for (const char* name : {".notes.md", ".hidden/a.md", ".hidden/deep/b.md", "2025/.c.md", "2025/d.md"})
    writeEntry(home, name);
  EXPECT_EQ(loaded(home), (Names{"2025/d.md"}));
}

TEST(JournalStore, TakesFilesAtAnyDepth) {
  const TemporaryHome home;
  writeEntry(home, "top.md", "2025-11-04T00:00:00Z");
  writeEntry(home, "2025/11/03.md", "2025-11-03T00:00:00Z");
  writeEntry(home, "a/b/c/d/e/f/g/h.md", "2025-11-02T00:00:00Z");
  writeEntry(home, "Notes.app/Contents/i.md", "2025-11-01T00:00:00Z");
  writeEntry(home, "folder.md/j.md", "2025-10-31T00:00:00Z");
  EXPECT_EQ(loaded(home), (Names{"top.md", "2025/11/03.md", "a/b/c/d/e/f/g/h.md", "Notes.app/Contents/i.md",
                                 "folder.md/j.md"}));
}

TEST(JournalStore, TakesFilesDeeperThanThePathsThatTheSystemTakes) {
  const TemporaryHome home;
  makeFolder(home.journal());
  const std::string path = writeFileDeepBelow(home.journal(), std::string(200, 'd'), 50, "deep.md",
                                              EntryFile{.body = "deep"}.text());
  const std::vector<Entry> entries = loadEntries();
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].url.path, path);
  EXPECT_EQ(entries[0].body, "deep");
}

TEST(JournalStore, LeavesOutWhatIsNoEntryAndKeepsTheOthers) {
  const TemporaryHome home;
  writeEntry(home, "a.md");
  home.write("b.md", "no entry");
  home.write("c.md", "");
  home.write("d.md", "---\n---\n");
  home.write("e.md", EntryFile{.body = "\xFF"}.text());
  home.write("f.md", EntryFile{.date = "yesterday"}.text());
  makeNamedPipe(home.journal() + "/g.md");
  makeFolder(home.journal() + "/h.md");
  makeLink(home.journal() + "/i.md", home.journal() + "/missing");
  writeEntry(home, "z.md");
  EXPECT_EQ(loaded(home), (Names{"a.md", "z.md"}));
}

TEST(JournalStore, ReadsLinksToFilesAndEntersNoLinksToFolders) {
  const TemporaryHome home;
  writeFile(home.below("elsewhere/outside.md"), EntryFile{.body = "outside"}.text());
  writeEntry(home, "a.md");
  makeLink(home.journal() + "/folder", home.below("elsewhere"));
  makeLink(home.journal() + "/link.md", home.below("elsewhere/outside.md"));
  makeLink(home.journal() + "/loop", home.journal());
  EXPECT_EQ(loaded(home), (Names{"a.md", "link.md"}));
}

TEST(JournalStore, MayBeALinkToAFolder) {
  const TemporaryHome home;
  writeFile(home.below("elsewhere/a.md"), EntryFile{}.text());
  makeLink(home.journal(), home.below("elsewhere"));
  EXPECT_EQ(loaded(home), (Names{"a.md"}));
}

TEST(JournalStore, NamesItsFilesBelowTheFolderAsTheSettingsSpellIt) {
  const TemporaryHome home;
  writeFile(home.below("j/a.md"), EntryFile{}.text());
  home.setJournalRoot(primarySuite, "~/j/../j/");
  ASSERT_EQ(loadEntries().size(), 1U);
  EXPECT_EQ(loadEntries()[0].url.path, home.below("j/../j/a.md"));
}

TEST(JournalStore, SeesEveryChangeAtOnce) {
  const TemporaryHome home;
  writeEntry(home, "a.md");
  EXPECT_EQ(loaded(home), (Names{"a.md"}));
  writeEntry(home, "b.md");
  EXPECT_EQ(loaded(home), (Names{"a.md", "b.md"}));
  home.write("a.md", "no entry any more");
  EXPECT_EQ(loaded(home), (Names{"b.md"}));
  writeFile(home.below("other/c.md"), EntryFile{.body = "other"}.text());
  home.setJournalRoot(primarySuite, "~/other");
  ASSERT_EQ(loadEntries().size(), 1U);
  EXPECT_EQ(loadEntries()[0].body, "other");
}

std::string twoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

TEST(JournalStore, KeepsTheNewestOfThoseThatPassATest) {
  const TemporaryHome home;
  // The walk meets them neither in the order of their dates nor against it.
  for (int i = 0; i < 60; ++i) {
    writeEntry(home, twoDigits(i * 7 % 60) + ".md", "2025-11-03T09:" + twoDigits(i) + ":00Z");
  }
  const auto newest = [&](std::size_t count, const EntryTests& tests) {
    return namesOf(loadEntries(tests, count), home);
  };
  const EntryTests any;
  const EntryTests even{.body = [](std::string_view body) { return std::stoi(std::string(body)) % 2 == 0; }};
  EXPECT_EQ(newest(1, any), (Names{"53.md"}));
  EXPECT_EQ(newest(3, any), (Names{"53.md", "46.md", "39.md"}));
  EXPECT_EQ(newest(3, even), (Names{"46.md", "32.md", "18.md"}));
  EXPECT_EQ(newest(0, any), Names{});
  EXPECT_EQ(newest(1000, any).size(), 60U);
  EXPECT_EQ(newest(SIZE_MAX, even).size(), 30U);
  EXPECT_EQ(newest(5, {.body = [](std::string_view) { return false; }}), Names{});
}

// Wherever the newest entries stand among the others: the more are read, the fewer are still worth keeping.
TEST(JournalStore, KeepsTheNewestInWhateverOrderItMeetsThem) {
  const int count = 41;
  for (const int step : {1, 2, 3, 7, 13, 20, 29, 38, 39, 40}) {
    const TemporaryHome home;
    Names newestFirst(count);
    for (int i = 0; i < count; ++i) {
      const int minute = i * step % count;
      writeEntry(home, twoDigits(i) + ".md", "2025-11-03T09:" + twoDigits(minute) + ":00Z");
      newestFirst[static_cast<std::size_t>(count - 1 - minute)] = twoDigits(i) + ".md";
    }
    for (const std::size_t wanted : {1U, 2U, 3U, 5U, 10U, 20U, 40U}) {
      const Names newest = namesOf(loadEntries({}, wanted), home);
      EXPECT_EQ(newest, Names(newestFirst.begin(), newestFirst.begin() + static_cast<std::ptrdiff_t>(wanted)))
          << "one in " << step;
    }
  }
}

TEST(JournalStore, KeepsManyEntriesWithEqualDatesInTheOrderOfTheWalk) {
  const TemporaryHome home;
  Names early;
  Names expected;
  for (int i = 0; i < 100; ++i) {
    const bool late = i % 3 == 0;
    const std::string name = twoDigits(i) + ".md";
    writeEntry(home, name, late ? "2025-11-03T09:14:01Z" : "2025-11-03T09:14:00Z");
    (late ? expected : early).push_back(name);
  }
  expected.insert(expected.end(), early.begin(), early.end());
  EXPECT_EQ(loaded(home), expected);
}

TEST(JournalStore, KeepsTheFirstOfEqualDatesWhenThereAreMoreThanWanted) {
  const TemporaryHome home;
  for (int i = 0; i < 30; ++i) writeEntry(home, twoDigits(i) + ".md");
  EXPECT_EQ(namesOf(loadEntries({}, 4), home), (Names{"00.md", "01.md", "02.md", "03.md"}));
}

TEST(JournalStore, KeepsTheFilesOfAFolderBeforeThoseOfItsFoldersWhereDatesAreEqual) {
  const TemporaryHome home;
  const Names inOrder = {"10.md",    "9.md",        "B.md",     "a.md",       "z.md",    "é.md",  "a/b.md",
                         "a/a/x.md", "a/c.md/x.md", "a-b/x.md", "a-b/y/a.md", "ab/x.md", "b/x.md"};
  for (const std::string& name : inOrder) writeEntry(home, name);
  EXPECT_EQ(loaded(home), inOrder);
  for (std::size_t count = 0; count < inOrder.size(); ++count) {
    EXPECT_EQ(namesOf(loadEntries({}, count), home),
              Names(inOrder.begin(), inOrder.begin() + static_cast<std::ptrdiff_t>(count)));
  }
}

TEST(JournalStore, TestsAnEntrysHeadThenItsFileThenItsBody) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{.tags = "work", .body = "of the wanted tag"}.text());
  home.write("b.md", EntryFile{.tags = "family", .body = "of the other"}.text());
  Names asked;
  EntryTests tests;
  tests.head = [](const EntryHead& entry) { return entry.hasTag("work"); };
  tests.file = [&](std::string_view file) {
    asked.emplace_back(file.substr(0, 4));
    return true;
  };
  tests.body = [&](std::string_view body) {
    asked.emplace_back(body);
    return true;
  };
  EXPECT_EQ(namesOf(loadEntries(tests), home), (Names{"a.md"}));
  EXPECT_EQ(asked, (Names{"---\n", "of the wanted tag"}));
  tests.file = [](std::string_view) { return false; };
  asked.clear();
  EXPECT_EQ(loadEntries(tests), std::vector<Entry>{});
  EXPECT_EQ(asked, Names{});
}

TEST(JournalStore, AsksNothingAboutEntriesTooOldToBeAmongTheNewest) {
  const TemporaryHome home;
  for (const std::string year : {"2023", "2024", "2025"}) {
    for (int day = 1; day <= 9; ++day)
      writeEntry(home, year + "/" + twoDigits(day) + ".md", year + "-11-" + twoDigits(day) + "T09:14:00Z");
  }
  Names asked;
  const EntryTests tests{.body = [&](std::string_view body) {
    asked.emplace_back(body.substr(0, 5));
    return true;
  }};
  EXPECT_EQ(namesOf(loadEntries(tests, 1), home), (Names{"2025/09.md"}));
  for (const std::string& year : asked) EXPECT_EQ(year, "2025/");
  EXPECT_GE(asked.size(), 1U);
}

// A file is read in pieces. The first one tells whether its entry may be wanted, unless it ends too early.
TEST(JournalStore, ReadsOnWhereTheFirstPieceOfAFileEndsInItsFrontMatter) {
  const TemporaryHome home;
  const auto otherKey = [](std::size_t length) { return "other: " + std::string(length - 8, 'x') + "\n"; };
  const std::string early = "---\ndate: 2001-01-01T00:00:00Z\n";
  const std::string late = "date: 2025-11-03T09:14:00Z\n---\nbody";
  home.write("after.md", early + otherKey(100000) + late);
  // The first 65,536 bytes end with three hyphens, but their line goes on.
  home.write("hyphens.md", early + otherKey(65536 - early.size() - 3) + "---x: y\n" + late);
  home.write("old.md", early + "---\n" + otherKey(100000));
  const EntryTests sinceThen{.head = [](const EntryHead& entry) {
    return entry.date > parseInternetDateTime("2002-01-01T00:00:00Z");
  }};
  EXPECT_EQ(namesOf(loadEntries(sinceThen), home), (Names{"after.md", "hyphens.md"}));
}

TEST(JournalStore, LeavesOutAnEntryThatIsNotUtf8WhateverItsHeadSays) {
  const TemporaryHome home;
  home.write("front.md", "---\ndate: 2025-11-03T09:14:00Z\ntags: work, \xFF\n---\nbody");
  home.write("body.md", "---\ndate: 2025-11-03T09:14:00Z\ntags: work\n---\nbody\xE2\x80");
  EXPECT_EQ(loadEntries({.head = [](const EntryHead&) { return true; }}), std::vector<Entry>{});
  EXPECT_EQ(loadEntries({.head = [](const EntryHead& entry) { return entry.hasTag("work"); }}),
            std::vector<Entry>{});
}

}  // namespace
}  // namespace halvane
