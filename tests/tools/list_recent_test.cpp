#include "tools/list_recent.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <ctime>
#include <optional>
#include <string>

#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/temporary_home.h"
#include "user/dates.h"

namespace halvane {
namespace {

using std::chrono::hours;
using std::chrono::minutes;

constexpr std::nullopt_t noTag = std::nullopt;

// The date-time of `moment`, to the second.
std::string dateOf(Instant moment) {
  const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
  std::tm fields{};
  gmtime_r(&seconds, &fields);
  std::array<char, 32> text;
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &fields);
  return text.data();
}

std::string dateBefore(std::chrono::minutes ago) {
  return dateOf(now() - ago);
}

bool isListed(const std::string& listing, const std::string& path) {
  return listing.find(path) != std::string::npos;
}

TEST(ListRecent, ShowsDateTagsAndFirstLineAndBelowThemThePath) {
  const TemporaryHome home;
  const std::string path =
      home.write("11-03.md", EntryFile{.date = "2099-11-03T09:14:00Z",
                                       .tags = "work, ideas",
                                       .body = "Walked to the harbour.  \nWrote the plan."}
                                 .text());
  EXPECT_EQ(listRecent(7, noTag), "[Nov 3, 2099 at 9:14 AM] #work #ideas Walked to the harbour.\n" + path);
}

TEST(ListRecent, ShowsTheNewestFirstWithAnEmptyLineBetween) {
  const TemporaryHome home;
  const std::string earlier =
      home.write("a.md", EntryFile{.date = "2099-11-01T19:40:00Z", .body = "Quiet evening at home."}.text());
  const std::string later = home.write(
      "b.md", EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "work", .body = "Harbour."}.text());
  EXPECT_EQ(listRecent(7, noTag), "[Nov 3, 2099 at 9:14 AM] #work Harbour.\n" + later +
                                      "\n\n[Nov 1, 2099 at 7:40 PM] Quiet evening at home.\n" + earlier);
}

TEST(ListRecent, KeepsABlankBeforeAFirstLineThatIsEmpty) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{.date = "2099-11-03T09:14:00Z"}.text());
  EXPECT_EQ(listRecent(7, noTag), "[Nov 3, 2099 at 9:14 AM] \n" + path);
}

TEST(ListRecent, ShowsALongFirstLineWhole) {
  const TemporaryHome home;
  const std::string line(5000, 'x');
  const std::string path = home.write("a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = line}.text());
  EXPECT_EQ(listRecent(7, noTag), "[Nov 3, 2099 at 9:14 AM] " + line + "\n" + path);
}

TEST(ListRecent, TakesEntriesOfTheLastDaysByTheTimeOnTheClock) {
  const TemporaryHome home;
  const std::string within =
      home.write("a.md", EntryFile{.date = dateBefore(hours(7 * 24) - minutes(2))}.text());
  const std::string before =
      home.write("b.md", EntryFile{.date = dateBefore(hours(7 * 24) + minutes(2))}.text());
  const std::string yesterday = home.write("c.md", EntryFile{.date = dateBefore(hours(23))}.text());
  EXPECT_TRUE(isListed(listRecent(7, noTag), within));
  EXPECT_FALSE(isListed(listRecent(7, noTag), before));
  EXPECT_TRUE(isListed(listRecent(8, noTag), before));
  EXPECT_FALSE(isListed(listRecent(6, noTag), within));
  EXPECT_TRUE(isListed(listRecent(1, noTag), yesterday));
  EXPECT_FALSE(isListed(listRecent(1, noTag), within));
}

TEST(ListRecent, TakesAWholeYear) {
  const TemporaryHome home;
  const std::string within = home.write("a.md", EntryFile{.date = dateBefore(hours(364 * 24))}.text());
  const std::string before = home.write("b.md", EntryFile{.date = dateBefore(hours(367 * 24))}.text());
  const std::string listing = listRecent(365, noTag);
  EXPECT_TRUE(isListed(listing, within));
  EXPECT_FALSE(isListed(listing, before));
}

TEST(ListRecent, TakesEntriesOfTheFutureAtTheTop) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{.date = dateBefore(minutes(5)), .body = "today"}.text());
  home.write("b.md", EntryFile{.date = dateBefore(-hours(24)), .body = "tomorrow"}.text());
  const std::string listing = listRecent(1, noTag);
  EXPECT_LT(listing.find("tomorrow"), listing.find("today"));
  EXPECT_TRUE(isListed(listing, "today"));
}

