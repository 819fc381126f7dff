#include <gtest/gtest.h>

#include <boost/json.hpp>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/test_vectors.h"
#include "tests/support/user_settings.h"
#include "tests/wire/clock.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The user's locale and time zone make the words for a date.

namespace halvane {
namespace {

// The words for `seconds` since 1970 that a server of such a user shows.
std::string dateWith(const std::string& locale, const std::string& zone,
                     std::int64_t seconds = secondsOf("2025-11-03T09:14:00Z")) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{.date = momentOf(seconds)}.text());
  std::vector<std::string> variables = chooseLocale(home.path(), locale);
  variables.push_back("TZ=" + zone);
  ServerProcess server({.home = home.path(), .variables = variables});
  const std::string text = askTool(server, "read_entry", "{\"path\":" + jsonString(path) + "}");
  EXPECT_EQ(server.finish(), quietEnding);
  constexpr std::size_t before = std::string_view("Date: ").size();
  return text.substr(before, text.find('\n') - before);
}

TEST(Locale, MakesTheWordsThatThePlatformMakes) {
  for (const boost::json::object& line : vectorsIn("dates.jsonl")) {
    const std::string locale = textOf(line, "locale");
    const std::string zone = textOf(line, "zone");
    EXPECT_EQ(dateWith(locale, zone, line.at("seconds").as_int64()), textOf(line, "text"))
        << locale << " " << zone;
  }
}

TEST(Locale, ThatNobodyKnowsIsAmericanEnglish) {
  for (const char* locale : {"xx_YY", "nonsense", "deutsch", "_DE", "../../etc/passwd"})
    EXPECT_EQ(dateWith(locale, "UTC"), "Nov 3, 2025 at 9:14 AM") << locale;
}

TEST(TimeZone, IsTheOneThatTheVariableNames) {
  EXPECT_EQ(dateWith("en_US", "America/New_York"), "Nov 3, 2025 at 4:14 AM");
  EXPECT_EQ(dateWith("en_US", "Asia/Kathmandu"), "Nov 3, 2025 at 2:59 PM");
}

}  // namespace
}  // namespace halvane
