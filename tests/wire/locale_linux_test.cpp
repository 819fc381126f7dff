#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// How variables name the user's locale and time zone.

namespace halvane {
namespace {

// The words for an entry's date that a server with such an environment shows.
std::string dateWith(const std::vector<std::string>& variables) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{}.text());
  ServerProcess server({.home = home.path(), .variables = variables});
  EXPECT_NE(askTool(server, "list_recent", "{}"), "") << "days are counted in the user's zone too";
  const std::string text = askTool(server, "read_entry", "{\"path\":" + jsonString(path) + "}");
  EXPECT_EQ(server.finish(), quietEnding);
  constexpr std::size_t before = std::string_view("Date: ").size();
  return text.substr(before, text.find('\n') - before);
}

struct Case {
  std::vector<std::string> variables;
  const char* date;
};

TEST(LocaleVariable, ComesFromTheStrongestVariableThatIsSet) {
  const std::vector<Case> cases = {
      {{"LC_ALL=de_DE.UTF-8", "LC_TIME=fr_FR.UTF-8", "LANG=ja_JP.UTF-8"}, "3. Nov. 2025, 9:14"},
      {{"LC_TIME=fr_FR.UTF-8", "LANG=ja_JP.UTF-8"}, "3 nov. 2025 à 9:14"},
      {{"LANG=ja_JP.UTF-8"}, "2025年11月3日 9:14"},
      {{"LC_ALL=", "LC_TIME=", "LANG=tr_TR.UTF-8"}, "3 Kas 2025 9:14"},
      {{"LC_ALL=", "LC_TIME=de_DE.UTF-8"}, "3. Nov. 2025, 9:14"},
      // Those that say nothing about dates
      {{"LANG=fr_FR.UTF-8", "LANGUAGE=de:ja", "LC_MESSAGES=de_DE.UTF-8", "LC_CTYPE=de_DE.UTF-8"},
       "3 nov. 2025 à 9:14"},
  };
  for (const Case& one : cases) {
    std::vector<std::string> variables = one.variables;
    variables.push_back("TZ=UTC");
    EXPECT_EQ(dateWith(variables), one.date) << testing::PrintToString(one.variables);
  }
}

TEST(LocaleVariable, IsNamedAsPosixNamesIt) {
  const std::vector<Case> cases = {
      {{"LC_ALL=de_DE"}, "3. Nov. 2025, 9:14"},           {{"LC_ALL=de"}, "3. Nov. 2025, 9:14"},
      {{"LC_ALL=de_DE@euro"}, "3. Nov. 2025, 9:14"},      {{"LC_ALL=de_DE.ISO-8859-1"}, "3. Nov. 2025, 9:14"},
      {{"LC_ALL=de_DE.utf8@euro"}, "3. Nov. 2025, 9:14"}, {{"LC_ALL=en_AU.UTF-8"}, "3 Nov 2025 at 9:14 am"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(dateWith({one.variables[0], "TZ=UTC"}), one.date) << one.variables[0];
  }
}

TEST(LocaleVariable, IsAmericanEnglishWithoutACountryOfItsOwn) {
  for (const char* locale : {"C", "POSIX", "C.UTF-8", "C.utf8", "xx_YY.UTF-8", "nonsense", "deutsch",
                             ".UTF-8", "_DE", "@euro", "../../etc/passwd", "\xFF\xFE"}) {
    EXPECT_EQ(dateWith({std::string("LC_ALL=") + locale, "TZ=UTC"}), "Nov 3, 2025 at 9:14 AM") << locale;
  }
}

TEST(LocaleVariable, IsAmericanEnglishWhereItsNameIsLongerThanAnyLocales) {
  for (const std::size_t length : {101U, 150U, 151U, 156U, 157U, 172U, 1000U, 65536U}) {
    const std::string name = "LANG=de_DE_" + std::string(length - 6, 'X');
    EXPECT_EQ(dateWith({"LC_ALL=", "LC_TIME=", name, "TZ=UTC"}), "Nov 3, 2025 at 9:14 AM") << length;
  }
}

TEST(TimeZoneVariable, IsNamedAsPosixNamesIt) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"UTC", "Nov 3, 2025 at 9:14 AM"},
      {"America/New_York", "Nov 3, 2025 at 4:14 AM"},
      {":America/New_York", "Nov 3, 2025 at 4:14 AM"},
      {"Asia/Kathmandu", "Nov 3, 2025 at 2:59 PM"},
      {"/usr/share/zoneinfo/Asia/Tokyo", "Nov 3, 2025 at 6:14 PM"},
      // A rule says how far it is to Greenwich, so those in the east have a minus.
      {"EST5", "Nov 3, 2025 at 4:14 AM"},
      {"EST5EDT,M3.2.0,M11.1.0", "Nov 3, 2025 at 4:14 AM"},
      {"EST5EDT,M3.2.0,M12.1.0", "Nov 3, 2025 at 5:14 AM"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "Nov 3, 2025 at 10:14 AM"},
      {"<+0330>-3:30", "Nov 3, 2025 at 12:44 PM"},
      {"GMT+3", "Nov 3, 2025 at 6:14 AM"},
      // No zone at all
      {"", "Nov 3, 2025 at 9:14 AM"},
      {"Nowhere/Else", "Nov 3, 2025 at 9:14 AM"},
      {"../../etc/passwd", "Nov 3, 2025 at 9:14 AM"},
  };
  for (const auto& [zone, date] : cases) {
    EXPECT_EQ(dateWith({"LC_ALL=en_US.UTF-8", std::string("TZ=") + zone}), date) << zone;
  }
}

TEST(TimeZoneVariable, ThatNamesAPipeIsUtc) {
  const TemporaryFolder zones;
  makeNamedPipe(zones.below("pipe"));
  makeNamedPipe(zones.below("posixrules"));
  makeLink(zones.below("link"), zones.below("pipe"));
  const std::string folder = "TZDIR=" + zones.path();
  const std::string pipe = "TZ=" + zones.below("pipe");
  for (const std::vector<std::string>& variables : {
           std::vector<std::string>{pipe},
           std::vector<std::string>{"TZ=:" + zones.below("pipe")},
           std::vector<std::string>{"TZ=" + zones.below("link")},
           std::vector<std::string>{"TZ=../../.." + zones.below("pipe")},
           std::vector<std::string>{"TZ=pipe", folder},
           std::vector<std::string>{"TZ=:link", folder},
           std::vector<std::string>{"TZ=EST5EDT", folder},
           std::vector<std::string>{"TZ=/dev/tty"},
       }) {
    std::vector<std::string> all = variables;
    all.emplace_back("LC_ALL=en_US.UTF-8");
    EXPECT_EQ(dateWith(all), "Nov 3, 2025 at 9:14 AM") << testing::PrintToString(variables);
  }
}

}  // namespace
}  // namespace halvane