TEST(ListRecent, BeginsNowWhereTheCalendarKnowsNoDaySoLongAgo) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{.date = dateBefore(minutes(5)), .body = "past"}.text());
  const std::string path =
      home.write("b.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "future"}.text());
  EXPECT_EQ(listRecent(INT64_MAX, noTag), "[Nov 3, 2099 at 9:14 AM] future\n" + path);
}

TEST(ListRecent, TakesEntriesWithTheTagOnly) {
  const TemporaryHome home;
  const std::string work = home.write(
      "a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "home, #Work", .body = "x"}.text());
  home.write("b.md", EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "workshop", .body = "work"}.text());
  home.write("c.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "work"}.text());
  home.write("d.md", EntryFile{.date = "1999-11-03T09:14:00Z", .tags = "work", .body = "work"}.text());
  EXPECT_EQ(listRecent(7, "work"), "[Nov 3, 2099 at 9:14 AM] #home #work x\n" + work);
}

TEST(ListRecent, SaysThatThereAreNone) {
  const TemporaryHome home;
  EXPECT_EQ(listRecent(1, noTag), "No entries in the last 1 days.");
  EXPECT_EQ(listRecent(7, noTag), "No entries in the last 7 days.");
  EXPECT_EQ(listRecent(365, noTag), "No entries in the last 365 days.");
  EXPECT_EQ(listRecent(7, "work"), "No entries tagged work in the last 7 days.");
  home.write("a.md", EntryFile{.date = "1999-11-03T09:14:00Z", .tags = "work"}.text());
  EXPECT_EQ(listRecent(7, noTag), "No entries in the last 7 days.");
  EXPECT_EQ(listRecent(7, "café"), "No entries tagged café in the last 7 days.");
}

TEST(ListRecent, KeepsEntriesWithEqualDatesInTheOrderOfTheWalk) {
  const TemporaryHome home;
  for (const char* name : {"b.md", "sub/a.md", "a.md"}) {
    home.write(name, EntryFile{.date = "2099-11-03T09:14:00Z", .body = name}.text());
  }
  const std::string listing = listRecent(7, noTag);
  EXPECT_LT(listing.find("] a.md"), listing.find("] b.md"));
  EXPECT_LT(listing.find("] b.md"), listing.find("] sub/a.md"));
}

TEST(ListRecent, CutsNoListShort) {
  const TemporaryHome home;
  for (int i = 100; i < 400; ++i) {
    home.write(std::to_string(i) + ".md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "x"}.text());
  }
  const std::string listing = listRecent(1, noTag);
  for (int i = 100; i < 400; ++i) EXPECT_TRUE(isListed(listing, "/" + std::to_string(i) + ".md")) << i;
}

TEST(ListRecent, ShowsDatesInTheUsersLanguage) {
  TemporaryHome home;
  home.setLocale("de_DE");
  const std::string path =
      home.write("a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "work", .body = "x"}.text());
  EXPECT_EQ(listRecent(7, noTag), "[3. Nov. 2099, 9:14] #work x\n" + path);
}

TEST(ListRecent, ShowsAPathThatIsNotUtf8WithReplacements) {
  const TemporaryHome home;
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such name";
  home.write("f\xFF.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "x"}.text());
  EXPECT_EQ(listRecent(7, noTag), "[Nov 3, 2099 at 9:14 AM] x\n" + home.journal() + "/f�.md");
}

}  // namespace
}  // namespace halvane
