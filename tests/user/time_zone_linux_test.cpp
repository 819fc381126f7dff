#include <gtest/gtest.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/file_system_root.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "user/dates.h"
#include "user/icu_dates.h"

namespace halvane {
namespace {

constexpr std::time_t endOf2024 = 1735689600;
constexpr std::time_t endOf2026 = 1798761600;
constexpr std::time_t halfAnHour = 1800;
constexpr std::time_t halfADay = 43200;

std::int32_t offsetAt(const icu::TimeZone& zone, std::time_t moment) {
  std::int32_t raw = 0;
  std::int32_t saving = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<UDate>(moment) * 1000, false, raw, saving, status);
  EXPECT_TRUE(U_SUCCESS(status));
  return (raw + saving) / 1000;
}

std::int32_t offsetAt(const std::string& setting, const std::string& moment) {
  const ScopedVariable variable("TZ", setting);
  const auto sinceEpoch = parseInternetDateTime(moment).value().time_since_epoch();
  return offsetAt(*userTimeZone(), std::chrono::floor<std::chrono::seconds>(sinceEpoch).count());
}

// The first moment of two years at which a calendar in the user's zone shows another time than the C library,
// or does not find back from that time to a moment that shows it. "none" when there is none.
std::string firstDifference(const std::string& setting, std::time_t step = halfAnHour) {
  const ScopedVariable variable("TZ", setting);
  tzset();
  UErrorCode status = U_ZERO_ERROR;
  icu::GregorianCalendar calendar(userTimeZone().release(), icu::Locale::getRoot(), status);
  const auto shows = [&](const std::tm& time) {
    return calendar.get(UCAL_YEAR, status) == time.tm_year + 1900 &&
           calendar.get(UCAL_MONTH, status) == time.tm_mon &&
           calendar.get(UCAL_DATE, status) == time.tm_mday &&
           calendar.get(UCAL_HOUR_OF_DAY, status) == time.tm_hour &&
           calendar.get(UCAL_MINUTE, status) == time.tm_min &&
           calendar.get(UCAL_SECOND, status) == time.tm_sec;
  };
  for (std::time_t moment = endOf2024; moment < endOf2026; moment += step) {
    std::tm time{};
    localtime_r(&moment, &time);
    calendar.setTime(static_cast<UDate>(moment) * 1000, status);
    const bool same = shows(time);
    calendar.clear();
    calendar.set(time.tm_year + 1900, time.tm_mon, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
    const UDate back = calendar.getTime(status);
    calendar.setTime(back, status);
    EXPECT_TRUE(U_SUCCESS(status));
    if (!same || !shows(time)) return std::to_string(moment);
  }
  return "none";
}

TEST(TimeZone, IsTheOneThatIsNamed) {
  struct Case {
    const char *setting, *moment;
    std::int32_t offset;
  };
  for (const Case& c : {
           Case{"UTC", "2025-07-01T12:00:00Z", 0},
           Case{"Europe/Berlin", "2025-03-30T00:59:59Z", 3600},
           Case{"Europe/Berlin", "2025-03-30T01:00:00Z", 7200},
           Case{"Europe/Berlin", "2025-10-26T00:59:59Z", 7200},
           Case{"Europe/Berlin", "2025-10-26T01:00:00Z", 3600},
           Case{"Europe/Berlin", "1970-07-01T12:00:00Z", 3600},
           Case{":Europe/Berlin", "2025-07-01T12:00:00Z", 7200},
           Case{"/usr/share/zoneinfo/Europe/Berlin", "2025-07-01T12:00:00Z", 7200},
           Case{":/usr/share/zoneinfo/Asia/Kolkata", "2025-07-01T12:00:00Z", 19800},
           Case{"America/Argentina/Buenos_Aires", "2025-07-01T12:00:00Z", -10800},
           Case{"Australia/Lord_Howe", "2025-01-01T12:00:00Z", 39600},
           Case{"Australia/Lord_Howe", "2025-07-01T12:00:00Z", 37800},
           Case{"Europe/Dublin", "2025-01-01T12:00:00Z", 0},
           Case{"Europe/Dublin", "2025-07-01T12:00:00Z", 3600},
           Case{"Etc/GMT+3", "2025-07-01T12:00:00Z", -10800},
           Case{"EST5EDT", "2025-07-01T12:00:00Z", -14400},
       }) {
    EXPECT_EQ(offsetAt(c.setting, c.moment), c.offset) << c.setting << " " << c.moment;
  }
}

TEST(TimeZone, IsAsNewAsTheSystem) {
  struct Case {
    const char* zone;
    std::int32_t offset;
  };
  // Where the clocks have been told something new in the last years.
  for (const Case& c :
       {Case{"Africa/Cairo", 10800}, Case{"America/Mexico_City", -21600}, Case{"America/Nuuk", -3600},
        Case{"Asia/Almaty", 18000}, Case{"Asia/Amman", 10800}, Case{"Europe/Istanbul", 10800}}) {
    EXPECT_EQ(offsetAt(c.zone, "2025-07-01T12:00:00Z"), c.offset) << c.zone;
  }
}

TEST(TimeZone, ShowsTheCLibrarysTimeInEveryInhabitedZone) {
  std::ifstream table("/usr/share/zoneinfo/zone.tab");
  if (!table) GTEST_SKIP() << "this system has no list of zones";
  for (std::string line; std::getline(table, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream columns(line);
    std::string country, coordinates, zone;
    columns >> country >> coordinates >> zone;
    EXPECT_EQ(firstDifference(zone, halfADay), "none") << zone;
  }
}

TEST(TimeZone, ShowsTheCLibrarysTimeAlsoWhenTheClocksChange) {
  for (const char* setting :
       {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Europe/Dublin", "Africa/Casablanca",
        "Pacific/Chatham", "America/Nuuk", "Africa/Cairo", "America/Santiago", "Asia/Beirut"}) {
    EXPECT_EQ(firstDifference(setting), "none") << setting;
  }
}

TEST(TimeZone, MayBeAPosixRule) {
  struct Case {
    const char *setting, *moment;
    std::int32_t offset;
  };
  for (const Case& c : {
           Case{"UTC0", "2025-07-01T12:00:00Z", 0},
           Case{"EST5", "2025-07-01T12:00:00Z", -18000},
           Case{"EST+5", "2025-07-01T12:00:00Z", -18000},
           Case{"UTC-2", "2025-07-01T12:00:00Z", 7200},
           Case{"GMT+3", "2025-07-01T12:00:00Z", -10800},
           Case{"<+0330>-3:30", "2025-07-01T12:00:00Z", 12600},
           Case{"<-03>3", "2025-07-01T12:00:00Z", -10800},
           Case{"LMT-0:53:28", "2025-07-01T12:00:00Z", 3208},
           // The last Sundays of March and October.
           Case{"CET-1CEST,M3.5.0,M10.5.0/3", "2025-03-30T00:59:59Z", 3600},
           Case{"CET-1CEST,M3.5.0,M10.5.0/3", "2025-03-30T01:00:00Z", 7200},
           Case{"CET-1CEST,M3.5.0,M10.5.0/3", "2025-10-26T00:59:59Z", 7200},
           Case{"CET-1CEST,M3.5.0,M10.5.0/3", "2025-10-26T01:00:00Z", 3600},
           Case{":CET-1CEST,M3.5.0,M10.5.0/3", "2025-07-01T12:00:00Z", 7200},
           // The second Sunday of March, the first of November.
           Case{"PST8PDT,M3.2.0,M11.1.0", "2025-03-09T09:59:59Z", -28800},
           Case{"PST8PDT,M3.2.0,M11.1.0", "2025-03-09T10:00:00Z", -25200},
           Case{"PST8PDT,M3.2.0,M11.1.0", "2025-11-02T08:59:59Z", -25200},
           Case{"PST8PDT,M3.2.0,M11.1.0", "2025-11-02T09:00:00Z", -28800},
           // South of the equator summer time goes on over the new year.
           Case{"NZST-12NZDT,M9.5.0,M4.1.0/3", "2025-01-01T12:00:00Z", 46800},
           Case{"NZST-12NZDT,M9.5.0,M4.1.0/3", "2025-07-01T12:00:00Z", 43200},
           Case{"<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", "2025-01-01T12:00:00Z", 49500},
           Case{"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "2025-01-01T12:00:00Z", 39600},
           // An hour before the day begins, and hours on the days after it.
           Case{"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "2025-03-30T00:59:59Z", -7200},
           Case{"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "2025-03-30T01:00:00Z", -3600},
           Case{"IST-2IDT,M3.4.4/26,M10.5.0", "2025-03-27T23:59:59Z", 7200},
           Case{"IST-2IDT,M3.4.4/26,M10.5.0", "2025-03-28T00:00:00Z", 10800},
           Case{"EET-2EEST,M3.4.4/50,M10.4.4/50", "2025-03-28T23:59:59Z", 7200},
           Case{"EET-2EEST,M3.4.4/50,M10.4.4/50", "2025-03-29T00:00:00Z", 10800},
           // Winter time is the special one.
           Case{"IST-1GMT0,M10.5.0,M3.5.0/1", "2025-01-01T12:00:00Z", 0},
           Case{"IST-1GMT0,M10.5.0,M3.5.0/1", "2025-07-01T12:00:00Z", 3600},
           // Days of the year: 20 March, with 29 February never counted; 2 March, counted from 0.
           Case{"<+0330>-3:30<+0430>,J79/24,J263/24", "2025-03-20T20:29:59Z", 12600},
           Case{"<+0330>-3:30<+0430>,J79/24,J263/24", "2025-03-20T20:30:00Z", 16200},
           Case{"<+0330>-3:30<+0430>,J79/24,J263/24", "2025-09-20T19:30:00Z", 12600},
           Case{"AAA3BBB,60/2,300/2", "2025-03-02T04:59:59Z", -10800},
           Case{"AAA3BBB,60/2,300/2", "2025-03-02T05:00:00Z", -7200},
       }) {
    EXPECT_EQ(offsetAt(c.setting, c.moment), c.offset) << c.setting << " " << c.moment;
  }
}

TEST(TimeZone, MayBeAnyRuleThatAZoneFileOfTheSystemEndsWith) {
  std::set<std::string> rules;
  for (const auto& item : std::filesystem::recursive_directory_iterator("/usr/share/zoneinfo")) {
    if (!item.is_regular_file()) continue;
    std::ifstream file(item.path(), std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!content.starts_with("TZif") || !content.ends_with('\n')) continue;
    const std::size_t lineFeed = content.rfind('\n', content.size() - 2);
    rules.insert(content.substr(lineFeed + 1, content.size() - lineFeed - 2));
  }
  rules.erase("");
  if (rules.empty()) GTEST_SKIP() << "this system has no zone files";
  for (const std::string& rule : rules) EXPECT_EQ(firstDifference(rule), "none") << rule;
}

TEST(TimeZone, IsUtcWhereTheSettingSaysNothingThatAnybodyKnows) {
  for (const char* setting :
       {"", ":", "Nowhere/Nothing", "nonsense!", "AB", "123", "/etc/passwd", "/no/such/file"}) {
    EXPECT_EQ(offsetAt(setting, "2025-01-01T12:00:00Z"), 0) << setting;
    EXPECT_EQ(offsetAt(setting, "2025-07-01T12:00:00Z"), 0) << setting;
  }
}

TEST(TimeZone, ChangesShowAtOnce) {
  EXPECT_EQ(offsetAt("Europe/Berlin", "2025-01-01T12:00:00Z"), 3600);
  EXPECT_EQ(offsetAt("Asia/Tokyo", "2025-01-01T12:00:00Z"), 32400);
  EXPECT_EQ(offsetAt("Europe/Berlin", "2025-01-01T12:00:00Z"), 3600);
}

constexpr const char* notAllowed = "this user may not change the root of the file system";
constexpr std::time_t july2025 = 1752000000;

void copyZone(const std::string& zone, const std::string& path) {
  makeFolder(std::filesystem::path(path).parent_path());
  std::filesystem::copy_file("/usr/share/zoneinfo/" + zone, path);
}

// What `answer` gives to a user who has no TZ set, in the system whose files `prepare` writes; nothing where
// we may not make such a system.
std::optional<std::string> inSystem(const std::function<void(const TemporaryFolder&)>& prepare,
                                    const std::function<std::string()>& answer) {
  const TemporaryFolder system;
  prepare(system);
  const ScopedVariable variable("TZ", std::nullopt);
  const std::string result =
      inChildProcess([&] { return takeAsRoot(system.path()) ? answer() : std::string(notAllowed); });
  return result == notAllowed ? std::nullopt : std::optional(result);
}

TEST(TimeZone, ComesFromTheSystemsSettingWhereNoVariableIsSet) {
  struct Case {
    const char* description;
    std::function<void(const TemporaryFolder&)> prepare;
    const char* offset;
  };
  for (const Case& c : {
           Case{"a link to a zone file",
                [](const TemporaryFolder& system) {
                  copyZone("Europe/Berlin", system.below("usr/share/zoneinfo/Europe/Berlin"));
                  makeLink(system.below("etc/localtime"), "/usr/share/zoneinfo/Europe/Berlin");
                },
                "7200"},
           Case{"a relative link",
                [](const TemporaryFolder& system) {
                  copyZone("Asia/Kolkata", system.below("usr/share/zoneinfo/Asia/Kolkata"));
                  makeLink(system.below("etc/localtime"), "../usr/share/zoneinfo/Asia/Kolkata");
                },
                "19800"},
           Case{"a copy of a zone file",
                [](const TemporaryFolder& system) {
                  copyZone("America/New_York", system.below("etc/localtime"));
                },
                "-14400"},
           Case{"nothing", [](const TemporaryFolder& system) { makeFolder(system.below("etc")); }, "0"},
           Case{"no zone file",
                [](const TemporaryFolder& system) { writeFile(system.below("etc/localtime"), "nonsense\n"); },
                "0"},
           Case{"a link to nothing",
                [](const TemporaryFolder& system) {
                  makeLink(system.below("etc/localtime"), "/no/such/file");
                },
                "0"},
           Case{"a pipe, which is not waited for",
                [](const TemporaryFolder& system) {
                  makeFolder(system.below("etc"));
                  makeNamedPipe(system.below("etc/localtime"));
                },
                "0"},
       }) {
    const auto result =
        inSystem(c.prepare, [] { return std::to_string(offsetAt(*userTimeZone(), july2025)); });
    if (!result) GTEST_SKIP() << notAllowed;
    EXPECT_EQ(result, c.offset) << c.description;
  }
}

TEST(TimeZone, AChangeOfTheSystemsSettingShowsAtOnce) {
  const auto result = inSystem(
      [](const TemporaryFolder& system) {
        copyZone("America/New_York", system.below("etc/localtime"));
        copyZone("Asia/Tokyo", system.below("etc/next"));
      },
      [] {
        const std::string before = std::to_string(offsetAt(*userTimeZone(), july2025));
        std::filesystem::rename("/etc/next", "/etc/localtime");
        return before + " " + std::to_string(offsetAt(*userTimeZone(), july2025));
      });
  if (!result) GTEST_SKIP() << notAllowed;
  EXPECT_EQ(result, "-14400 32400");
}

}  // namespace
}  // namespace halvane
