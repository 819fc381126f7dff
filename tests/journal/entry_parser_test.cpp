#include "journal/entry_parser.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "journal/entry.h"
#include "tests/support/child_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using namespace std::string_literals;

const std::string dateLine = "date: 2025-03-14T08:30:00Z\n";

Instant at(const std::string& text) {
  return parseInternetDateTime(text).value();
}

// What the parser makes of a file with this content.
std::optional<Entry> parsed(const std::string& content) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), content);
  return Entry::parse({folder.below("a.md")});
}

// The same with these front-matter lines, after a valid date, and a body.
Entry entryWith(const std::string& lines) {
  return parsed("---\n" + dateLine + lines + "\n---\nBody").value();
}

TEST(EntryParser, ReadsEveryFieldOfAnEntry) {
  const TemporaryFolder folder;
  const std::string path = folder.below("a.md");
  writeFile(path,
            "---\n"
            "date: 2025-03-14T08:30:00Z\n"
            "duration_seconds: 184\n"
            "cleaned: true\n"
            "edited: 2025-03-14T10:02:11+01:00\n"
            "cleanup_model: example-model-1\n"
            "language: en\n"
            "tags: [work, garden]\n"
            "---\n"
            "\n"
            "Walked to the allotment before the rain.\n"
            "Planned the raised beds for spring.\n");
  const std::optional<Entry> entry = Entry::parse({path});
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->id, path);
  EXPECT_EQ(entry->url, FileUrl{path});
  EXPECT_EQ(entry->date, at("2025-03-14T08:30:00Z"));
  EXPECT_EQ(entry->durationSeconds, 184);
  EXPECT_TRUE(entry->cleaned);
  EXPECT_EQ(entry->editedAt, at("2025-03-14T09:02:11Z"));
  EXPECT_EQ(entry->cleanupModel, "example-model-1");
  EXPECT_EQ(entry->language, "en");
  EXPECT_EQ(entry->tags, (std::vector<std::string>{"work", "garden"}));
  EXPECT_EQ(entry->body, "Walked to the allotment before the rain.\nPlanned the raised beds for spring.");
  EXPECT_EQ(entry->firstLine(), "Walked to the allotment before the rain.");
}

TEST(EntryParser, GivesAbsentValuesForWhatTheFileDoesNotSay) {
  const Entry entry = parsed("---\n" + dateLine + "---\nText").value();
  EXPECT_EQ(entry.durationSeconds, 0);
  EXPECT_FALSE(entry.cleaned);
  EXPECT_EQ(entry.editedAt, std::nullopt);
  EXPECT_EQ(entry.cleanupModel, std::nullopt);
  EXPECT_EQ(entry.language, std::nullopt);
  EXPECT_EQ(entry.tags, std::vector<std::string>{});
  EXPECT_EQ(entry.body, "Text");
}

TEST(EntryParser, TakesNoFileThatIsNoEntry) {
  struct Case {
    const char* description;
    std::string content;
  };
  for (const Case& c : {
           Case{"empty", ""},
           Case{"a line feed", "\n"},
           Case{"no front matter", "Text\n"},
           Case{"no front matter, but a date", dateLine + "---\nText"},
           Case{"an empty front matter", "---\n---\nText"},
           Case{"no line with a colon", "---\nno key\n- list\n---\nText"},
           Case{"no date", "---\ntitle: x\n---\nText"},
           Case{"an empty date", "---\ndate:\n---\nText"},
           Case{"no closing line", "---\n" + dateLine + "Text"},
           Case{"the opening line alone", "---"},
           Case{"the opening line alone, ended", "---\n"},
           Case{"four hyphens", "----\n" + dateLine + "---\nText"},
           Case{"two hyphens", "--\n" + dateLine + "---\nText"},
           Case{"a blank after the opening hyphens", "--- \n" + dateLine + "---\nText"},
           Case{"a blank before the opening hyphens", " ---\n" + dateLine + "---\nText"},
           Case{"an empty line first", "\n---\n" + dateLine + "---\nText"},
           Case{"CR LF", "---\r\ndate: 2025-03-14T08:30:00Z\r\n---\r\nText\r\n"},
           Case{"CR LF after the opening line alone", "---\r\n" + dateLine + "---\nText"},
           Case{"CR before the closing line feed", "---\n" + dateLine + "---\r\nText"},
           Case{"CR for line feeds", "---\rdate: 2025-03-14T08:30:00Z\r---\rText"},
           Case{"a blank after the closing hyphens", "---\n" + dateLine + "--- \nText"},
           Case{"four closing hyphens", "---\n" + dateLine + "----\nText"},
           Case{"em dashes", "\u2014\n" + dateLine + "\u2014\nText"},
           Case{"not UTF-8 in the body", "---\n" + dateLine + "---\nText\xFF"},
           Case{"not UTF-8 in the front matter", "---\n" + dateLine + "x: \xC3\n---\nText"},
           Case{"half a character at the end", "---\n" + dateLine + "---\nText\xE2\x80"},
           Case{"UTF-16", "\xFF\xFE-\0-\0-\0\n\0"s},
       }) {
    EXPECT_EQ(parsed(c.content), std::nullopt) << c.description;
  }
}

