#include <gtest/gtest.h>

#include <boost/json.hpp>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/test_vectors.h"
#include "tests/wire/clock.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Where the last days begin: at the time of day that it is now, so many calendar days ago, however long these
// days were by the clock.

namespace halvane {
namespace {

// Sees that at the moment `present` in `zone`, the last `days` days begin at the moment `cutoff`: what is
// dated then is listed, what is dated a second before is not.
void expectCutoff(const std::string& zone, std::int64_t present, std::int64_t days, std::int64_t cutoff,
                  const std::string& locale = "en_US.UTF-8") {
  SCOPED_TRACE(zone + ", " + momentOf(present) + ", " + std::to_string(days) + " days");
  const TemporaryHome home;
  const std::string kept = home.write("kept.md", EntryFile{.date = momentOf(cutoff)}.text());
  home.write("left out.md", EntryFile{.date = momentOf(cutoff - 1)}.text());
  std::vector<std::string> variables = clockAt(present);
  variables.insert(variables.end(), {"LC_ALL=" + locale, "TZ=" + zone});
  ServerProcess server({.home = home.path(), .variables = variables});
  const std::string text = askTool(server, "list_recent", "{\"days\":" + std::to_string(days) + "}");
  EXPECT_TRUE(text.ends_with("] \n" + kept)) << text;
  EXPECT_EQ(text.find("left out"), std::string::npos) << text;
  EXPECT_EQ(server.finish(), quietEnding);
}

struct Cutoff {
  const char* zone;
  const char* present;
  std::int64_t days;
  const char* cutoff;
};

void expectCutoffs(const std::vector<Cutoff>& cutoffs) {
  for (const Cutoff& one : cutoffs)
    expectCutoff(one.zone, secondsOf(one.present), one.days, secondsOf(one.cutoff));
}

TEST(RecentDays, BeginAtThisTimeOfDay) {
  expectCutoffs({{"UTC", "2025-11-10T15:00:00Z", 1, "2025-11-09T15:00:00Z"},
                 {"UTC", "2025-11-10T10:00:00Z", 7, "2025-11-03T10:00:00Z"},
                 {"UTC", "2025-11-10T00:00:00Z", 1, "2025-11-09T00:00:00Z"},
                 {"UTC", "2025-11-10T23:59:59Z", 30, "2025-10-11T23:59:59Z"}});
}

TEST(RecentDays, RunOverMonthsAndYears) {
  expectCutoffs({{"UTC", "2025-01-01T08:00:00Z", 1, "2024-12-31T08:00:00Z"},
                 {"UTC", "2025-01-10T08:00:00Z", 30, "2024-12-11T08:00:00Z"},
                 {"UTC", "2025-11-10T08:00:00Z", 365, "2024-11-10T08:00:00Z"}});
}

TEST(RecentDays, CountTheLeapDay) {
  expectCutoffs({{"UTC", "2024-03-01T12:00:00Z", 1, "2024-02-29T12:00:00Z"},
                 {"UTC", "2025-03-01T12:00:00Z", 1, "2025-02-28T12:00:00Z"},
                 {"UTC", "2024-02-29T12:34:56Z", 365, "2023-03-01T12:34:56Z"},
                 {"UTC", "2025-02-28T12:34:56Z", 365, "2024-02-29T12:34:56Z"},
                 {"UTC", "2000-03-01T12:00:00Z", 1, "2000-02-29T12:00:00Z"}});
}

// New York, 9 March 2025, and Berlin, 30 March 2025: 2 o'clock was 3 o'clock, and the day had 23 hours.
TEST(RecentDays, AreShorterWhereTheClocksWereSetForward) {
  expectCutoffs({{"America/New_York", "2025-03-09T14:00:00Z", 1, "2025-03-08T15:00:00Z"},
                 {"America/New_York", "2025-03-15T14:00:00Z", 7, "2025-03-08T15:00:00Z"},
                 {"Europe/Berlin", "2025-03-30T08:00:00Z", 1, "2025-03-29T09:00:00Z"},
                 {"Europe/Berlin", "2025-04-05T08:00:00Z", 7, "2025-03-29T09:00:00Z"}});
}

// New York, 2 November 2025, and Berlin, 26 October 2025: the hour before 2 and 3 o'clock came twice.
TEST(RecentDays, AreLongerWhereTheClocksWereSetBack) {
  expectCutoffs({{"America/New_York", "2025-11-02T15:00:00Z", 1, "2025-11-01T14:00:00Z"},
                 {"America/New_York", "2025-11-08T15:00:00Z", 7, "2025-11-01T14:00:00Z"},
                 {"Europe/Berlin", "2025-10-26T09:00:00Z", 1, "2025-10-25T08:00:00Z"},
                 {"Europe/Berlin", "2025-11-01T09:00:00Z", 7, "2025-10-25T08:00:00Z"}});
}

TEST(RecentDays, FromTheRepeatedHourBeginAtItsTimeOfDay) {
  expectCutoffs({{"America/New_York", "2025-11-02T05:30:00Z", 1, "2025-11-01T05:30:00Z"},
                 {"America/New_York", "2025-11-02T06:30:00Z", 1, "2025-11-01T05:30:00Z"},
                 {"Europe/Berlin", "2025-10-26T00:30:00Z", 1, "2025-10-25T00:30:00Z"},
                 {"Europe/Berlin", "2025-10-26T01:30:00Z", 1, "2025-10-25T00:30:00Z"}});
}

// Half past two was not: the hour that was left out makes it half past three.
TEST(RecentDays, ThatBeginInASkippedHourBeginLaterByIt) {
  expectCutoffs({{"America/New_York", "2025-03-10T06:30:00Z", 1, "2025-03-09T07:30:00Z"},
                 {"Europe/Berlin", "2025-03-31T00:30:00Z", 1, "2025-03-30T01:30:00Z"}});
}

TEST(RecentDays, ThatBeginInARepeatedHourBeginInTheSecondOne) {
  expectCutoffs({{"America/New_York", "2025-11-03T06:30:00Z", 1, "2025-11-02T06:30:00Z"},
                 {"Europe/Berlin", "2025-10-27T01:30:00Z", 1, "2025-10-26T01:30:00Z"}});
}

TEST(RecentDays, BeginWhereThePlatformHasThemBegin) {
  for (const boost::json::object& line : vectorsIn("cutoff.jsonl")) {
    expectCutoff(textOf(line, "zone"), line.at("seconds").as_int64(), line.at("days").as_int64(),
                 line.at("cutoff").as_int64());
  }
}

// A calendar with other months and years has the same days.
TEST(RecentDays, AreTheSameInAnotherCalendar) {
  expectCutoff("Asia/Tehran", secondsOf("2025-03-25T08:00:00Z"), 30, secondsOf("2025-02-23T08:00:00Z"),
               "fa_IR.UTF-8");
  expectCutoff("Asia/Bangkok", secondsOf("2025-03-01T08:00:00Z"), 365, secondsOf("2024-03-01T08:00:00Z"),
               "th_TH.UTF-8");
}

TEST(RecentDays, GoOnBeyondTheYear2038) {
  expectCutoffs({{"Europe/Berlin", "2040-06-01T08:00:00Z", 1, "2040-05-31T08:00:00Z"}});
}

}  // namespace
}  // namespace halvane
