#include "tools/search_entries.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

using namespace std::string_literals;

constexpr std::nullopt_t anyTag = std::nullopt;
const std::string dateInWords = "[Nov 3, 2025 at 9:14 AM]";

bool isFound(const std::string& query) {
  return !searchEntries(query, anyTag, 10).starts_with("No entries");
}

std::string noMatch(const std::string& query) {
  return "No entries match \"" + query + "\".";
}

TEST(SearchEntries, ShowsDateTagsAndPathAndBelowThemTheWordsAroundTheMatch) {
  const TemporaryHome home;
  const std::string path =
      home.write("2025/11-03.md",
                 EntryFile{.tags = "work, ideas", .body = "Walked to the harbour.\nWrote the plan."}.text());
  EXPECT_EQ(searchEntries("harbour", anyTag, 10),
            "[Nov 3, 2025 at 9:14 AM] #work #ideas " + path + "\n…Walked to the harbour. Wrote the plan.…");
}

TEST(SearchEntries, ShowsTheNewestHitFirstWithAnEmptyLineBetween) {
  const TemporaryHome home;
  const std::string earlier =
      home.write("a.md", EntryFile{.date = "2025-11-01T19:40:00Z", .body = "The harbour."}.text());
  const std::string later = home.write("b.md", EntryFile{.tags = "work", .body = "Harbour again."}.text());
  EXPECT_EQ(searchEntries("harbour", anyTag, 10), "[Nov 3, 2025 at 9:14 AM] #work " + later +
                                                      "\n…Harbour again.…\n\n" + "[Nov 1, 2025 at 7:40 PM] " +
                                                      earlier + "\n…The harbour.…");
}

TEST(SearchEntries, FindsWordsWithoutRegardToLetterCase) {
  const TemporaryHome home;
  for (const char* body : {"to the harbour", "TO THE HARBOUR", "To The Harbour"}) {
    home.write("a.md", entryWithBody(body));
    for (const char* query : {"Harbour", "harbour", "HARBOUR", "hArBoUr", "the h"}) {
      EXPECT_TRUE(isFound(query)) << query << " in " << body;
    }
  }
}

TEST(SearchEntries, FindsWordsByFullCaseFoldingAndCanonicalEquivalence) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("Die Straße zum Café, ΟΔΟΣ, 가다"));
  for (const char* query : {"STRASSE", "strasse", "straße", "CAFÉ", "Cafe\u0301", "οδος", "\u1100\u1161다"}) {
    EXPECT_TRUE(isFound(query)) << query;
  }
  for (const char* query : {"cafe", "Caf", "stras", "strase", "\u1100", "zumcafé", "e,"}) {
    EXPECT_EQ(isFound(query), query == "Caf"s) << query;
  }
}

TEST(SearchEntries, LooksIntoBodiesOnly) {
  const TemporaryHome home;
  home.write("filename/harbour.md", EntryFile{.durationSeconds = "754",
                                              .cleanupModel = "model-harbour",
                                              .language = "harbour",
                                              .tags = "harbour",
                                              .body = "Body"}
                                        .text());
  for (const char* query : {"harbour", "filename", "754", "model", "2025", "date", "---", "tags:"}) {
    EXPECT_EQ(searchEntries(query, anyTag, 10), noMatch(query));
  }
  EXPECT_TRUE(isFound("body"));
}

TEST(SearchEntries, TakesTheQueryAsOnePieceAndAsItIs) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("one two  three\nfour"));
  for (const char* query : {"one two", "two  three", " ", "  ", "three\nfour", "\n"})
    EXPECT_TRUE(isFound(query)) << query;
  for (const char* query :
       {" one", "one  two", "two one", "four ", "three four", "   ", "\t", "one*", ".", "#one"}) {
    EXPECT_FALSE(isFound(query)) << query;
  }
}

TEST(SearchEntries, ListsTheNewestEntriesByTheirFirstLinesWhereThereIsNoQuery) {
  const TemporaryHome home;
  const std::string a =
      home.write("a.md", EntryFile{.date = "2025-11-01T12:00:00Z", .body = "First  \nmore"}.text());
  const std::string b = home.write(
      "b.md", EntryFile{.date = "2025-11-02T12:00:00Z", .tags = "work", .body = "Second\nmore"}.text());
  const std::string c = home.write("c.md", EntryFile{.date = "2025-11-03T12:00:00Z"}.text());
  EXPECT_EQ(searchEntries("", anyTag, 10), "[Nov 3, 2025 at 12:00 PM] " + c +
                                               "\n\n\n[Nov 2, 2025 at 12:00 PM] #work " + b +
                                               "\nSecond\n\n[Nov 1, 2025 at 12:00 PM] " + a + "\nFirst");
  EXPECT_EQ(searchEntries("", anyTag, 2),
            "[Nov 3, 2025 at 12:00 PM] " + c + "\n\n\n[Nov 2, 2025 at 12:00 PM] #work " + b + "\nSecond");
  EXPECT_EQ(searchEntries("", "work", 10), "[Nov 2, 2025 at 12:00 PM] #work " + b + "\nSecond");
}