TEST(EntryParser, TakesNoDateThatIsNoInternetDateTime) {
  for (const char* date :
       {"2025-03-14", "2025-03-14T08:30:00", "2025-03-14T08:30:00.250Z", "\"2025-03-14T08:30:00Z\"",
        "'2025-03-14T08:30:00Z'", "2025-03-14 08:30:00Z", "2025-03-14T08:30:00+0100", "2025-02-30T08:30:00Z",
        "2025-03-14T24:00:00Z", "2025-03-14T08:60:00Z", "2025-03-14T08:30:60Z", "2025-03-14t08:30:00z",
        "2025-03-14T08:30:00+24:00", "yesterday", "2025-03-14T08:30:00Z # comment",
        "2025-03-14T08:30:00Z\r"}) {
    EXPECT_EQ(parsed("---\ndate: "s + date + "\n---\nText"), std::nullopt) << date;
  }
}

TEST(EntryParser, KeepsTheMomentOfADateAndNotItsZone) {
  EXPECT_EQ(parsed("---\ndate: 2025-03-14T08:30:00+05:30\n---\n").value().date, at("2025-03-14T03:00:00Z"));
  EXPECT_EQ(parsed("---\ndate: 2025-03-14T08:30:00-08:00\n---\n").value().date, at("2025-03-14T16:30:00Z"));
  EXPECT_EQ(parsed("---\ndate: 1500-02-29T00:00:00Z\n---\n").value().date, at("1500-02-29T00:00:00Z"));
}

TEST(EntryParser, SplitsALineAtItsFirstColonAndTrimsBothSides) {
  for (const char* line :
       {"date:2025-03-14T08:30:00Z", "date: 2025-03-14T08:30:00Z", "   date :   2025-03-14T08:30:00Z",
        "\tdate\t:\t2025-03-14T08:30:00Z \t ", "\u00A0date\u2003:\u30002025-03-14T08:30:00Z\u200B"}) {
    const std::optional<Entry> entry = parsed("---\n"s + line + "\n---\nText");
    ASSERT_TRUE(entry) << line;
    EXPECT_EQ(entry->date, at("2025-03-14T08:30:00Z"));
  }
  EXPECT_EQ(entryWith("language: a:b: c").language, "a:b: c");
  EXPECT_EQ(entryWith("language:: x").language, ": x");
  EXPECT_EQ(entryWith("language: a b\tc ").language, "a b\tc");
}

TEST(EntryParser, AColonSeparatesAlsoWhenAMarkFollowsIt) {
  EXPECT_EQ(entryWith("language:\u0301x").language, "\u0301x");
}

TEST(EntryParser, ComparesKeysExactly) {
  EXPECT_EQ(parsed("---\nDate: 2025-03-14T08:30:00Z\n---\nText"), std::nullopt);
  EXPECT_EQ(parsed("---\n\"date\": 2025-03-14T08:30:00Z\n---\nText"), std::nullopt);
  EXPECT_EQ(parsed("---\n- date: 2025-03-14T08:30:00Z\n---\nText"), std::nullopt);
  EXPECT_EQ(parsed("---\nda te: 2025-03-14T08:30:00Z\n---\nText"), std::nullopt);
  EXPECT_EQ(parsed("---\nDate: 1999-01-01T00:00:00Z\n" + dateLine + "---\nText").value().date,
            at("2025-03-14T08:30:00Z"));
  EXPECT_EQ(entryWith("Cleaned: true").cleaned, false);
  EXPECT_EQ(entryWith("durationSeconds: 5").durationSeconds, 0);
  EXPECT_EQ(entryWith("Language: en\nlang: en").language, std::nullopt);
}

