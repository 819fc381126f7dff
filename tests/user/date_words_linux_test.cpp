#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/support/scoped_variable.h"
#include "tests/support/test_vectors.h"
#include "user/date_words.h"
#include "user/dates.h"

namespace halvane {
namespace {

std::string wordsFor(const std::string& moment, const std::string& locale, const std::string& zone = "UTC") {
  const ScopedVariable localeVariable("LC_ALL", locale);
  const ScopedVariable zoneVariable("TZ", zone);
  return DateWords().of(parseInternetDateTime(moment).value());
}

TEST(DateWords, AreThePlatforms) {
  for (const auto& line : vectorsIn("dates.jsonl")) {
    const ScopedVariable locale("LC_ALL", textOf(line, "locale") + ".UTF-8");
    const ScopedVariable zone("TZ", textOf(line, "zone"));
    const Instant moment{std::chrono::seconds(line.at("seconds").as_int64())};
    EXPECT_EQ(DateWords().of(moment), textOf(line, "text")) << boost::json::serialize(line);
  }
}

TEST(DateWords, AreShortAndByTheUsersConventions) {
  struct Case {
    const char *locale, *words;
  };
  for (const Case& c : {Case{"en_US", "Nov 3, 2025 at 9:14 AM"}, Case{"C", "Nov 3, 2025 at 9:14 AM"},
                        Case{"POSIX", "Nov 3, 2025 at 9:14 AM"}, Case{"xx_XX", "Nov 3, 2025 at 9:14 AM"},
                        Case{"en_GB", "3 Nov 2025 at 9:14"}, Case{"de_DE", "3. Nov. 2025, 9:14"},
                        Case{"fr_FR", "3 nov. 2025 à 9:14"}, Case{"ja_JP", "2025年11月3日 9:14"}}) {
    EXPECT_EQ(wordsFor("2025-11-03T09:14:00Z", c.locale), c.words) << c.locale;
  }
}

TEST(DateWords, FollowTheLocalesOwnCalendarAndDigits) {
  EXPECT_EQ(wordsFor("2025-11-03T09:14:00Z", "fa_IR"), "۱۲ آبان ۱۴۰۴، ۹:۱۴");
  EXPECT_EQ(wordsFor("2025-11-03T09:14:00Z", "th_TH"), "3 พ.ย. 2568 9:14");
}

TEST(DateWords, TheHourHasNoLeadingZeroAndSecondsAreNotShown) {
  EXPECT_EQ(wordsFor("2025-11-03T00:05:59Z", "en_US"), "Nov 3, 2025 at 12:05 AM");
  EXPECT_EQ(wordsFor("2025-11-03T00:05:59Z", "de_DE"), "3. Nov. 2025, 0:05");
  EXPECT_EQ(wordsFor("2025-11-03T13:05:59Z", "en_US"), "Nov 3, 2025 at 1:05 PM");
  EXPECT_EQ(wordsFor("2025-11-03T23:59:59Z", "de_DE"), "3. Nov. 2025, 23:59");
  for (const char* locale : {"yo", "yo_BJ", "yo_NG", "sq_AL", "bs_BA", "kn_IN", "gu_IN", "fil_PH"})
    EXPECT_EQ(wordsFor("2025-11-03T09:14:00Z", locale).find("09:14"), std::string::npos) << locale;
}

TEST(DateWords, HoldNoNarrowNoBreakSpace) {
  for (const char* locale : {"en_US", "en_AU", "fr_FR", "es_MX", "mn_MN", "hi_IN"}) {
    EXPECT_EQ(wordsFor("2025-11-03T13:05:59Z", locale).find("\u202F"), std::string::npos) << locale;
  }
}

TEST(DateWords, AreOfTheUsersTimeZone) {
  EXPECT_EQ(wordsFor("2025-11-03T23:30:00Z", "en_US", "Asia/Tokyo"), "Nov 4, 2025 at 8:30 AM");
  EXPECT_EQ(wordsFor("2025-11-03T03:30:00Z", "en_US", "America/New_York"), "Nov 2, 2025 at 10:30 PM");
  EXPECT_EQ(wordsFor("2025-07-03T03:30:00Z", "en_US", "America/New_York"), "Jul 2, 2025 at 11:30 PM");
  EXPECT_EQ(wordsFor("1890-01-01T00:00:00Z", "en_US", "Europe/Berlin"), "Jan 1, 1890 at 12:53 AM")
      << "by the sun";
  EXPECT_EQ(wordsFor("2025-07-03T12:00:00Z", "en_US", "CET-1CEST,M3.5.0,M10.5.0/3"),
            "Jul 3, 2025 at 2:00 PM");
}

TEST(DateWords, OfDaysBeforeTheReformOfTheCalendarAreJulianLikeTheirDates) {
  EXPECT_EQ(wordsFor("1582-10-15T12:00:00Z", "en_US"), "Oct 15, 1582 at 12:00 PM");
  EXPECT_EQ(wordsFor("1582-10-04T12:00:00Z", "en_US"), "Oct 4, 1582 at 12:00 PM");
  EXPECT_EQ(wordsFor("1500-02-29T12:00:00Z", "en_US"), "Feb 29, 1500 at 12:00 PM");
  EXPECT_EQ(wordsFor("0800-12-25T12:00:00Z", "en_US"), "Dec 25, 800 at 12:00 PM");
}

TEST(DateWords, StayAsTheSettingsWereWhenTheyWereMade) {
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:00Z").value();
  const ScopedVariable locale("LC_ALL", "en_US");
  const ScopedVariable zone("TZ", "UTC");
  const DateWords before;
  const ScopedVariable laterLocale("LC_ALL", "de_DE");
  const ScopedVariable laterZone("TZ", "Asia/Tokyo");
  EXPECT_EQ(before.of(moment), "Nov 3, 2025 at 9:14 AM");
  EXPECT_EQ(DateWords().of(moment), "3. Nov. 2025, 18:14");
}

TEST(DateWords, OfAMomentBetweenTwoMillisecondsAreThoseOfTheEarlierOne) {
  const ScopedVariable locale("LC_ALL", "en_US");
  const ScopedVariable zone("TZ", "UTC");
  const Instant midnight = parseInternetDateTime("1960-01-01T00:00:00Z").value();
  EXPECT_EQ(DateWords().of(midnight), "Jan 1, 1960 at 12:00 AM");
  EXPECT_EQ(DateWords().of(midnight - std::chrono::microseconds(1)), "Dec 31, 1959 at 11:59 PM");
}

}  // namespace
}  // namespace halvane
