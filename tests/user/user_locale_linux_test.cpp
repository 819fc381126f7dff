#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/file_system_root.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

using Setting = std::optional<std::string>;

std::string localeNamed(const std::string& name) {
  const ScopedVariable variable("LC_ALL", name);
  return userLocale();
}

TEST(Locale, IsTheStrongestVariableThatIsSet) {
  struct Case {
    Setting all, time, lang;
    std::string locale;
  };
  for (const Case& c : {Case{"de_DE.UTF-8", "fr_FR.UTF-8", "it_IT.UTF-8", "de_DE"},
                        Case{{}, "fr_FR.UTF-8", "it_IT.UTF-8", "fr_FR"}, Case{{}, {}, "it_IT.UTF-8", "it_IT"},
                        Case{"", "fr_FR.UTF-8", "it_IT.UTF-8", "fr_FR"}, Case{"", "", "it_IT.UTF-8", "it_IT"},
                        Case{"C", "fr_FR.UTF-8", "it_IT.UTF-8", "en_US"},
                        Case{"xx_XX", "fr_FR.UTF-8", "it_IT.UTF-8", "en_US"}}) {
    const ScopedVariable all("LC_ALL", c.all);
    const ScopedVariable time("LC_TIME", c.time);
    const ScopedVariable lang("LANG", c.lang);
    EXPECT_EQ(userLocale(), c.locale)
        << c.all.value_or("-") << " " << c.time.value_or("-") << " " << c.lang.value_or("-");
  }
}

TEST(Locale, OtherVariablesSayNothingOfDates) {
  const ScopedVariable all("LC_ALL", std::nullopt);
  const ScopedVariable time("LC_TIME", std::nullopt);
  const ScopedVariable lang("LANG", "de_DE.UTF-8");
  const ScopedVariable messages("LC_MESSAGES", "fr_FR.UTF-8");
  const ScopedVariable languages("LANGUAGE", "it:es");
  EXPECT_EQ(userLocale(), "de_DE");
}

TEST(Locale, IsReadFromItsPosixName) {
  struct Case {
    std::string name, locale;
  };
  for (const Case& c : {Case{"en_US.UTF-8", "en_US"}, Case{"en_AU", "en_AU"}, Case{"de", "de"},
                        Case{"de_AT.ISO-8859-1", "de_AT"}, Case{"de_DE@euro", "de_DE"},
                        Case{"de_DE.ISO-8859-15@euro", "de_DE"}, Case{"ca_ES.UTF-8@valencia", "ca_ES"},
                        Case{"sr_RS@latin", "sr_Latn_RS"}, Case{"sr_RS.UTF-8@latin", "sr_Latn_RS"},
                        Case{"uz_UZ@cyrillic", "uz_Cyrl_UZ"}, Case{"ks_IN@devanagari", "ks_Deva_IN"},
                        Case{"sr@latin", "sr_Latn"}, Case{"fa_IR.UTF-8", "fa_IR"}, Case{"en_DE", "en_DE"}}) {
    EXPECT_EQ(localeNamed(c.name), c.locale) << c.name;
  }
}

TEST(Locale, OfThePosixAndCLocalesIsAmericanEnglish) {
  for (const char* name : {"C", "POSIX", "C.UTF-8", "C.utf8", "POSIX.UTF-8"}) {
    EXPECT_EQ(localeNamed(name), "en_US") << name;
  }
}

TEST(Locale, ThatNobodyKnowsIsAmericanEnglish) {
  for (const char* name :
       {"xx_XX.UTF-8", "qqq", "nonsense", "_", ".UTF-8", "@euro", "123", "tlh_001", "../../etc/passwd"}) {
    EXPECT_EQ(localeNamed(name), "en_US") << name;
  }
}

TEST(Locale, OfANameThatNoSystemHasIsAmericanEnglish) {
  for (std::size_t length = 90; length < 2000; length += length < 300 ? 1 : 100) {
    for (const std::string start : {"de_DE_", "de", "de__"}) {
      const std::string name = start + std::string(length, 'X');
      const std::string locale = localeNamed(name);
      EXPECT_TRUE(locale == "en_US" || length + start.size() <= 100) << name;
    }
  }
  EXPECT_EQ(localeNamed(std::string(1 << 20, 'd') + "_DE.UTF-8"), "en_US");
}

