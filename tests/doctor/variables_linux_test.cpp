#include <gtest/gtest.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// What the doctor says of variables that mislead: those that nobody knows, and those of the shell alone.

namespace halvane {
namespace {

class Variables : public testing::Test {
 protected:
  Variables() { home_.write("a.md", EntryFile{}.text()); }

  Answer answerWith(const std::vector<std::string>& variables) const {
    return callDoctor({.home = home_.path(), .variables = variables});
  }
  std::string listIn(const std::string& folder) const {
    return home_.below(folder + "/" + std::string(primarySuite) + ".plist");
  }

  const TemporaryHome home_;
};

TEST_F(Variables, ForAnUnknownLocaleNeedAttention) {
  for (const std::string& name : {std::string("xx_YY"), std::string(200, 'a'), std::string("english")}) {
    const Answer given = answerWith({"LC_ALL=" + name + ".UTF-8"});
    EXPECT_TRUE(given.says("\n! The locale " + name + " is unknown: dates are shown in English.\n"))
        << given.output;
    EXPECT_EQ(given.status, 1);
  }
}

TEST_F(Variables, ForAnUnknownLocaleAreShownWithoutWhatTheTerminalWouldObey) {
  for (const char* sign : {"\x1B", "\n", "\xFF", "\u202E"}) {
    const Answer given = answerWith({"LC_ALL=x" + std::string(sign) + "y"});
    EXPECT_TRUE(given.says("\n! The locale x\uFFFDy is unknown: dates are shown in English.\n"))
        << given.output;
  }
}

TEST_F(Variables, ForAKnownLocaleOrNoneNeedNoAttention) {
  for (const char* name : {"de_DE.UTF-8", "C", "C.UTF-8", "POSIX", "en", "sr_RS.UTF-8@latin"})
    EXPECT_EQ(answerWith({std::string("LC_ALL=") + name}).status, 0) << name;
}

TEST_F(Variables, ForAnUnknownTimeZoneNeedAttention) {
  makeNamedPipe(home_.below("pipe"));
  for (const std::string& zone : {std::string("Nowhere/Land"), std::string("Europe/Belrin"),
                                  std::string("MEZ"), std::string(":Europe/Belrin"), std::string("<+03>"),
                                  home_.below("pipe"), home_.journal() + "/a.md"}) {
    const Answer given = answerWith({"TZ=" + zone});
    EXPECT_TRUE(given.says("\n! The time zone " + zone + " is unknown: dates are shown in UTC+00:00.\n"))
        << given.output;
    EXPECT_EQ(given.status, 1);
  }
}

TEST_F(Variables, ForAKnownTimeZoneOrNoneNeedNoAttention) {
  for (const char* zone : {"", ":", "UTC", "GMT", "Europe/Berlin", ":Europe/Berlin", "CET-1CEST",
                           ":CET-1CEST", "cet-1cest", "JST-9", "HST10", "CET-1CEST,M3.5.0,M10.5.0/3",
                           "<+0330>-3:30", "UTC+3", "/usr/share/zoneinfo/Asia/Tokyo"}) {
    EXPECT_EQ(answerWith({std::string("TZ=") + zone}).status, 0) << zone;
  }
}

TEST_F(Variables, OfTheShellThatLeadToAnotherJournalNeedAttention) {
  writeFile(home_.below("Journal/a.md"), EntryFile{}.text());
  writeFile(listIn("settings"), propertyListOfText("journalRoot", "~/Journal"));
  const Answer given = answerWith({"XDG_CONFIG_HOME=" + home_.below("settings")});
  EXPECT_TRUE(
      given.says("\n! XDG_CONFIG_HOME is set here. If the client starts the server without it, the server "
                 "looks in " +
                 home_.journal() + "\n"))
      << given.output;
  EXPECT_TRUE(given.says("\n  They are kept in " + listIn("settings") + "\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Variables, OfTheShellThatHidePreferencesNeedAttention) {
  writeFile(listIn(".config"), propertyListOfText("journalRoot", "~/Journal"));
  const Answer given = answerWith({"XDG_CONFIG_HOME=" + home_.below("settings")});
  EXPECT_TRUE(given.says("\n! XDG_CONFIG_HOME is set here.")) << given.output;
  EXPECT_TRUE(given.says("looks in " + home_.below("Journal") + "\n")) << given.output;
}

TEST_F(Variables, OfTheShellThatChangeNothingNeedNoAttention) {
  for (const std::string& folder : {home_.below("settings"), home_.below(".config"), std::string("relative")})
    EXPECT_EQ(answerWith({"XDG_CONFIG_HOME=" + folder}).status, 0) << folder;
}

TEST_F(Variables, OfTheShellSayWhichFileSpeaks) {
  writeFile(home_.below("Journal/a.md"), EntryFile{}.text());
  home_.setJournalRoot(primarySuite, "~/Journal");
  const Answer given = answerWith({});
  EXPECT_TRUE(given.says("\n  The preferences of " + std::string(primarySuite) +
                         " name this folder.\n  They are kept in " + listIn(".config") + "\n"))
      << given.output;
}

}  // namespace
}  // namespace halvane
