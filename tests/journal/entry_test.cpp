#include "journal/entry.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_vectors.h"
#include "tests/support/written_file.h"
#include "text/text.h"

namespace halvane {
namespace {

using namespace std::string_literals;

Entry entryWithBody(const std::string& body) {
  Entry entry;
  entry.body = body;
  return entry;
}

Entry entryWithTags(const std::vector<std::string>& tags) {
  Entry entry;
  entry.tags = tags;
  return entry;
}

std::size_t hashOf(const Entry& entry) {
  return std::hash<Entry>()(entry);
}

// One with a value in every field.
Entry fullEntry() {
  Entry entry;
  entry.id = "/journal/a.md";
  entry.url = {"/journal/a.md"};
  entry.date = parseInternetDateTime("2025-03-14T08:30:00Z").value();
  entry.durationSeconds = 184;
  entry.cleaned = true;
  entry.editedAt = parseInternetDateTime("2025-03-14T10:02:11+01:00").value();
  entry.cleanupModel = "example-model-1";
  entry.language = "en";
  entry.tags = {"work", "garden"};
  entry.body = "Walked to the allotment before the rain.";
  return entry;
}

// The full entry with one thing changed.
Entry changed(const std::function<void(Entry&)>& change) {
  Entry entry = fullEntry();
  change(entry);
  return entry;
}

TEST(FirstLine, OfAnEmptyBodyIsEmpty) {
  EXPECT_EQ(entryWithBody("").firstLine(), "");
}

TEST(FirstLine, EndsAtTheFirstLineFeedAndHasNoWhiteSpaceAtItsEnds) {
  struct Case {
    std::string body, firstLine;
  };
  for (const Case& c : {Case{"First line  \nSecond line", "First line"}, Case{"one", "one"},
                        Case{"one\n", "one"}, Case{" \tone\t \u00A0\ntwo", "one"},
                        Case{"one \u3000two\u2003\nthree", "one \u3000two"}, Case{"one\n\n\ntwo", "one"},
                        Case{"# Heading\ntext", "# Heading"}, Case{"one\0two\nthree"s, "one\0two"s}}) {
    EXPECT_EQ(entryWithBody(c.body).firstLine(), c.firstLine) << testing::PrintToString(c.body);
  }
}

TEST(FirstLine, IsGivenWholeHoweverLongItIs) {
  const std::string line(5000, 'x');
  EXPECT_EQ(entryWithBody(line).firstLine(), line);
  EXPECT_EQ(entryWithBody(line + "\nmore").firstLine(), line);
}

TEST(FirstLine, DoesNotEndAtALineFeedAfterACarriageReturn) {
  struct Case {
    std::string body, firstLine;
  };
  for (const Case& c :
       {Case{"one\r\ntwo\nthree", "one\r\ntwo"}, Case{"one\r\ntwo", "one\r\ntwo"},
        Case{"one\r\n\ntwo", "one\r\n"}, Case{"one\r\ntwo\r\n\r\nthree\nfour", "one\r\ntwo\r\n\r\nthree"},
        Case{"one\r\r\ntwo\nthree", "one\r\r\ntwo"}, Case{"one\rtwo\nthree", "one\rtwo"},
        Case{"one\n\rtwo", "one"}, Case{"one\u2028two\u0085three\nfour", "one\u2028two\u0085three"}}) {
    EXPECT_EQ(entryWithBody(c.body).firstLine(), c.firstLine) << testing::PrintToString(c.body);
  }
}

TEST(FirstLine, SkipsLineFeedsAtTheStart) {
  EXPECT_EQ(entryWithBody("\n\none\ntwo").firstLine(), "one");
}

TEST(FirstLine, IsThePlatformsFirstPiece) {
  for (const auto& line : vectorsIn("first_line.jsonl")) {
    const std::string first = textOf(line, "first");
    EXPECT_EQ(entryWithBody(textOf(line, "text")).firstLine(), trimWhitespacesButNewlines(first))
        << boost::json::serialize(line);
  }
}

TEST(TagSuffix, OfNoTagsIsEmpty) {
  EXPECT_EQ(tagSuffix(entryWithTags({})), "");
}

TEST(TagSuffix, HasABlankAndAHashBeforeEachTagInTheirOrder) {
  EXPECT_EQ(tagSuffix(entryWithTags({"idea"})), " #idea");
  EXPECT_EQ(tagSuffix(entryWithTags({"work", "family"})), " #work #family");
  EXPECT_EQ(tagSuffix(entryWithTags({"a", "b", "c"})), " #a #b #c");
  EXPECT_EQ(tagSuffix(entryWithTags({"c", "a", "b"})), " #c #a #b");
}

TEST(TagSuffix, WritesTagsAsTheyAreStored) {
  EXPECT_EQ(tagSuffix(entryWithTags({"Not Canonical", "#", ""})), " #Not Canonical ## #");
}

TEST(EntryEquality, HoldsForTwoReadingsOfOneFile) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), EntryFile{.tags = "work", .body = "Text"}.text());
  const Entry first = Entry::parse({folder.below("a.md")}).value();
  const Entry second = Entry::parse({folder.below("a.md")}).value();
  EXPECT_EQ(first, second);
  EXPECT_EQ(hashOf(first), hashOf(second));
}

TEST(EntryEquality, EndsWhenTheFileChangesAlthoughTheIdentityStays) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), EntryFile{.body = "before"}.text());
  const Entry before = Entry::parse({folder.below("a.md")}).value();
  writeFile(folder.below("a.md"), EntryFile{.body = "after"}.text());
  const Entry after = Entry::parse({folder.below("a.md")}).value();
  EXPECT_NE(before, after);
  EXPECT_EQ(before.id, after.id);
}