TEST(Locale, TellsDottedAndDotlessIApartInTurkishAndAzerbaijaniAlone) {
  struct Case {
    const char* name;
    bool tells;
  };
  for (const Case& c : {Case{"tr_TR.UTF-8", true}, Case{"tr", true}, Case{"tr_CY", true}, Case{"az_AZ", true},
                        Case{"az_AZ@cyrillic", true}, Case{"en_US", false}, Case{"C", false},
                        Case{"de_DE", false}, Case{"kk_KZ", false}, Case{"xx_TR", false}}) {
    const ScopedVariable variable("LC_ALL", c.name);
    EXPECT_EQ(userLocaleTellsDotlessI(), c.tells) << c.name;
  }
}

TEST(Locale, ChangesShowAtOnce) {
  EXPECT_EQ(localeNamed("de_DE"), "de_DE");
  EXPECT_EQ(localeNamed("fr_FR"), "fr_FR");
  EXPECT_EQ(localeNamed("de_DE"), "de_DE");
}

struct Settings {
  Setting localeConf, defaultLocale;  // what /etc/locale.conf and /etc/default/locale hold
};

// The locale of a user who has no variable set, in a system with these settings; nothing where we may not
// make such a system.
std::optional<std::string> localeIn(const Settings& settings) {
  const TemporaryFolder system;
  if (settings.localeConf) writeFile(system.below("etc/locale.conf"), *settings.localeConf);
  if (settings.defaultLocale) writeFile(system.below("etc/default/locale"), *settings.defaultLocale);
  const ScopedVariable all("LC_ALL", std::nullopt);
  const ScopedVariable time("LC_TIME", std::nullopt);
  const ScopedVariable lang("LANG", std::nullopt);
  const std::string result =
      inChildProcess([&] { return takeAsRoot(system.path()) ? userLocale() : std::string("not allowed"); });
  return result == "not allowed" ? std::nullopt : std::optional(result);
}

TEST(Locale, ComesFromTheSystemsSettingWhereNoVariableIsSet) {
  struct Case {
    Settings settings;
    std::string locale;
  };
  for (const Case& c : {
           Case{{"LANG=de_DE.UTF-8\n", {}}, "de_DE"},
           Case{{{}, "LANG=fr_FR.UTF-8\n"}, "fr_FR"},
           Case{{"LANG=de_DE.UTF-8\n", "LANG=fr_FR.UTF-8\n"}, "de_DE"},
           Case{{"# nothing set\n", "LANG=fr_FR.UTF-8\n"}, "fr_FR"},
           Case{{"LANG=de_DE.UTF-8\nLC_TIME=fr_FR.UTF-8\n", {}}, "fr_FR"},
           Case{{"LANG=de_DE.UTF-8\nLC_TIME=fr_FR.UTF-8\nLC_ALL=it_IT.UTF-8\n", {}}, "it_IT"},
           Case{{"LANG=\"de_DE.UTF-8\"\n", {}}, "de_DE"},
           Case{{"LANG='de_DE.UTF-8'\n", {}}, "de_DE"},
           Case{{"LANG=de_DE.UTF-8@d\n", {}}, "de_DE"},
           Case{{"LANG='de_DE.UTF-8\"\n", {}}, "en_US"},
           Case{{"LANG=\"\n", {}}, "en_US"},
           Case{{"  export LANG=de_DE.UTF-8  \n", {}}, "de_DE"},
           Case{{"LANG=de_DE.UTF-8", {}}, "de_DE"},
           Case{{"LANG=de_DE.UTF-8\r\n", {}}, "de_DE"},
           Case{{"LANG=fr_FR.UTF-8\nLANG=de_DE.UTF-8\n", {}}, "de_DE"},
           Case{{"#LANG=de_DE.UTF-8\n", {}}, "en_US"},
           Case{{"LANGUAGE=de_DE\nLC_MESSAGES=de_DE\n", {}}, "en_US"},
           Case{{"LANG=C.UTF-8\n", {}}, "en_US"},
           Case{{"LANG=xx_XX\n", "LANG=fr_FR.UTF-8\n"}, "en_US"},
           Case{{"LANG=\n", {}}, "en_US"},
           Case{{"", ""}, "en_US"},
           Case{{{}, {}}, "en_US"},
       }) {
    const auto result = localeIn(c.settings);
    if (!result) GTEST_SKIP() << "this user may not change the root of the file system";
    EXPECT_EQ(result, c.locale) << c.settings.localeConf.value_or("-") << " | "
                                << c.settings.defaultLocale.value_or("-");
  }
}

}  // namespace
}  // namespace halvane
