#include <unicode/locid.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "user/date_words.h"
#include "user/user_locale.h"

// Prints the words for every month and quarter of a day, in every locale that ICU has, in its other calendars
// and digits, and in some that it doesn't have. Linked twice, with all of ICU's data and with what the
// programs get of it, it must print the same.

namespace {

std::vector<std::string> names() {
  std::vector<std::string> names = {
      "C", "xx_XX", "de-AT-u-nu-roman", "en_US_POSIX", "he-IL-u-ca-hebrew", "zh-u-nu-hansfin"};
  std::int32_t count = 0;
  const icu::Locale* available = icu::Locale::getAvailableLocales(count);
  for (std::int32_t i = 0; i < count; ++i) names.emplace_back(available[i].getName());
  for (const char* language : {"ar", "de", "en", "fa", "he", "hi", "ja", "th", "zh"}) {
    for (const char* calendar :
         {"buddhist", "chinese", "coptic", "dangi", "ethioaa", "ethiopic", "gregory", "hebrew", "indian",
          "islamic", "islamicc", "iso8601", "japanese", "persian", "roc"})
      names.push_back(std::string(language) + "-u-ca-" + calendar);
    for (const char* digits : {"arab", "beng", "deva", "hant", "hebr", "jpan", "latn", "roman", "taml"})
      names.push_back(std::string(language) + "-u-nu-" + digits);
  }
  return names;
}

}  // namespace

int main() {
  constexpr std::chrono::sys_days start = std::chrono::year(2025) / std::chrono::January / 2;
  setenv("TZ", "UTC", 1);
  for (const std::string& name : names()) {
    setenv("LC_ALL", name.c_str(), 1);
    const halvane::DateWords words;
    std::printf("%s %s\n", name.c_str(), halvane::userLocale().c_str());
    for (int month = 0; month < 12; ++month) {
      for (int quarter = 0; quarter < 4; ++quarter) {
        const auto moment = start + std::chrono::days(31 * month) + std::chrono::minutes(5 + 360 * quarter);
        std::printf("  %s\n", words.of(moment).c_str());
      }
    }
  }
}
