#include "user/dates.h"

#include <gtest/gtest.h>
#include <unicode/gregocal.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace halvane {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using namespace std::string_literals;

Instant at(std::int64_t secondsSince1970) {
  return Instant(seconds(secondsSince1970));
}

std::string dayText(int year, int month, int day) {
  std::array<char, 40> text;
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day);
  return text.data();
}

std::optional<Instant> midnightOf(int year, int month, int day) {
  return parseInternetDateTime(dayText(year, month, day) + "T00:00:00Z");
}

TEST(InternetDateTime, NamesAMomentInUtcOrBehindOrAheadOfIt) {
  struct Case {
    std::string text;
    std::int64_t seconds;
  };
  for (const Case& c :
       {Case{"1970-01-01T00:00:00Z", 0}, Case{"2025-03-14T08:30:00Z", 1741941000},
        Case{"2025-03-14T10:02:11+01:00", 1741942931}, Case{"2025-03-14T09:02:11Z", 1741942931},
        Case{"2025-03-14T04:02:11-05:00", 1741942931}, Case{"2025-03-14T14:32:11+05:30", 1741942931},
        Case{"2025-03-14T09:02:11+00:00", 1741942931}, Case{"2025-03-14T09:02:11-00:00", 1741942931},
        Case{"2025-01-01T00:00:00+14:00", 1735639200}, Case{"2024-12-31T23:59:59-12:00", 1735732799},
        Case{"1970-01-02T00:00:00+23:59", 60}, Case{"1970-01-01T00:00:00-23:59", 86340},
        Case{"1969-12-31T23:59:59Z", -1}, Case{"2024-02-29T12:00:00Z", 1709208000},
        Case{"2000-02-29T00:00:00Z", 951782400}, Case{"9999-12-31T23:59:59Z", 253402300799}}) {
    EXPECT_EQ(parseInternetDateTime(c.text), at(c.seconds)) << c.text;
  }
}

TEST(InternetDateTime, AnyOtherFormIsNotRead) {
  for (const std::string& text : {""s,
                                  "2025"s,
                                  "2025-03-14"s,
                                  "2025-03-14T08:30"s,
                                  "2025-03-14T08:30Z"s,
                                  "2025-03-14T08:30:00"s,
                                  "2025-03-14T08:30:00.250Z"s,
                                  "2025-03-14T08:30:00,250Z"s,
                                  "2025-03-14T08:30:00.Z"s,
                                  "2025-03-14 08:30:00Z"s,
                                  "2025-03-14t08:30:00Z"s,
                                  "2025-03-14T08:30:00z"s,
                                  "2025-03-14T08:30:00+0100"s,
                                  "2025-03-14T08:30:00+01"s,
                                  "2025-03-14T08:30:00+1:00"s,
                                  "2025-03-14T08:30:00 +01:00"s,
                                  "2025-03-14T08:30:00Z+01:00"s,
                                  "2025-03-14T08:30:00\u221201:00"s,
                                  "2025-03-14T08:30:00+01:00:00"s,
                                  "2025-03-14T08:30:00+01-00"s,
                                  "2025-03-14T08:30:00*01:00"s,
                                  "\"2025-03-14T08:30:00Z\""s,
                                  " 2025-03-14T08:30:00Z"s,
                                  "2025-03-14T08:30:00Z "s,
                                  "2025-03-14T08:30:00Z\n"s,
                                  "2025-03-14T08:30:00Z\0"s,
                                  "20250314T083000Z"s,
                                  "2025-3-14T08:30:00Z"s,
                                  "25-03-14T08:30:00Z"s,
                                  "+2025-03-14T08:30:00Z"s,
                                  "-025-03-14T08:30:00Z"s,
                                  "12025-03-14T08:30:00Z"s,
                                  "2025/03/14T08:30:00Z"s,
                                  "2025-03-14T08.30.00Z"s,
                                  "2025-W11-5T08:30:00Z"s,
                                  "2025-073T08:30:00Z"s,
                                  "2025-03-14T+8:30:00Z"s,
                                  "2025-03-14T 8:30:00Z"s,
                                  "2025-03-14T08:30:0aZ"s,
                                  "2025-03-14T08:30:00UTC"s,
                                  "2025-03-14T08:30:00GMT"s,
                                  "2025-03-14T08:30:00Europe/Berlin"s,
                                  "\u0662\u0660\u0662\u0665-03-14T08:30Z"s,
                                  "1741941000"s,
                                  "yesterday"s}) {
    EXPECT_EQ(parseInternetDateTime(text), std::nullopt) << testing::PrintToString(text);
  }
}

TEST(InternetDateTime, WithAnotherCharacterInAnyPlaceIsNotRead) {
  for (const std::string& right : {"2025-03-14T10:02:11Z"s, "2025-03-14T10:02:11+01:00"s}) {
    for (std::size_t place = 0; place < right.size(); ++place) {
      const bool isDigit = right[place] >= '0' && right[place] <= '9';
      for (const char other : {'\0', ' ', ',', '.', '/', ':', ';', 'U', 't', 'z', isDigit ? '-' : '0'}) {
        if (other == right[place]) continue;
        std::string text = right;
        text[place] = other;
        EXPECT_EQ(parseInternetDateTime(text), std::nullopt) << text;
      }
    }
  }
}

