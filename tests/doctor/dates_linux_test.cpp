#include <gtest/gtest.h>

#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

// The words for dates, in the locale and time zone that the server would use. The doctor's clock stands still
// on 2025-11-03T09:14:00Z.

namespace halvane {
namespace {

struct User {
  const char* name;
  std::vector<std::string> variables;
  std::string words;
};

void PrintTo(const User& user, std::ostream* out) {
  *out << user.name;
}

class DatesInWords : public testing::TestWithParam<User> {};

TEST_P(DatesInWords, AreShownAsTheUserSetsThem) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  std::vector<std::string> variables = GetParam().variables;
  variables.insert(variables.end(), {"LD_PRELOAD=" HALVANE_LIBFAKETIME, "FAKETIME_FMT=%s",
                                     "FAKETIME=1762161240", "ASAN_OPTIONS=verify_asan_link_order=0"});
  const Answer given = callDoctor({.home = home.path(), .variables = variables});
  EXPECT_TRUE(given.says("\nHow dates are shown\n  Now it is " + GetParam().words)) << given.output;
  EXPECT_EQ(given.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Of, DatesInWords,
    testing::Values(User{"AnAmericanInUtc",
                         {},
                         "Nov 3, 2025 at 9:14 AM.\n  The locale is en_US, the time zone UTC+00:00.\n"},
                    User{"AGermanInBerlin",
                         {"LC_ALL=de_DE.UTF-8", "TZ=Europe/Berlin"},
                         "3. Nov. 2025, 10:14.\n  The locale is de_DE, the time zone UTC+01:00.\n"},
                    User{"AFrenchInNewfoundland",
                         {"LC_ALL=fr_FR.UTF-8", "TZ=America/St_Johns"},
                         "3 nov. 2025 à 5:44.\n  The locale is fr_FR, the time zone UTC-03:30.\n"},
                    User{"SomebodyWithoutALanguage",
                         {"LC_ALL=C.UTF-8", "TZ=Asia/Kathmandu"},
                         "Nov 3, 2025 at 2:59 PM.\n  The locale is en_US, the time zone UTC+05:45.\n"}),
    [](const testing::TestParamInfo<User>& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace halvane
