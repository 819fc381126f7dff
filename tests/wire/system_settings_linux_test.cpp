#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/clock.h"
#include "tests/wire/messages.h"
#include "tests/wire/own_system.h"
#include "tests/wire/server_process.h"

// Clients start the server with hardly any environment, so the locale and the time zone come from the
// system's own settings. A change of them shows in the next answer.

namespace halvane {
namespace {

class SystemSettings : public testing::Test {
 protected:
  void SetUp() override {
    if (!OwnSystem::isAllowed()) GTEST_SKIP() << "the system lets us have no /etc of our own: be root";
    path_ = home_.write("a.md", EntryFile{}.text());
  }

  ServerProcess& server() {
    if (!server_)
      server_.emplace(Surroundings{.home = home_.path(), .variables = variables_, .before = system_.enter()});
    return *server_;
  }

  // The entry's date as the running server shows it now.
  std::string date() {
    const std::string text = askTool(server(), "read_entry", "{\"path\":" + jsonString(path_) + "}");
    return text.substr(6, text.find('\n') - 6);
  }

  void TearDown() override {
    if (!server_) return;
    EXPECT_EQ(server_->finish(), quietEnding);
  }

  const TemporaryHome home_;
  const OwnSystem system_;
  std::vector<std::string> variables_;
  std::string path_;
  std::optional<ServerProcess> server_;
};

TEST_F(SystemSettings, ThatAreNotThereMeanAmericanEnglishAndUtc) {
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

TEST_F(SystemSettings, AChangeOfTheLocaleShowsInTheNextAnswer) {
  writeFile(system_.etc("locale.conf"), "LANG=de_DE.UTF-8\n");
  EXPECT_EQ(date(), "3. Nov. 2025, 9:14");
  writeFile(system_.etc("locale.conf"), "LANG=fr_FR.UTF-8\n");
  EXPECT_EQ(date(), "3 nov. 2025 à 9:14");
  std::filesystem::remove(system_.etc("locale.conf"));
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

TEST_F(SystemSettings, AChangeOfTheOtherLocaleFileShowsInTheNextAnswer) {
  writeFile(system_.etc("default/locale"), "LANG=\"de_DE.UTF-8\"\n");
  EXPECT_EQ(date(), "3. Nov. 2025, 9:14");
  writeFile(system_.etc("default/locale"), "LANG=\"fr_FR.UTF-8\"\n");
  EXPECT_EQ(date(), "3 nov. 2025 à 9:14");
}

TEST_F(SystemSettings, TheFirstLocaleFileThatNamesOneCounts) {
  writeFile(system_.etc("default/locale"), "LANG=fr_FR.UTF-8\n");
  writeFile(system_.etc("locale.conf"), "KEYMAP=de\n");
  EXPECT_EQ(date(), "3 nov. 2025 à 9:14");
  writeFile(system_.etc("locale.conf"), "LANG=de_DE.UTF-8\n");
  EXPECT_EQ(date(), "3. Nov. 2025, 9:14");
}

TEST_F(SystemSettings, TheSettingForTimesIsStrongerThanTheGeneralOne) {
  writeFile(system_.etc("locale.conf"), "LANG=de_DE.UTF-8\nLC_TIME=fr_FR.UTF-8\nLC_MESSAGES=ja_JP.UTF-8\n");
  EXPECT_EQ(date(), "3 nov. 2025 à 9:14");
  writeFile(system_.etc("locale.conf"), "LC_ALL=tr_TR.UTF-8\nLANG=de_DE.UTF-8\nLC_TIME=fr_FR.UTF-8\n");
  EXPECT_EQ(date(), "3 Kas 2025 9:14");
}

TEST_F(SystemSettings, ALocaleThatNobodyKnowsMeansAmericanEnglish) {
  for (const char* line : {"LANG=xx_YY.UTF-8\n", "LANG=C.UTF-8\n", "LANG=POSIX\n", "LANG=\n",
                           "# LANG=de_DE.UTF-8\n", "\xFF\n"}) {
    SCOPED_TRACE(line);
    writeFile(system_.etc("locale.conf"), line);
    EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
  }
}

TEST_F(SystemSettings, TheEnvironmentIsStronger) {
  variables_ = {"LANG=fr_FR.UTF-8", "TZ=Asia/Tokyo"};
  writeFile(system_.etc("locale.conf"), "LC_ALL=de_DE.UTF-8\n");
  system_.setZone("Europe/Berlin");
  EXPECT_EQ(date(), "3 nov. 2025 à 18:14");
}

TEST_F(SystemSettings, AChangeOfTheTimeZoneShowsInTheNextAnswer) {
  system_.setZone("Europe/Berlin");
  EXPECT_EQ(date(), "Nov 3, 2025 at 10:14 AM");
  system_.setZone("America/New_York");
  EXPECT_EQ(date(), "Nov 3, 2025 at 4:14 AM");
  system_.setZone("Asia/Kathmandu");
  EXPECT_EQ(date(), "Nov 3, 2025 at 2:59 PM");
  std::filesystem::remove(system_.etc("localtime"));
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

// Where the clocks were set forward in the night, a day ago by the clock is 23 hours ago.
TEST_F(SystemSettings, AChangeOfTheTimeZoneMovesTheStartOfTheLastDays) {
  variables_ = clockAt(secondsOf("2025-03-30T08:00:00Z"));
  writeFile(path_, EntryFile{.date = "2025-03-29T08:30:00Z", .body = "The harbour."}.text());
  system_.setZone("Etc/UTC");
  EXPECT_EQ(askTool(server(), "list_recent", R"({"days":1})"),
            "[Mar 29, 2025 at 8:30 AM] The harbour.\n" + path_);
  system_.setZone("Europe/Berlin");
  EXPECT_EQ(askTool(server(), "list_recent", R"({"days":1})"), "No entries in the last 1 days.");
}

// Some systems copy the zone's file instead of linking to it.
TEST_F(SystemSettings, ATimeZoneMayBeACopyOfItsFile) {
  std::filesystem::copy_file("/usr/share/zoneinfo/Europe/Berlin", system_.etc("localtime"));
  EXPECT_EQ(date(), "Nov 3, 2025 at 10:14 AM");
  std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Tokyo", system_.etc("localtime.new"));
  std::filesystem::rename(system_.etc("localtime.new"), system_.etc("localtime"));
  EXPECT_EQ(date(), "Nov 3, 2025 at 6:14 PM");
}

TEST_F(SystemSettings, ATimeZoneThatNobodyKnowsMeansUtc) {
  system_.setZone("Nowhere/Else");
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

TEST_F(SystemSettings, ALocaleInAPipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(system_.etc("locale.conf").c_str(), 0666), 0);
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

TEST_F(SystemSettings, ATimeZoneInAPipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(system_.etc("localtime").c_str(), 0666), 0);
  EXPECT_EQ(date(), "Nov 3, 2025 at 9:14 AM");
}

}  // namespace
}  // namespace halvane