TEST(EntryParser, IgnoresOtherKeysAndLinesWithoutAColon) {
  const Entry entry =
      entryWith("title: A title\n\n# comment\n- item\n: no key\nweather: fine: mostly\nlanguage: en");
  EXPECT_EQ(entry.language, "en");
  EXPECT_EQ(entry.body, "Body");
}

TEST(EntryParser, OfAKeyThatOccursTwiceTheLastLineCounts) {
  EXPECT_EQ(parsed("---\ndate: 1999-01-01T00:00:00Z\n" + dateLine + "---\n").value().date,
            at("2025-03-14T08:30:00Z"));
  EXPECT_EQ(parsed("---\n" + dateLine + "date: tomorrow\n---\n"), std::nullopt) << "also when it is invalid";
  EXPECT_EQ(parsed("---\ndate: tomorrow\n" + dateLine + "---\n").value().date, at("2025-03-14T08:30:00Z"));
  EXPECT_EQ(entryWith("duration_seconds: 1\nduration_seconds: 2").durationSeconds, 2);
  EXPECT_EQ(entryWith("duration_seconds: 1\nduration_seconds: x").durationSeconds, 0);
  EXPECT_EQ(entryWith("cleaned: true\ncleaned: no").cleaned, false);
  EXPECT_EQ(entryWith("edited: 2025-03-14T10:02:11Z\nedited:").editedAt, std::nullopt);
  EXPECT_EQ(entryWith("language: en\nlanguage:").language, "");
  EXPECT_EQ(entryWith("tags: a, b\ntags: c").tags, std::vector<std::string>{"c"});
}

TEST(EntryParser, ReadsADurationInWholeSeconds) {
  struct Case {
    const char* value;
    std::int64_t seconds;
  };
  for (const Case& c : {Case{"90", 90},
                        Case{"+90", 90},
                        Case{"-5", -5},
                        Case{"0", 0},
                        Case{"-0", 0},
                        Case{"+0", 0},
                        Case{"007", 7},
                        Case{"000000000000000000000000000090", 90},
                        Case{"9223372036854775807", INT64_MAX},
                        Case{"+9223372036854775807", INT64_MAX},
                        Case{"-9223372036854775808", INT64_MIN},
                        Case{"9223372036854775808", 0},
                        Case{"-9223372036854775809", 0},
                        Case{"99999999999999999999", 0},
                        Case{"90.5", 0},
                        Case{"90.0", 0},
                        Case{"1e3", 0},
                        Case{"90s", 0},
                        Case{"+", 0},
                        Case{"-", 0},
                        Case{"++90", 0},
                        Case{"+-90", 0},
                        Case{"-+90", 0},
                        Case{"--90", 0},
                        Case{"+ 90", 0},
                        Case{"9 0", 0},
                        Case{"1,000", 0},
                        Case{"1_000", 0},
                        Case{"0x10", 0},
                        Case{"\"90\"", 0},
                        Case{"\u0669\u0660", 0},
                        Case{"\u221290", 0},
                        Case{"90\r", 0},
                        Case{"", 0}}) {
    EXPECT_EQ(entryWith("duration_seconds: "s + c.value).durationSeconds, c.seconds) << c.value;
  }
}

TEST(EntryParser, TakesAnEntryForCleanedOnlyWhereItSaysTrue) {
  EXPECT_TRUE(entryWith("cleaned: true").cleaned);
  EXPECT_TRUE(entryWith("cleaned:true").cleaned);
  for (const char* value :
       {"True", "TRUE", "yes", "1", "on", "\"true\"", "true.", "truetrue", "false", "", "true\r"}) {
    EXPECT_FALSE(entryWith("cleaned: "s + value).cleaned) << value;
  }
}