TEST(EntryEquality, TakesAllTenFields) {
  struct Case {
    const char* field;
    std::function<void(Entry&)> change;
  };
  for (const Case& c : {
           Case{"id", [](Entry& entry) { entry.id = "/journal/b.md"; }},
           Case{"url", [](Entry& entry) { entry.url.path = "/journal/b.md"; }},
           Case{"date", [](Entry& entry) { entry.date += std::chrono::seconds(1); }},
           Case{"durationSeconds", [](Entry& entry) { entry.durationSeconds = 185; }},
           Case{"cleaned", [](Entry& entry) { entry.cleaned = false; }},
           Case{"editedAt", [](Entry& entry) { *entry.editedAt += std::chrono::seconds(1); }},
           Case{"no editedAt", [](Entry& entry) { entry.editedAt.reset(); }},
           Case{"cleanupModel", [](Entry& entry) { entry.cleanupModel = "example-model-2"; }},
           Case{"no cleanupModel", [](Entry& entry) { entry.cleanupModel.reset(); }},
           Case{"language", [](Entry& entry) { entry.language = "EN"; }},
           Case{"no language", [](Entry& entry) { entry.language.reset(); }},
           Case{"another tag",
                [](Entry& entry) {
                  entry.tags = {"work", "gardens"};
                }},
           Case{"the tags' order",
                [](Entry& entry) {
                  entry.tags = {"garden", "work"};
                }},
           Case{"fewer tags", [](Entry& entry) { entry.tags = {"work"}; }},
           Case{"more tags", [](Entry& entry) { entry.tags.push_back("home"); }},
           Case{"no tags", [](Entry& entry) { entry.tags.clear(); }},
           Case{"body", [](Entry& entry) { entry.body += "."; }},
       }) {
    EXPECT_NE(fullEntry(), changed(c.change)) << c.field;
    EXPECT_NE(changed(c.change), fullEntry()) << c.field;
    EXPECT_NE(hashOf(fullEntry()), hashOf(changed(c.change))) << c.field;
  }
  EXPECT_EQ(fullEntry(), fullEntry());
  EXPECT_EQ(hashOf(fullEntry()), hashOf(fullEntry()));
}

TEST(EntryEquality, TellsWhatIsEmptyFromWhatIsAbsent) {
  const Entry empty = changed([](Entry& entry) { entry.language = ""; });
  const Entry absent = changed([](Entry& entry) { entry.language.reset(); });
  EXPECT_NE(empty, absent);
  EXPECT_NE(hashOf(empty), hashOf(absent));
  const Entry emptyModel = changed([](Entry& entry) { entry.cleanupModel = ""; });
  const Entry absentModel = changed([](Entry& entry) { entry.cleanupModel.reset(); });
  EXPECT_NE(emptyModel, absentModel);
  EXPECT_NE(hashOf(emptyModel), hashOf(absentModel));
}

TEST(EntryEquality, TakesCanonicallyEquivalentTextsForEqual) {
  const auto withTexts = [](const std::string& text) {
    return changed([&](Entry& entry) {
      entry.id = "/journal/" + text;
      entry.cleanupModel = text;
      entry.language = text;
      entry.tags = {text};
      entry.body = text;
    });
  };
  EXPECT_EQ(withTexts("caf\u00E9"), withTexts("cafe\u0301"));
  EXPECT_EQ(hashOf(withTexts("caf\u00E9")), hashOf(withTexts("cafe\u0301")));
  EXPECT_EQ(withTexts("\u1E69"), withTexts("s\u0307\u0323"));
  EXPECT_EQ(hashOf(withTexts("\u1E69")), hashOf(withTexts("s\u0307\u0323")));
  EXPECT_NE(withTexts("caf\u00E9"), withTexts("cafe"));
  EXPECT_NE(withTexts("caf\u00E9"), withTexts("CAF\u00C9"));
}

TEST(EntryHash, TellsWhichOfTwoNeighboursIsAbsent) {
  const Entry withoutModel = changed([](Entry& entry) {
    entry.cleanupModel.reset();
    entry.language = "en";
  });
  const Entry withoutLanguage = changed([](Entry& entry) {
    entry.cleanupModel = "en";
    entry.language.reset();
  });
  EXPECT_NE(hashOf(withoutModel), hashOf(withoutLanguage));
}

TEST(EntryHash, KeepsNeighbouringTextsApart) {
  const auto with = [](const std::string& model, const std::string& language,
                       const std::vector<std::string>& tags, const std::string& body) {
    return hashOf(changed([&](Entry& entry) {
      entry.cleanupModel = model;
      entry.language = language;
      entry.tags = tags;
      entry.body = body;
    }));
  };
  EXPECT_NE(with("ab", "c", {}, ""), with("a", "bc", {}, ""));
  EXPECT_NE(with("", "", {"ab"}, ""), with("", "", {"a", "b"}, ""));
  EXPECT_NE(with("", "", {"a"}, "b"), with("", "", {}, "ab"));
  EXPECT_NE(with("", "", {"a", ""}, ""), with("", "", {"a"}, ""));
}

TEST(FileUrl, ShowsBytesThatAreNotUtf8AsReplacements) {
  EXPECT_EQ(FileUrl{"/a/é.md"}.text(), "/a/é.md");
  EXPECT_EQ(FileUrl{"/a/\xFF\xC3.md"}.text(), "/a/��.md");
}

}  // namespace
}  // namespace halvane
