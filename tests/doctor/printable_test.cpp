#include <gtest/gtest.h>

#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/user_settings.h"

// Nothing goes to the terminal that the terminal would obey, or that would make a line look like another one.

namespace halvane {
namespace {

struct Sign {
  const char* name;
  std::string text;
};

void PrintTo(const Sign& sign, std::ostream* out) {
  *out << sign.name;
}

class Unprintable : public testing::TestWithParam<Sign> {
 protected:
  const TemporaryHome home_;
};

TEST_P(Unprintable, IsReplacedInAFilesName) {
  home_.write("a" + GetParam().text + "b.md", "no entry");
  const Answer given = callDoctor({.home = home_.path()});
  EXPECT_TRUE(given.says("\n! a\uFFFDb.md: it has no front matter")) << given.output;
}

TEST_P(Unprintable, IsReplacedInTheVariableForTheTimeZone) {
  home_.write("a.md", EntryFile{}.text());
  const Answer given = callDoctor({.home = home_.path(), .variables = {"TZ=x" + GetParam().text + "y"}});
  EXPECT_TRUE(given.says("\n! The time zone x\uFFFDy is unknown: ")) << given.output;
}

INSTANTIATE_TEST_SUITE_P(
    Sign, Unprintable,
    testing::Values(Sign{"Escape", "\x1B"}, Sign{"LineFeed", "\n"}, Sign{"CarriageReturn", "\r"},
                    Sign{"Delete", "\x7F"}, Sign{"ControlSequenceIntroducer", "\u009B"},
                    Sign{"ByteThatIsNotUtf8", "\xFF"}, Sign{"SoftHyphen", "\u00AD"},
                    Sign{"ArabicLetterMark", "\u061C"}, Sign{"ZeroWidthSpace", "\u200B"},
                    Sign{"LeftToRightMark", "\u200E"}, Sign{"RightToLeftMark", "\u200F"},
                    Sign{"LineSeparator", "\u2028"}, Sign{"ParagraphSeparator", "\u2029"},
                    Sign{"LeftToRightEmbedding", "\u202A"}, Sign{"RightToLeftOverride", "\u202E"},
                    Sign{"LeftToRightIsolate", "\u2066"}, Sign{"PopIsolate", "\u2069"},
                    Sign{"ByteOrderMark", "\uFEFF"}, Sign{"PrivateUse", "\uE000"},
                    Sign{"Unassigned", "\U000E0080"}, Sign{"Noncharacter", "\U0010FFFF"},
                    Sign{"TagLetter", "\U000E0061"}),
    [](const testing::TestParamInfo<Sign>& tested) { return std::string(tested.param.name); });

TEST(Printable, AreTheNamesOfAllLanguagesAndEmoji) {
  const TemporaryHome home;
  const std::string name = "نمی\u200Cخواهم 👩\u200D🌾 Tagebuch für Ōsaka 東京.md";
  home.write(name, "no entry");
  EXPECT_TRUE(callDoctor({.home = home.path()}).says("\n! " + name + ": it has no front matter"));
}

TEST(Printable, AreDatesInALanguageThatIsWrittenFromTheRight) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const Answer given = callDoctor({.home = home.path(), .variables = chooseLocale(home.path(), "ar_EG")});
  EXPECT_TRUE(given.says("٢٠٢٥")) << given.output;
  for (const char* mark : {"\u061C", "\u200E", "\u200F", "\uFFFD"})
    EXPECT_FALSE(given.says(mark)) << given.output;
}

}  // namespace
}  // namespace halvane
