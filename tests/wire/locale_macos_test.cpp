#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/user_settings.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The user's settings, as a server that runs sees them.

namespace halvane {
namespace {

class UserSettings : public testing::Test {
 protected:
  UserSettings() { path_ = home_.write("a.md", EntryFile{.body = "ISPARTA"}.text()); }

  void set(const std::string& key, const std::string& value) const {
    writeFile(home_.settings(".GlobalPreferences"), propertyListOfText(key, value));
  }
  std::string date(ServerProcess& server) const {
    const std::string text = askTool(server, "read_entry", "{\"path\":" + jsonString(path_) + "}");
    constexpr std::size_t before = std::string_view("Date: ").size();
    return text.substr(before, text.find('\n') - before);
  }
  std::string dateInZone(const std::vector<std::string>& variables) const {
    ServerProcess server({.home = home_.path(), .variables = variables});
    const std::string words = date(server);
    EXPECT_EQ(server.finish(), quietEnding);
    return words;
  }

  const TemporaryHome home_;
  std::string path_;
};

TEST_F(UserSettings, ShowInTheNextAnswer) {
  ServerProcess server({.home = home_.path(), .variables = {"TZ=UTC"}});
  set("AppleLocale", "de_DE");
  EXPECT_EQ(date(server), "3. Nov. 2025, 9:14");
  EXPECT_TRUE(askTool(server, "search_entries", R"({"query":"isparta"})").ends_with("…ISPARTA…"));
  set("AppleLocale", "tr_TR");
  EXPECT_EQ(date(server), "3 Kas 2025 9:14");
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"isparta"})"), "No entries match \"isparta\".");
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(UserSettings, AreNotTheVariablesOfOtherSystems) {
  ServerProcess server(
      {.home = home_.path(), .variables = {"LC_ALL=de_DE.UTF-8", "LANG=de_DE.UTF-8", "TZ=UTC"}});
  EXPECT_EQ(date(server), "Nov 3, 2025 at 9:14 AM");
  EXPECT_EQ(server.finish(), quietEnding);
}

// Zones go by their names alone: others leave it at the system's zone.
TEST_F(UserSettings, TakeNoOtherNamesOfZonesThanTheirOwn) {
  const std::string ofSystem = dateInZone({});
  for (const char* zone :
       {":America/New_York", "/usr/share/zoneinfo/Asia/Tokyo", "Nowhere/Else", "EST5EDT,M3.2.0,M11.1.0"})
    EXPECT_EQ(dateInZone({std::string("TZ=") + zone}), ofSystem) << zone;
}

TEST_F(UserSettings, TakeUtcForAZoneWhoseNameIsNotUtf8) {
  EXPECT_EQ(dateInZone({"TZ=x\xFFy"}), dateInZone({"TZ=UTC"}));
}

}  // namespace
}  // namespace halvane