TEST(SearchEntries, TakesHitsWithTheTagOnly) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{.tags = "home, #Work", .body = "harbour"}.text());
  home.write("b.md", EntryFile{.tags = "workshop", .body = "harbour"}.text());
  home.write("c.md", EntryFile{.body = "harbour work"}.text());
  home.write("d.md", EntryFile{.tags = "work", .body = "no such word"}.text());
  EXPECT_EQ(searchEntries("harbour", "work", 10), dateInWords + " #home #work " + path + "\n…harbour…");
}

TEST(SearchEntries, KeepsTheNewestHitsUpToTheLimitAndSaysNothingOfTheOthers) {
  const TemporaryHome home;
  for (int day = 10; day < 22; ++day) {
    home.write("d" + std::to_string(31 - day) + ".md",
               EntryFile{.date = "2025-10-" + std::to_string(day) + "T12:00:00Z", .body = "harbour"}.text());
  }
  std::string expected;
  for (int day = 21; day >= 12; --day) {
    if (!expected.empty()) expected += "\n\n";
    expected += "[Oct " + std::to_string(day) + ", 2025 at 12:00 PM] " + home.journal() + "/d" +
                std::to_string(31 - day) + ".md\n…harbour…";
  }
  EXPECT_EQ(searchEntries("harbour", anyTag, 10), expected);
}

TEST(SearchEntries, KeepsNothingWhereTheLimitIsZero) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("harbour"));
  EXPECT_EQ(searchEntries("harbour", anyTag, 0), "No entries match \"harbour\".");
}

TEST(SearchEntries, KeepsHitsWithEqualDatesInTheOrderOfTheWalk) {
  const TemporaryHome home;
  for (const char* name : {"b.md", "sub/a.md", "a.md"}) home.write(name, entryWithBody("harbour"));
  const std::string& journal = home.journal();
  EXPECT_EQ(searchEntries("harbour", anyTag, 2), dateInWords + " " + journal + "/a.md\n…harbour…\n\n" +
                                                     dateInWords + " " + journal + "/b.md\n…harbour…");
}

TEST(SearchEntries, SaysThatNothingMatches) {
  const TemporaryHome home;
  EXPECT_EQ(searchEntries("harbour", anyTag, 10), "No entries match \"harbour\".") << "an empty journal";
  EXPECT_EQ(searchEntries("", anyTag, 10), "No entries match \"\".") << "an empty journal";
  home.write("a.md", EntryFile{.tags = "work", .body = "Text"}.text());
  EXPECT_EQ(searchEntries("harbour", anyTag, 10), "No entries match \"harbour\".");
  EXPECT_EQ(searchEntries("harbour", "work", 10), "No entries tagged work match \"harbour\".");
  EXPECT_EQ(searchEntries("text", "home", 10), "No entries tagged home match \"text\".");
  EXPECT_EQ(searchEntries("", "home", 10), "No entries tagged home match \"\".");
}

TEST(SearchEntries, RepeatsTheQueryExactlyAsItWasSent) {
  const TemporaryHome home;
  for (const std::string& query : {"  Harbour "s, "a \"quoted\" word"s, "two\nlines"s, "\\ / \t"s, "\0nul"s,
                                   "é e\u0301"s, std::string(10000, 'q')}) {
    EXPECT_EQ(searchEntries(query, anyTag, 10), noMatch(query));
  }
}

TEST(SearchEntries, TellsDottedAndDotlessIApartInATurkishLocale) {
  TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody("ISPARTA\nistanbul"));
  home.setLocale("tr_TR");
  EXPECT_FALSE(isFound("isparta"));
  EXPECT_TRUE(isFound("ısparta"));
  EXPECT_FALSE(isFound("Istanbul"));
  EXPECT_TRUE(isFound("İstanbul"));
  home.setLocale("az_AZ");
  EXPECT_TRUE(isFound("ısparta"));
  home.setLocale("en_US");
  EXPECT_TRUE(isFound("isparta"));
  EXPECT_FALSE(isFound("ısparta"));
  EXPECT_TRUE(isFound("Istanbul"));
}

TEST(SearchEntries, ShowsTheFirstLineOfAHitThatIsOneInATurkishLocaleAlone) {
  TemporaryHome home;
  const std::string path = home.write("a.md", entryWithBody("First line\nISPARTA"));
  home.setLocale("tr_TR");
  const std::string found = searchEntries("ısparta", anyTag, 10);
  EXPECT_EQ(found.substr(found.find('\n') + 1), "First line");
}

TEST(SearchEntries, ShowsAPathThatIsNotUtf8WithReplacements) {
  const TemporaryHome home;
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such name";
  home.write("f\xFF.md", entryWithBody("harbour"));
  EXPECT_EQ(searchEntries("harbour", anyTag, 10), dateInWords + " " + home.journal() + "/f�.md\n…harbour…");
}

TEST(SearchEntries, FindsNulsInBodies) {
  const TemporaryHome home;
  home.write("a.md", entryWithBody("a\0b"s));
  EXPECT_TRUE(isFound("\0"s));
  EXPECT_TRUE(isFound("A\0B"s));
  EXPECT_FALSE(isFound("\0c"s));
}

TEST(SearchEntries, SeesEveryChangeAtOnce) {
  const TemporaryHome home;
  EXPECT_FALSE(isFound("harbour"));
  home.write("a.md", entryWithBody("harbour"));
  EXPECT_TRUE(isFound("harbour"));
  home.write("a.md", entryWithBody("garden"));
  EXPECT_FALSE(isFound("harbour"));
}

}  // namespace
}  // namespace halvane
