#include "user/user_locale.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

TEST(Locale, IsTheSetting) {
  TemporaryHome home;
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"de_DE", "de_DE"},
      {"de-AT", "de_AT"},
      {"zh-Hant-TW", "zh_Hant_TW"},
      {"sr_Latn_RS", "sr_Latn_RS"},
      {"en_US@calendar=buddhist", "en_US@calendar=buddhist"},
      {"en_US@rg=dezzzz", "en_US@rg=dezzzz"}};
  for (const auto& [setting, locale] : cases) {
    home.setLocale(setting);
    EXPECT_EQ(userLocale(), locale) << setting;
  }
}

TEST(Locale, ThatNobodyKnowsIsAmericanEnglish) {
  TemporaryHome home;
  for (const char* setting :
       {"", "xx_XX", "nonsense", "deutsch", "_DE", "@calendar=buddhist", "../../etc/passwd", "C", "POSIX",
        "%s%n", "日本", "en_US@calendar=", "\t", "@@@"}) {
    home.setLocale(setting);
    EXPECT_EQ(userLocale(), "en_US") << setting;
  }
}

TEST(Locale, OfANameLongerThanAnyLocalesIsAmericanEnglish) {
  TemporaryHome home;
  for (const std::size_t length : {101U, 150U, 156U, 157U, 172U, 1000U, 65536U, 1U << 20}) {
    home.setLocale("de_DE_" + std::string(length - 6, 'X'));
    EXPECT_EQ(userLocale(), "en_US") << length;
    home.setLocale(std::string(length, 'd'));
    EXPECT_EQ(userLocale(), "en_US") << length;
  }
}

TEST(Locale, OfASettingThatIsNoTextIsAmericanEnglish) {
  const TemporaryHome home;
  for (const char* value :
       {"<integer>5</integer>", "<true/>", "<array><string>de_DE</string></array>", "<dict/>"}) {
    writeFile(home.settings(".GlobalPreferences"), propertyListWith("AppleLocale", value));
    EXPECT_EQ(userLocale(), "en_US") << value;
  }
}

TEST(Locale, TellsDottedAndDotlessIApartInTurkishAndAzerbaijaniAlone) {
  TemporaryHome home;
  for (const char* setting : {"tr", "tr_TR", "tr-TR", "az_AZ", "az_Latn_AZ", "tr_TR@calendar=buddhist"}) {
    home.setLocale(setting);
    EXPECT_TRUE(userLocaleTellsDotlessI()) << setting;
  }
  for (const char* setting : {"de_DE", "en_TR", "ku_TR", "nonsense"}) {
    home.setLocale(setting);
    EXPECT_FALSE(userLocaleTellsDotlessI()) << setting;
  }
}

}  // namespace
}  // namespace halvane
