#include <gtest/gtest.h>

#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

// What is said of many entries at once.

namespace halvane {
namespace {

class Summary : public testing::Test {
 protected:
  void writeMany(int count, const std::string& content) const {
    for (int number = 10; number < 10 + count; ++number)
      home_.write("bad" + std::to_string(number) + ".md", content);
  }
  Answer answer() const { return callDoctor({.home = home_.path()}); }

  const TemporaryHome home_;
};

TEST_F(Summary, NamesTheOldestAndTheNewestEntry) {
  home_.write("a.md", EntryFile{.date = "2024-07-01T08:00:00Z"}.text());
  home_.write("b.md", EntryFile{.date = "2019-12-24T18:00:00Z"}.text());
  home_.write("c.md", EntryFile{.date = "2025-01-02T03:04:00Z"}.text());
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n  The oldest entry: Dec 24, 2019 at 6:00\u202FPM\n"
                         "  The newest entry: Jan 2, 2025 at 3:04\u202FAM\n") ||
              given.says("\n  The oldest entry: Dec 24, 2019 at 6:00 PM\n"
                         "  The newest entry: Jan 2, 2025 at 3:04 AM\n"))
      << given.output;
  EXPECT_FALSE(given.says("future")) << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(Summary, CountsEntriesDatedInTheFuture) {
  home_.write("a.md", EntryFile{}.text());
  home_.write("b.md", EntryFile{.date = "9998-12-24T18:00:00Z"}.text());
  home_.write("c.md", EntryFile{.date = "9999-12-24T18:00:00Z"}.text());
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n  Entries dated in the future, which list_recent always shows: 2\n"))
      << given.output;
  EXPECT_EQ(given.status, 0) << "they are found";
}

TEST_F(Summary, NamesTwentyFilesWithTheSameReason) {
  writeMany(20, "no entry");
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! bad10.md: it has no front matter")) << given.output;
  EXPECT_TRUE(given.says("\n! bad29.md: it has no front matter")) << given.output;
  EXPECT_FALSE(given.says("more like these")) << given.output;
}

TEST_F(Summary, NamesTheFirstOfMoreFilesWithTheSameReason) {
  writeMany(21, "no entry");
  home_.write("z.md", "---\n---\n");
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! bad14.md: it has no front matter")) << given.output;
  EXPECT_FALSE(given.says("bad15.md")) << given.output;
  EXPECT_TRUE(given.says("\n! 16 more like these: it has no front matter")) << given.output;
  EXPECT_TRUE(given.says("\n! z.md: it has no date")) << "another reason\n" << given.output;
}

struct TagsLine {
  const char* name;
  std::string frontMatter;
  bool isGood;
};

void PrintTo(const TagsLine& tagsLine, std::ostream* out) {
  *out << tagsLine.name;
}

class Tags : public testing::TestWithParam<TagsLine> {};

TEST_P(Tags, AreMissedWhereALineOfThemGivesNone) {
  const TemporaryHome home;
  home.write("2025/a.md", "---\ndate: 2025-11-03T09:14:00Z\n" + GetParam().frontMatter + "---\n- text\n");
  const Answer given = callDoctor({.home = home.path()});
  const bool isTold = given.says(
      "\n! 2025/a.md: it is an entry without tags: its tags line must look like tags: work, garden; "
      "each tag has at most 30 characters.\n");
  EXPECT_NE(isTold, GetParam().isGood) << given.output;
  EXPECT_EQ(given.status, GetParam().isGood ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Tags,
    testing::Values(TagsLine{"NoLine", "", true}, TagsLine{"AnEmptyLine", "tags:\n", true},
                    TagsLine{"EmptyBrackets", "tags: [ ]\n", true}, TagsLine{"OneTag", "tags: work\n", true},
                    TagsLine{"OneGoodAmongBad", "tags: ?, work\n", true},
                    TagsLine{"OnlySigns", "tags: [?!, ...]\n", false},
                    TagsLine{"ALongTag", "tags: " + std::string(31, 'a') + "\n", false},
                    TagsLine{"AListBelow", "tags:\n  - work\n  - garden\n", false},
                    TagsLine{"AListBelowWithoutIndentation", "tags: \n- work\n", false},
                    TagsLine{"AListBelowEmptyBrackets", "tags: []\n- work\n", false},
                    TagsLine{"AnotherKeyBelow", "tags:\nlanguage: en\n", true}),
    [](const testing::TestParamInfo<TagsLine>& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace halvane