TEST(EntryParser, ReadsTheTimeOfTheLastEdit) {
  EXPECT_EQ(entryWith("edited: 2025-03-14T10:02:11+01:00").editedAt, at("2025-03-14T09:02:11Z"));
  for (const char* line :
       {"edited: yesterday", "edited: 2025-03-14", "edited:", "edited: 2025-03-14T10:02:11.5Z",
        "edited_at: 2025-03-14T10:02:11Z", "Edited: 2025-03-14T10:02:11Z", "edit: 2025-03-14T10:02:11Z"}) {
    EXPECT_EQ(entryWith(line).editedAt, std::nullopt) << line;
  }
}

TEST(EntryParser, KeepsTextsAsTheyAreWrittenAndTellsEmptyFromAbsent) {
  EXPECT_EQ(entryWith("language:").language, "");
  EXPECT_EQ(entryWith("language:  \t").language, "");
  EXPECT_EQ(entryWith("language: \"en\"").language, "\"en\"");
  EXPECT_EQ(entryWith("language: EN-gb ").language, "EN-gb");
  EXPECT_EQ(entryWith("language: en\r").language, "en\r");
  EXPECT_EQ(entryWith("cleanup_model:").cleanupModel, "");
  EXPECT_EQ(entryWith("cleanup_model: a b (1)").cleanupModel, "a b (1)");
  EXPECT_EQ(entryWith("cleanup-model: x\ncleanupModel: x").cleanupModel, std::nullopt);
}

TEST(EntryParser, ReadsTagsFromOneLine) {
  EXPECT_EQ(entryWith("tags: [Work, #Deep Work]").tags, (std::vector<std::string>{"work", "deep-work"}));
  EXPECT_EQ(entryWith("tags: b, a, B").tags, (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(entryWith("tags:").tags, std::vector<std::string>{});
  EXPECT_EQ(entryWith("tags: []").tags, std::vector<std::string>{});
  EXPECT_EQ(entryWith("Tags: a").tags, std::vector<std::string>{});
}

TEST(EntryParser, ReadsNoTagsFromAListOverSeveralLines) {
  EXPECT_EQ(entryWith("tags:\n  - work\n  - garden").tags, std::vector<std::string>{});
}

TEST(EntryParser, MayFindNoBody) {
  const Entry withoutLineFeed = parsed("---\n" + dateLine + "---").value();
  EXPECT_EQ(withoutLineFeed.body, "");
  EXPECT_EQ(withoutLineFeed.firstLine(), "");
  const Entry withLineFeed = parsed("---\n" + dateLine + "---\n").value();
  EXPECT_EQ(withLineFeed.body, "");
  EXPECT_EQ(withLineFeed.date, withoutLineFeed.date);
  EXPECT_EQ(parsed("---\n" + dateLine + "---\n \t\n\r\n\u2028").value().body, "");
}

TEST(EntryParser, WithoutABodyAFileGivesTheSameEntryWithAndWithoutALastLineFeed) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "---\n" + dateLine + "---");
  const std::optional<Entry> without = Entry::parse({folder.below("a.md")});
  writeFile(folder.below("a.md"), "---\n" + dateLine + "---\n");
  const std::optional<Entry> with = Entry::parse({folder.below("a.md")});
  ASSERT_TRUE(without && with);
  EXPECT_EQ(*without, *with);
}

TEST(EntryParser, TrimsABodyAtItsEndsAndKeepsItWithin) {
  struct Case {
    std::string text, body;
  };
  for (const Case& c :
       {Case{"Text", "Text"}, Case{"\n\nText\n\n", "Text"},
        Case{" \t\u00A0\u2028\u0085\x0B\x0C\rText\u2029\u3000\u200B\r\n", "Text"},
        Case{"  one\n\n\n    two  \n\tthree\n", "one\n\n\n    two  \n\tthree"},
        Case{"one\r\ntwo\r\n", "one\r\ntwo"}, Case{"---\nText\n---", "---\nText\n---"},
        Case{"Text\n---\nmore", "Text\n---\nmore"},
        Case{"date: 1999-01-01T00:00:00Z", "date: 1999-01-01T00:00:00Z"}, Case{"a\0b"s, "a\0b"s},
        Case{"\uFEFFText", "\uFEFFText"}, Case{std::string(3000000, 'x'), std::string(3000000, 'x')}}) {
    const std::optional<Entry> entry = parsed("---\n" + dateLine + "---\n" + c.text);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->body, c.body);
    EXPECT_EQ(entry->date, at("2025-03-14T08:30:00Z"));
  }
}

