#include "user/preferences.h"

#include <gtest/gtest.h>

#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

constexpr const char* suite = "org.example.app";

std::optional<std::string> settingOf(const std::string& key) {
  const std::optional<Preferences> preferences = Preferences::ofSuite(suite);
  return preferences ? preferences->string(key) : std::nullopt;
}

TEST(Preferences, HoldTheTextsOfTheSuite) {
  const TemporaryHome home;
  EXPECT_EQ(settingOf("k"), std::nullopt);
  writeFile(home.settings(suite), propertyListOfText("k", "Zoë 👍 "));
  EXPECT_EQ(settingOf("k"), "Zoë 👍 ");
  EXPECT_EQ(settingOf("K"), std::nullopt);
  EXPECT_EQ(settingOf(std::string("k\0", 2)), std::nullopt);
  writeFile(home.settings(suite), propertyListOfText("k", "again"));
  EXPECT_EQ(settingOf("k"), "again");
}

TEST(Preferences, HoldNoTextWhereAValueIsOfAnotherKind) {
  const TemporaryHome home;
  for (const char* value : {"<true/>", "<integer>1</integer>", "<data>L2o=</data>", "<array/>", "<dict/>"}) {
    writeFile(home.settings(suite), propertyListWith("k", value));
    EXPECT_EQ(settingOf("k"), std::nullopt) << value;
  }
}

TEST(Preferences, ThatAreNoPropertyListHoldNothing) {
  const TemporaryHome home;
  writeFile(home.settings(suite), "garbage");
  EXPECT_EQ(settingOf("k"), std::nullopt);
}

TEST(Preferences, OfTheUserForAllApplicationsCountToo) {
  const TemporaryHome home;
  writeFile(home.settings(".GlobalPreferences"), propertyListOfText("k", "for all"));
  EXPECT_EQ(settingOf("k"), "for all");
  EXPECT_EQ(Preferences::standard().value().string("k"), "for all");
  writeFile(home.settings(suite), propertyListOfText("k", "its own"));
  EXPECT_EQ(settingOf("k"), "its own");
}

TEST(Preferences, OfASuiteWhoseNameIsNoTextAreNone) {
  EXPECT_FALSE(Preferences::ofSuite("\xFF"));
}

TEST(Preferences, LieInNoFileOfOurs) {
  EXPECT_EQ(Preferences::fileOfSuite(suite), std::nullopt);
}

TEST(MainBundle, IsNoneOfAProgramOnTheCommandLine) {
  EXPECT_EQ(mainBundleIdentifier(), std::nullopt);
}

}  // namespace
}  // namespace halvane