TEST(InternetDateTime, ATimeThatNoClockShowsIsNotRead) {
  for (const std::string& time :
       {"24:00:00Z"s, "25:00:00Z"s, "23:60:00Z"s, "23:59:60Z"s, "23:59:61Z"s, "99:99:99Z"s, "08:30:00+24:00"s,
        "08:30:00-24:00"s, "08:30:00+23:60"s, "08:30:00+99:99"s}) {
    EXPECT_EQ(parseInternetDateTime("2025-03-14T" + time), std::nullopt) << time;
  }
  EXPECT_EQ(parseInternetDateTime("2016-12-31T23:59:60Z"), std::nullopt) << "a leap second that there was";
  EXPECT_NE(parseInternetDateTime("2025-03-14T23:59:59+23:59"), std::nullopt);
  EXPECT_NE(parseInternetDateTime("2025-03-14T00:00:00-23:59"), std::nullopt);
}

TEST(InternetDateTime, ADayThatNeverWasIsNotRead) {
  for (const std::string& day : {"2025-02-29"s, "2025-02-30"s, "2024-02-30"s, "1900-02-29"s, "2100-02-29"s,
                                 "2025-04-31"s, "2025-06-31"s, "2025-09-31"s, "2025-11-31"s, "2025-01-32"s,
                                 "2025-12-32"s, "2025-00-10"s, "2025-13-10"s, "2025-01-00"s, "2025-99-99"s,
                                 "1500-02-30"s, "0001-02-29"s, "1582-10-05"s, "1582-10-14"s}) {
    EXPECT_EQ(parseInternetDateTime(day + "T12:00:00Z"), std::nullopt) << day;
  }
}

TEST(InternetDateTime, DaysBeforeTheReformOfTheCalendarAreJulian) {
  EXPECT_EQ(*midnightOf(1582, 10, 15) - *midnightOf(1582, 10, 4), days(1));
  EXPECT_NE(midnightOf(1500, 2, 29), std::nullopt);
  EXPECT_NE(midnightOf(1000, 2, 29), std::nullopt);
  EXPECT_NE(midnightOf(0, 2, 29), std::nullopt);
  EXPECT_EQ(midnightOf(1700, 2, 29), std::nullopt);
  EXPECT_EQ(midnightOf(1, 1, 1), at(-62135769600));
}

TEST(InternetDateTime, EveryDayOfTenThousandYearsIsTheSameAsInTheCalendarThatShowsIt) {
  UErrorCode status = U_ZERO_ERROR;
  icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getRoot(), status);
  ASSERT_TRUE(U_SUCCESS(status));
  const Instant first = *midnightOf(0, 1, 1);
  const Instant last = *midnightOf(9999, 12, 31);
  int daysSeen = 0;
  for (Instant day = first; day <= last; day += days(1)) {
    calendar.setTime(static_cast<UDate>(day.time_since_epoch().count()) / 1000, status);
    const int year = calendar.get(UCAL_EXTENDED_YEAR, status);
    const int month = calendar.get(UCAL_MONTH, status) + 1;
    const int dayOfMonth = calendar.get(UCAL_DATE, status);
    ASSERT_TRUE(U_SUCCESS(status));
    ASSERT_EQ(midnightOf(year, month, dayOfMonth), day) << dayText(year, month, dayOfMonth);
    ++daysSeen;
  }
  EXPECT_EQ(daysSeen, 3652427);
}

TEST(InternetDateTime, NoDayIsReadThatTheCalendarDoesNotHave) {
  const auto count = [](int year) {
    int readable = 0;
    for (int month = 0; month <= 99; ++month) {
      for (int day = 0; day <= 99; ++day) readable += midnightOf(year, month, day) ? 1 : 0;
    }
    return readable;
  };
  struct Case {
    int year, days;
  };
  for (const Case& c : {Case{0, 366}, Case{1, 365}, Case{4, 366}, Case{100, 366}, Case{1300, 366},
                        Case{1500, 366}, Case{1580, 366}, Case{1581, 365}, Case{1582, 355}, Case{1583, 365},
                        Case{1600, 366}, Case{1700, 365}, Case{1900, 365}, Case{2000, 366}, Case{2024, 366},
                        Case{2025, 365}, Case{2100, 365}, Case{9999, 365}}) {
    EXPECT_EQ(count(c.year), c.days) << c.year;
  }
}

TEST(Now, IsThePresentMoment) {
  const auto before = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
  const Instant present = now();
  EXPECT_LE(before, present);
  EXPECT_LE(present, std::chrono::system_clock::now());
}

}  // namespace
}  // namespace halvane