TEST(EntryParser, AnIndentedDelimiterInTheFrontMatterIsALineLikeAnyOther) {
  EXPECT_EQ(entryWith(" --- \nlanguage: en").language, "en");
  EXPECT_EQ(entryWith("----\nlanguage: en").language, "en");
  EXPECT_EQ(entryWith("---\r\nlanguage: en").language, "en");
}

TEST(EntryParser, TheFirstDelimiterClosesTheFrontMatter) {
  const Entry entry = parsed("---\n" + dateLine + "---\nlanguage: en\n---\nText").value();
  EXPECT_EQ(entry.language, std::nullopt);
  EXPECT_EQ(entry.body, "language: en\n---\nText");
}

TEST(EntryParser, SkipsOneByteOrderMarkAtTheStart) {
  EXPECT_EQ(parsed("\uFEFF---\n" + dateLine + "---\nText").value().body, "Text");
  EXPECT_EQ(parsed("\uFEFF\uFEFF---\n" + dateLine + "---\nText"), std::nullopt);
  EXPECT_EQ(parsed("---\n\uFEFF" + dateLine + "---\nText"), std::nullopt);
}

TEST(EntryParser, TakesNoFileThatCannotBeRead) {
  const TemporaryFolder folder;
  const std::string content = EntryFile{.body = "Text"}.text();
  writeFile(folder.below("closed.md"), content);
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(folder.below("closed.md").c_str(), 0), 0);
  makeFolder(folder.below("folder.md"));
  makeNamedPipe(folder.below("pipe.md"));
  makeLink(folder.below("dangling.md"), folder.below("missing.md"));
  for (const char* name : {"missing.md", "folder.md", "pipe.md", "dangling.md", "closed.md/a.md"}) {
    EXPECT_EQ(Entry::parse({folder.below(name)}), std::nullopt) << name;
  }
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              return Entry::parse({folder.below("closed.md")}) ? "entry" : "no entry";
            }),
            "no entry");
}

TEST(EntryParser, LooksNeitherAtTheNameOfAFileNorAtItsExtension) {
  const TemporaryFolder folder;
  for (const char* name : {"a.txt", ".hidden", "noextension", "a.MD"}) {
    writeFile(folder.below(name), EntryFile{.body = "Text"}.text());
    EXPECT_TRUE(Entry::parse({folder.below(name)})) << name;
  }
}

TEST(EntryParser, ReadsALinkLikeItsFileUnderItsOwnPath) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), EntryFile{.body = "Text"}.text());
  makeLink(folder.below("link.md"), folder.below("a.md"));
  const Entry entry = Entry::parse({folder.below("link.md")}).value();
  EXPECT_EQ(entry.body, "Text");
  EXPECT_EQ(entry.id, folder.below("link.md"));
}

TEST(EntryParser, KeepsTheLocationAsItWasNamed) {
  const TemporaryFolder folder;
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such name";
  writeFile(folder.below("a%20b\xFF.md"), EntryFile{}.text());
  const std::string path = folder.path() + "/./a%20b\xFF.md";
  const Entry entry = Entry::parse({path}).value();
  EXPECT_EQ(entry.url, FileUrl{path});
  EXPECT_EQ(entry.id, folder.path() + "/./a%20b�.md");
}

TEST(EntryText, IsTheSameEntryAsItsFile) {
  const TemporaryFolder folder;
  const FileUrl url{folder.below("a.md")};
  for (const std::string& content :
       {EntryFile{.durationSeconds = "5", .cleaned = "true", .tags = "a, b", .body = "\nText\n"}.text(),
        EntryFile{.edited = "2025-11-03T10:00:00Z", .cleanupModel = "", .language = "en"}.text()}) {
    writeFile(url.path, content);
    const EntryReading text = EntryText::read(content);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->entry(url), Entry::parse(url));
  }
  EXPECT_FALSE(EntryText::read("no entry"));
  EXPECT_FALSE(EntryText::read(""));
}

