#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>

#include "platform/user_locale.h"
#include "tests/support/child_process.h"
#include "tests/support/file_system_root.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

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

// The offset that the C library knows: the judge for whatever TZ may hold.
std::int32_t localOffsetAt(std::time_t moment) {
  std::tm fields{};
  localtime_r(&moment, &fields);
  return static_cast<std::int32_t>(fields.tm_gmtoff);
}

// The first moment of two years at which the user's zone differs from the C library's, or "none".
std::string firstDifference(const std::string& setting, std::time_t step = halfAnHour) {
  const ScopedVariable variable("TZ", setting);
  tzset();
  const std::unique_ptr<icu::TimeZone> zone = userTimeZone();
  for (std::time_t moment = endOf2024; moment < endOf2026; moment += step) {
    if (offsetAt(*zone, moment) != localOffsetAt(moment)) {
      return std::to_string(moment) + ": " + std::to_string(offsetAt(*zone, moment)) + " for " +
             std::to_string(localOffsetAt(moment));
    }
  }
  return "none";
}

std::int32_t winterOffset(const std::string& setting) {
  const ScopedVariable variable("TZ", setting);
  return offsetAt(*userTimeZone(), endOf2024);
}

TEST(TimeZone, IsTheOneThatIsNamed) {
  EXPECT_EQ(winterOffset("Europe/Berlin"), 3600);
  EXPECT_EQ(winterOffset("America/Argentina/Buenos_Aires"), -3 * 3600);
  EXPECT_EQ(winterOffset(":Europe/Berlin"), 3600);
  EXPECT_EQ(winterOffset("/usr/share/zoneinfo/Europe/Berlin"), 3600);
  EXPECT_EQ(winterOffset(":/usr/share/zoneinfo/Asia/Kolkata"), 19800);
}

TEST(TimeZone, KeepsTheCLibrarysTime) {
  for (const char* setting :
       {"UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Asia/Kathmandu", "Europe/Dublin",
        "Africa/Casablanca", "Pacific/Chatham", "America/Nuuk", "EST5EDT", "Etc/GMT+3", ":Asia/Tokyo",
        "/usr/share/zoneinfo/America/St_Johns"}) {
    EXPECT_EQ(firstDifference(setting), "none") << setting;
  }
}

TEST(TimeZone, KeepsTheCLibrarysTimeInEveryInhabitedZone) {
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

TEST(TimeZone, MayBeAPosixRule) {
  for (const char* setting :
       {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "<+0330>-3:30", "EST5", "EST+5", "GMT+3", "UTC-2", "<-03>3",
        "IST-5:30", "<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", "NZST-12NZDT,M9.5.0,M4.1.0/3",
        "PST8PDT,M3.2.0,M11.1.0", "PST8PDT,M3.2.0/2,M11.1.0/2:00:00", ":CET-1CEST,M3.5.0,M10.5.0/3",
        "LMT-0:53:28", "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "AAA3BBB,M3.2.0,M11.1.0", "XXX-14", "XXX12"}) {
    EXPECT_EQ(firstDifference(setting), "none") << setting;
  }
}

TEST(TimeZone, MayBeAPosixRuleThatChangesTheClocksAtAnUnusualHour) {
  for (const char* setting :
       {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "EET-2EEST,M4.5.5/0,M10.5.4/24", "IST-2IDT,M3.4.4/26,M10.5.0",
        "EET-2EEST,M3.4.4/50,M10.4.4/50", "<-04>4<-03>,M9.1.6/24,M4.1.6/24"}) {
    EXPECT_EQ(firstDifference(setting), "none") << setting;
  }
}

TEST(TimeZone, MayBeAPosixRuleWhoseWinterTimeIsTheSpecialOne) {
  EXPECT_EQ(firstDifference("IST-1GMT0,M10.5.0,M3.5.0/1"), "none");
}

TEST(TimeZone, MayBeAPosixRuleThatCountsTheDaysOfTheYear) {
  EXPECT_EQ(firstDifference("<+0330>-3:30<+0430>,J79/24,J263/24"), "none");
  EXPECT_EQ(firstDifference("AAA3BBB,60/2,300/2"), "none");
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
    const ScopedVariable variable("TZ", setting);
    EXPECT_EQ(offsetAt(*userTimeZone(), endOf2024), 0) << setting;
    EXPECT_EQ(offsetAt(*userTimeZone(), endOf2024 + 180 * 86400), 0) << setting;
  }
}

TEST(TimeZone, ChangesShowAtOnce) {
  EXPECT_EQ(winterOffset("Europe/Berlin"), 3600);
  EXPECT_EQ(winterOffset("Asia/Tokyo"), 9 * 3600);
}

// The offset in July 2025, in seconds, of a user who has no TZ set, in the system whose files `prepare`
// writes; nothing where we may not make such a system.
std::optional<std::string> julyOffsetIn(const std::function<void(const TemporaryFolder&)>& prepare) {
  const TemporaryFolder system;
  prepare(system);
  const ScopedVariable variable("TZ", std::nullopt);
  const std::string result = inChildProcess([&]() -> std::string {
    if (!takeAsRoot(system.path())) return "not allowed";
    return std::to_string(offsetAt(*userTimeZone(), 1752000000));
  });
  return result == "not allowed" ? std::nullopt : std::optional(result);
}

TEST(TimeZone, ComesFromTheSystemsSettingWhereNoVariableIsSet) {
  struct Case {
    const char* description;
    std::function<void(const TemporaryFolder&)> prepare;
    std::string offset;
  };
  const auto copyOfZone = [](const TemporaryFolder& system, const std::string& zone) {
    makeFolder(system.below("etc"));
    std::filesystem::copy_file("/usr/share/zoneinfo/" + zone, system.below("etc/localtime"));
  };
  for (const Case& c : {
           Case{"a copy of a zone file",
                [&](const TemporaryFolder& system) { copyOfZone(system, "America/New_York"); }, "-14400"},
           Case{"nothing", [](const TemporaryFolder& system) { makeFolder(system.below("etc")); }, "0"},
           Case{"what nobody knows",
                [](const TemporaryFolder& system) {
                  writeFile(system.below("etc/timezone"), "Nowhere/Nothing\n");
                  writeFile(system.below("etc/localtime"), "nonsense\n");
                },
                "0"},
       }) {
    const auto result = julyOffsetIn(c.prepare);
    if (!result) GTEST_SKIP() << "this user may not change the root of the file system";
    EXPECT_EQ(result, c.offset) << c.description;
  }
}

}  // namespace
}  // namespace halvane
