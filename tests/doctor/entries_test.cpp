#include <gtest/gtest.h>

#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/child_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// What is in the journal, and why a file is no entry.

namespace halvane {
namespace {

class Entries : public testing::Test {
 protected:
  Answer answer() const { return callDoctor({.home = home_.path()}); }

  const TemporaryHome home_;
};

TEST_F(Entries, ThatAreAllGoodAreCountedAndAllIsWell) {
  home_.write("a.md", EntryFile{.body = "One."}.text());
  home_.write("2025/03/b.md", EntryFile{.body = "Two."}.text());
  const Answer given = answer();
  EXPECT_TRUE(given.says("Files whose names end in .md: 2\n  Entries among them: 2\n")) << given.output;
  EXPECT_TRUE(given.output.ends_with("\nAll is well.\n")) << given.output;
  EXPECT_EQ(given.output.find('!'), std::string::npos) << given.output;
  EXPECT_EQ(given.status, 0);
  EXPECT_EQ(given.errors, "");
}

TEST_F(Entries, AreNotWhatIsHiddenOrNamedOtherwise) {
  home_.write("a.md", EntryFile{}.text());
  home_.write("a.txt", "no entry");
  home_.write(".hidden.md", "no entry");
  home_.write(".hidden/b.md", "no entry");
  const Answer given = answer();
  EXPECT_TRUE(given.says("Files whose names end in .md: 1\n  Entries among them: 1\n")) << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(Entries, AreMissedInAnEmptyJournal) {
  makeFolder(home_.journal());
  const Answer given = answer();
  EXPECT_TRUE(
      given.says("The folder can be read.\n  Files whose names end in .md: 0\n  Entries among them: 0\n"))
      << given.output;
  EXPECT_TRUE(given.says("\n! The server finds no entries.\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

struct Refused {
  const char* name;
  std::string content;
  std::string reason;
};

void PrintTo(const Refused& refused, std::ostream* out) {
  *out << refused.name;
}

class Reason : public testing::TestWithParam<Refused> {};

TEST_P(Reason, IsToldForAFile) {
  const TemporaryHome home;
  home.write("good.md", EntryFile{}.text());
  home.write("2025/bad.md", GetParam().content);
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\n! 2025/bad.md: " + GetParam().reason)) << given.output;
  EXPECT_TRUE(given.says("Files whose names end in .md: 2\n  Entries among them: 1\n")) << given.output;
  EXPECT_TRUE(given.output.ends_with("marked with \"!\": 1\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

const std::string date = "date: 2025-11-03T09:14:00Z\n";
const std::string noFrontMatter = "it has no front matter";
const std::string noClosingLine = "its front matter has no closing line";
const std::string noDate = "it has no date in its front matter.\n";
const std::string otherDate =
    "its date must look like 2025-03-16T12:15:00+01:00, without quotes or a fraction";
const std::string windowsLines = "its lines end in CR LF, as on Windows";

INSTANTIATE_TEST_SUITE_P(
    Of, Reason,
    testing::Values(Refused{"AnEmptyFile", "", noFrontMatter},
                    Refused{"AFileWithoutFrontMatter", "# Shopping\n", noFrontMatter},
                    Refused{"ABlankLineBeforeTheFrontMatter", "\n---\n" + date + "---\n", noFrontMatter},
                    Refused{"FrontMatterThatDoesNotEnd", "---\n" + date, noClosingLine},
                    Refused{"AClosingLineWithABlank", "---\n" + date + "--- \nText", noClosingLine},
                    Refused{"NoDate", "---\ntags: [work]\n---\nText", noDate},
                    Refused{"ADateInCapitals", "---\nDATE: 2025-11-03T09:14:00Z\n---\nText", noDate},
                    Refused{"ADayAlone", "---\ndate: 2025-11-03\n---\nText", otherDate},
                    Refused{"ADateInQuotes", "---\ndate: \"2025-11-03T09:14:00Z\"\n---\n", otherDate},
                    Refused{"ADayThatNeverWas", "---\ndate: 2025-02-30T09:14:00Z\n---\n", otherDate},
                    Refused{"AFractionOfASecond", "---\ndate: 2025-11-03T09:14:00.5Z\n---\n", otherDate},
                    Refused{"AnEmptyDate", "---\ndate:\n---\n", otherDate},
                    Refused{"BytesThatAreNoText", "---\n" + date + "---\ncaf\xE9", "it is not UTF-8 text.\n"},
                    Refused{"Utf16", std::string("\xFF\xFE-\0-\0-\0\n\0", 10), "it is not UTF-8 text.\n"},
                    Refused{"WindowsLines", "---\r\ndate: 2025-11-03T09:14:00Z\r\n---\r\nText", windowsLines},
                    Refused{"AWindowsClosingLine", "---\n" + date + "---\r\nText", windowsLines},
                    Refused{"AWindowsDateLine", "---\ndate: 2025-11-03T09:14:00Z\r\n---\n", windowsLines}),
    [](const testing::TestParamInfo<Refused>& tested) { return std::string(tested.param.name); });

TEST_F(Entries, AreEachNamedThatAreNone) {
  home_.write("a.md", "text");
  home_.write("b/c.md", "---\n---\n");
  home_.write("b/d.md", EntryFile{}.text());
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! a.md: it has no front matter")) << given.output;
  EXPECT_TRUE(given.says("\n! b/c.md: it has no date")) << given.output;
  EXPECT_TRUE(given.output.ends_with("marked with \"!\": 2\n")) << given.output;
}

TEST_F(Entries, WithANameThatATerminalWouldObeyAreShownHarmlessly) {
  const std::string noText = takesNamesThatAreNoText() ? "\xFF" : "";
  home_.write(
      "\x1B[2J\xC2\x9B"
      "31m" +
          noText + ".md",
      "text");
  const Answer given = answer();
  const std::string shown = noText.empty() ? "" : "\uFFFD";
  EXPECT_TRUE(given.says("\n! \uFFFD[2J\uFFFD31m" + shown + ".md: ")) << given.output;
}

TEST_F(Entries, AreCountedByTheirTags) {
  home_.write("a.md", EntryFile{.tags = "[Work, garden]"}.text());
  home_.write("b.md", EntryFile{.tags = "#work, Deep Work"}.text());
  for (int count = 0; count < 10; ++count) {
    home_.write("c" + std::to_string(count) + ".md", EntryFile{.tags = "ida, ida"}.text());
  }
  home_.write("none.md", "---\ntags: [lost]\n---\n");
  const Answer given = answer();
  EXPECT_TRUE(
      given.says("\nTags, and how many entries have each\n"
                 "  10  ida\n"
                 "   2  work\n"
                 "   1  deep-work\n"
                 "   1  garden\n\n"))
      << given.output;
}

TEST_F(Entries, WithoutTagsNeedNoListOfThem) {
  home_.write("a.md", EntryFile{}.text());
  EXPECT_FALSE(answer().says("Tags"));
}

}  // namespace
}  // namespace halvane
