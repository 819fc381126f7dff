#include "user/user_locale.h"

#include <unicode/calendar.h>
#include <unicode/locid.h>
#include <unicode/ures.h>

#include <memory>
#include <optional>
#include <string_view>

#include "text/icu.h"
#include "user/locale_setting.h"

namespace halvane {
namespace {

// No identifier of a real locale is nearly so long. With 156 bytes and more, ICU fails in different ways in
// different versions.
constexpr std::size_t longestIdentifier = 100;

bool succeeded(UErrorCode status) {
  if (status == U_MEMORY_ALLOCATION_ERROR) check(status);
  return U_SUCCESS(status) != 0;
}

// Whether ICU has words for the language.
bool hasWords(const icu::Locale& locale) {
  if (*locale.getLanguage() == '\0') return false;
  UErrorCode status = U_ZERO_ERROR;
  ures_close(ures_open(nullptr, locale.getLanguage(), &status));
  return succeeded(status) && status != U_USING_DEFAULT_WARNING;
}

// Whether ICU can read the keywords, which may say anything.
bool hasCalendar(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(locale, status));
  return succeeded(status);
}

// The locale that `identifier` names, as ICU writes it; nothing when ICU has no words for its language or
// can't read the rest of it.
std::optional<std::string> knownLocale(const std::string& identifier) {
  if (identifier.size() > longestIdentifier) return std::nullopt;
  const icu::Locale locale(identifier.c_str());
  if (locale.isBogus() || !hasWords(locale)) return std::nullopt;
  const bool hasKeywords = identifier.find('@') != std::string::npos;
  if (hasKeywords && !hasCalendar(locale)) return std::nullopt;
  return locale.getName();
}

}  // namespace

std::string userLocale() {
  return knownLocale(localeSetting()).value_or("en_US");
}

std::optional<std::string> unknownLocale() {
  std::string setting = localeSetting();
  if (setting.empty() || knownLocale(setting)) return std::nullopt;
  return setting;
}

bool userLocaleTellsDotlessI() {
  const std::string locale = userLocale();
  const std::string_view language = std::string_view(locale).substr(0, locale.find_first_of("_@"));
  return language == "tr" || language == "az";
}

}  // namespace halvane
