#include "user/date_words.h"

#include <gtest/gtest.h>

#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

constexpr const char* morning = "2025-11-03T09:14:00Z";
constexpr const char* evening = "2025-11-03T21:14:00Z";

std::string wordsFor(const std::string& moment) {
  return DateWords().of(parseInternetDateTime(moment).value());
}

enum class Clock { ofLocale, twelveHours, twentyFourHours };

// Makes this the locale of the user of `home`, and sets 12 or 24 hours in place of the locale's.
void set(const TemporaryHome& home, const std::string& locale, Clock clock) {
  std::string value = "<string>" + locale + "</string>";
  if (clock == Clock::twelveHours) value += "<key>AppleICUForce12HourTime</key><true/>";
  if (clock == Clock::twentyFourHours) value += "<key>AppleICUForce24HourTime</key><true/>";
  writeFile(home.settings(".GlobalPreferences"), propertyListWith("AppleLocale", value));
}

bool holds(const std::string& words, const std::string& time) {
  return words.find(time) != std::string::npos;
}

TEST(DateWords, AreByTheUsersLocale) {
  TemporaryHome home;
  for (const auto& [locale, words] : {std::pair{"en_US", "Nov 3, 2025 at 9:14 AM"},
                                      {"de_DE", "3. Nov. 2025, 9:14"},
                                      {"fr_FR", "3 nov. 2025 à 9:14"},
                                      {"ja_JP", "2025年11月3日 9:14"}}) {
    home.setLocale(locale);
    EXPECT_EQ(wordsFor(morning), words);
  }
}

TEST(DateWords, HaveTheHourAtItsShortestByTheLocalesOwnClock) {
  TemporaryHome home;
  for (const char* locale : {"yo", "yo_BJ", "yo_NG", "sq_AL", "bs_BA", "kn_IN", "gu_IN", "fil_PH", "hr_HR"}) {
    home.setLocale(locale);
    const std::string words = wordsFor(morning);
    EXPECT_TRUE(holds(words, "9:14")) << words;
    EXPECT_FALSE(holds(words, "09:14")) << words;
  }
}

TEST(DateWords, TakeTheClockThatTheUserWants) {
  const TemporaryHome home;
  set(home, "de_DE", Clock::twelveHours);
  EXPECT_EQ(wordsFor(morning), "3. Nov. 2025, 9:14 AM");
  EXPECT_EQ(wordsFor(evening), "3. Nov. 2025, 9:14 PM");
  set(home, "en_US", Clock::twentyFourHours);
  EXPECT_EQ(wordsFor(morning), "Nov 3, 2025 at 9:14");
  EXPECT_EQ(wordsFor(evening), "Nov 3, 2025 at 21:14");
  set(home, "en_US", Clock::twelveHours);
  EXPECT_EQ(wordsFor(morning), "Nov 3, 2025 at 9:14 AM") << "its own";
  set(home, "de_DE", Clock::twentyFourHours);
  EXPECT_EQ(wordsFor(morning), "3. Nov. 2025, 9:14") << "its own";
}

TEST(DateWords, KeepTwoDigitsWhereTheClockIsNotTheLocalesOwn) {
  const TemporaryHome home;
  for (const char* locale : {"sq_AL", "kn_IN", "ml_IN", "gu_IN", "pa_IN", "te_IN", "ur_PK", "fil_PH", "el_CY",
                             "ko_KR", "yue_HK"}) {
    set(home, locale, Clock::twentyFourHours);
    EXPECT_TRUE(holds(wordsFor(morning), "09:14")) << locale << ": " << wordsFor(morning);
    EXPECT_TRUE(holds(wordsFor(evening), "21:14")) << locale << ": " << wordsFor(evening);
  }
  set(home, "bs_BA", Clock::twelveHours);
  EXPECT_TRUE(holds(wordsFor(evening), "09:14")) << wordsFor(evening);
}

TEST(DateWords, GoByThePartsOfTheDayInTaiwan) {
  const TemporaryHome home;
  set(home, "zh_TW", Clock::twelveHours);
  EXPECT_EQ(wordsFor(morning), "2025年11月3日 上午9:14");
  EXPECT_EQ(wordsFor(evening), "2025年11月3日 晚上9:14");
  EXPECT_EQ(wordsFor("2025-11-03T05:14:00Z"), "2025年11月3日 清晨5:14");
  set(home, "zh_TW", Clock::ofLocale);
  EXPECT_EQ(wordsFor(evening), "2025年11月3日 下午9:14");
}

TEST(DateWords, OfDaysBeforeTheReformOfTheCalendarAreJulian) {
  const TemporaryHome home;
  EXPECT_EQ(wordsFor("1582-10-15T00:00:00Z"), "Oct 15, 1582 at 12:00 AM");
  EXPECT_EQ(wordsFor("1582-10-04T23:59:00Z"), "Oct 4, 1582 at 11:59 PM");
  EXPECT_EQ(wordsFor("1500-02-18T00:00:00Z"), "Feb 18, 1500 at 12:00 AM");
}

TEST(DateWords, FollowAChangedSettingAtOnce) {
  TemporaryHome home;
  home.setLocale("de_DE");
  EXPECT_EQ(wordsFor(evening), "3. Nov. 2025, 21:14");
  set(home, "de_DE", Clock::twelveHours);
  EXPECT_EQ(wordsFor(evening), "3. Nov. 2025, 9:14 PM");
  home.setLocale("fr_FR");
  EXPECT_EQ(wordsFor(evening), "3 nov. 2025 à 21:14");
}

}  // namespace
}  // namespace halvane