TEST(EntryText, HasTheTagsOfItsEntryInTheirCanonicalForm) {
  const std::string file = EntryFile{.tags = "[Work, #Deep Work, Cafe\u0301]"}.text();
  const EntryReading text = EntryText::read(file);
  ASSERT_TRUE(text);
  for (const char* tag : {"work", "deep-work", "caf\u00E9"}) EXPECT_TRUE(text->hasTag(tag)) << tag;
  for (const char* tag : {"", "Work", "#work", "wor", "works", "deep", "cafe", "cafe\u0301", "Deep Work"}) {
    EXPECT_FALSE(text->hasTag(tag)) << tag;
  }
  for (const std::optional<std::string>& none :
       {std::optional<std::string>(), std::optional<std::string>("")}) {
    const std::string untagged = EntryFile{.tags = none}.text();
    const EntryReading without = EntryText::read(untagged);
    ASSERT_TRUE(without);
    EXPECT_FALSE(without->hasTag("work"));
    EXPECT_FALSE(without->hasTag(""));
  }
}

TEST(EntryHead, IsReadFromTheFirstBytesThatHoldTheWholeFrontMatter) {
  const std::string file = "\uFEFF" + EntryFile{.tags = "work", .body = "---\nbody"}.text();
  const std::size_t endOfFrontMatter = file.find("\n---\n", 8) + 4;
  for (std::size_t length = 0; length <= file.size(); ++length) {
    const std::optional<EntryHead> head = EntryHead::read(std::string_view(file).substr(0, length));
    if (length <= endOfFrontMatter) {
      EXPECT_FALSE(head) << length;
    } else if (head) {
      EXPECT_EQ(head->date, EntryText::read(file)->date) << length;
      EXPECT_TRUE(head->hasTag("work")) << length;
    }
  }
  EXPECT_TRUE(EntryHead::read(std::string_view(file).substr(0, endOfFrontMatter + 1)));
  EXPECT_TRUE(EntryHead::read(file));
}

TEST(EntryHead, OfAFileThatIsNoEntryIsNothing) {
  for (const std::string& file : {"text\n---\n"s, "---\n---\n"s, "---\ndate: never\n---\n"s,
                                  "---\ndate\xE2\x80: 2025-11-03T09:14:00Z\n---\n"s,
                                  "---\n\xC2"
                                  "date: 2025-11-03T09:14:00Z\n---\n"s}) {
    EXPECT_FALSE(EntryHead::read(file)) << testing::PrintToString(file);
  }
}

TEST(EntryHead, OfAFileThatIsNotUtf8MayBeReadButHasNoTagsThatAreNot) {
  const std::string file = "---\n" + dateLine + "tags: work, \xE2\x80\n---\nbody \xFF";
  const std::optional<EntryHead> head = EntryHead::read(file);
  ASSERT_TRUE(head);
  EXPECT_FALSE(head->hasTag("work"));
}

TEST(EntryText, ThatIsNoneTellsTheFirstReasonWhereThereAreSeveral) {
  struct Case {
    std::string content;
    Refusal reason;
  };
  for (const Case& c :
       {Case{"\xFF\r\n", Refusal::notUtf8}, Case{"text\ndate: never\n---\r\n", Refusal::noFrontMatter},
        Case{"---\r\ntext", Refusal::carriageReturns}, Case{"---\ntext\n---\r\n", Refusal::carriageReturns},
        Case{"---\ndate: never", Refusal::noClosingLine}, Case{"---\ntext\n---\n", Refusal::noDate},
        Case{"---\n" + dateLine + "date: never\n---\n", Refusal::badDate},
        Case{"---\ndate: never\r\n---\n", Refusal::carriageReturns}}) {
    const EntryReading reading = EntryText::read(c.content);
    ASSERT_FALSE(reading) << c.content;
    EXPECT_EQ(reading.error(), c.reason) << c.content;
  }
}

TEST(EntryParser, EveryEntryBeginsWithOneOfItsOpenings) {
  for (const std::string_view opening : entryOpenings) {
    EXPECT_TRUE(parsed(std::string(opening) + dateLine + "---\n")) << opening;
  }
}

}  // namespace
}  // namespace halvane
