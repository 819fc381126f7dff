#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "tests/support/scoped_variable.h"
#include "tests/support/test_vectors.h"
#include "user/dates.h"

namespace halvane {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

Instant at(const std::string& text) {
  return parseInternetDateTime(text).value();
}

TEST(DaysBefore, IsTheMomentThatThePlatformsCalendarGives) {
  for (const auto& line : vectorsIn("cutoff.jsonl")) {
    const ScopedVariable zone("TZ", textOf(line, "zone"));
    const Instant moment(seconds(line.at("seconds").as_int64()));
    const Instant cutoff(seconds(line.at("cutoff").as_int64()));
    EXPECT_EQ(daysBefore(moment, line.at("days").as_int64()), cutoff) << boost::json::serialize(line);
  }
}

TEST(DaysBefore, KeepsTheTimeOnTheWallAcrossAChangeOfTheClocks) {
  struct Case {
    const char *description, *zone, *moment;
    std::int64_t days;
    const char* before;
  };
  for (const Case& c : {
           Case{"no change", "UTC", "2025-11-10T10:00:00Z", 7, "2025-11-03T10:00:00Z"},
           Case{"one day", "UTC", "2025-11-10T15:00:00Z", 1, "2025-11-09T15:00:00Z"},
           Case{"summer time ended", "America/New_York", "2025-11-03T10:00:00-05:00", 7,
                "2025-10-27T10:00:00-04:00"},
           Case{"summer time began", "America/New_York", "2025-03-10T10:00:00-04:00", 7,
                "2025-03-03T10:00:00-05:00"},
           Case{"a skipped hour: later by the gap", "America/New_York", "2025-03-10T02:30:00-04:00", 1,
                "2025-03-09T03:30:00-04:00"},
           Case{"a repeated hour: the second one", "America/New_York", "2025-11-03T01:30:00-05:00", 1,
                "2025-11-02T01:30:00-05:00"},
           Case{"half an hour's change", "Australia/Lord_Howe", "2025-04-07T10:00:00+10:30", 7,
                "2025-03-31T10:00:00+11:00"},
           Case{"a leap day", "UTC", "2024-03-01T12:00:00Z", 1, "2024-02-29T12:00:00Z"},
           Case{"a year", "UTC", "2025-11-03T12:00:00Z", 365, "2024-11-03T12:00:00Z"},
           Case{"over the new year", "Asia/Tokyo", "2025-01-03T08:00:00+09:00", 7,
                "2024-12-27T08:00:00+09:00"},
           Case{"no days", "UTC", "2025-11-03T12:00:00Z", 0, "2025-11-03T12:00:00Z"},
       }) {
    const ScopedVariable zone("TZ", c.zone);
    EXPECT_EQ(daysBefore(at(c.moment), c.days), at(c.before)) << c.description;
  }
}

TEST(DaysBefore, CountsTheSameDaysInEveryCalendar) {
  const ScopedVariable zone("TZ", "UTC");
  for (const char* locale : {"en_US", "fa_IR", "th_TH", "ar_SA", "he_IL"}) {
    const ScopedVariable variable("LC_ALL", locale);
    EXPECT_EQ(daysBefore(at("2025-11-10T10:00:00Z"), 365), at("2024-11-10T10:00:00Z")) << locale;
  }
}

TEST(DaysBefore, KeepsTheMicroseconds) {
  const ScopedVariable zone("TZ", "UTC");
  for (const auto fraction :
       {microseconds(1), microseconds(999), milliseconds(1) + microseconds(1), microseconds(999999)}) {
    EXPECT_EQ(daysBefore(at("2025-11-10T10:00:00Z") + fraction, 7), at("2025-11-03T10:00:00Z") + fraction);
    EXPECT_EQ(daysBefore(at("1969-12-31T10:00:00Z") + fraction, 7), at("1969-12-24T10:00:00Z") + fraction);
  }
}

TEST(DaysBefore, FollowsAChangeOfTheTimeZoneAtOnce) {
  const Instant moment = at("2025-11-03T15:00:00Z");
  {
    const ScopedVariable zone("TZ", "UTC");
    EXPECT_EQ(daysBefore(moment, 7), at("2025-10-27T15:00:00Z"));
  }
  const ScopedVariable zone("TZ", "America/New_York");
  EXPECT_EQ(daysBefore(moment, 7), at("2025-10-27T14:00:00Z"));
}

TEST(DaysBefore, IsNothingWhereTheCalendarHasNoSuchMoment) {
  EXPECT_EQ(daysBefore(at("2025-11-03T15:00:00Z"), INT64_MAX), std::nullopt);
}

}  // namespace
}  // namespace halvane
