#include <gtest/gtest.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/user_settings.h"

namespace halvane {
namespace {

// What the doctor says of the locale and zone of such a user.
Answer answerTo(const std::string& locale, const std::string& zone) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  std::vector<std::string> variables = chooseLocale(home.path(), locale);
  variables.push_back("TZ=" + zone);
  return callDoctor({.home = home.path(), .variables = variables});
}

TEST(Dates, AreShownInTheUsersLocaleAndZone) {
  const Answer german = answerTo("de_DE", "Asia/Kathmandu");
  EXPECT_TRUE(german.says("\n  The locale is de_DE, the time zone UTC+05:45.\n")) << german.output;
  EXPECT_EQ(german.status, 0);
  const Answer unknown = answerTo("xx_YY", "UTC");
  EXPECT_TRUE(unknown.says("\n  The locale is en_US, the time zone UTC+00:00.\n")) << unknown.output;
}

}  // namespace
}  // namespace halvane
