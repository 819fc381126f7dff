#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>
#include <utility>

#include "text/icu.h"
#include "user/date_words.h"
#include "user/hour_letters.h"
#include "user/icu_dates.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// Languages that join date and time by a word, as in "Nov 3, 2025 at 9:14 AM". The others put a comma there.
bool joinsByWord(const icu::Locale& locale) {
  constexpr auto languages = std::to_array<std::string_view>({"en", "fr", "eu"});
  return std::find(languages.begin(), languages.end(), locale.getLanguage()) != languages.end();
}

icu::UnicodeString patternFor(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::DateTimePatternGenerator> generator(
      icu::DateTimePatternGenerator::createInstance(locale, status));
  check(status);
  if (joinsByWord(locale)) {
    const icu::UnicodeString byWord = generator->getDateTimeFormat(UDAT_LONG, status);
    generator->setDateTimeFormat(UDAT_MEDIUM, byWord, status);
  }
  const icu::UnicodeString pattern = generator->getBestPattern(u"yMMMdjmm", status);
  check(status);
  std::string text;
  return icu::UnicodeString::fromUTF8(withShortHours(pattern.toUTF8String(text)));
}

}  // namespace

struct DateWords::Formatter {
  icu::Locale locale;
  icu::SimpleDateFormat format;

  static std::unique_ptr<Formatter>& ofLastAnswer();
};

// ICU takes half a millisecond to make a formatter: as long as we take to search a hundred entries. So we
// keep one from answer to answer, and use it for as long as the user's locale stays the same.
std::unique_ptr<DateWords::Formatter>& DateWords::Formatter::ofLastAnswer() {
  static std::unique_ptr<Formatter> formatter;
  return formatter;
}

DateWords::DateWords() : formatter_(std::move(Formatter::ofLastAnswer())) {
  const icu::Locale locale(userLocale().c_str());
  UErrorCode status = U_ZERO_ERROR;
  // Without a default locale and time zone, ICU looks for them itself, and in version 76 a very long name in
  // LC_ALL ends the process.
  icu::Locale::setDefault(locale, status);
  std::unique_ptr<icu::TimeZone> zone = userTimeZone();
  icu::TimeZone::setDefault(*zone);
  if (!formatter_ || formatter_->locale != locale) {
    formatter_ = std::make_unique<Formatter>(
        Formatter{locale, icu::SimpleDateFormat(patternFor(locale), locale, status)});
    check(status);
  }
  formatter_->format.adoptTimeZone(zone.release());
}

DateWords::~DateWords() {
  Formatter::ofLastAnswer() = std::move(formatter_);
}

std::string DateWords::of(Instant moment) const {
  icu::UnicodeString words;
  formatter_->format.format(icuDate(moment), words);
  constexpr char16_t narrowNoBreakSpace = 0x202F;
  words.findAndReplace(icu::UnicodeString(narrowNoBreakSpace), icu::UnicodeString(u' '));
  if (words.isBogus()) throw std::bad_alloc();
  std::string text;
  return words.toUTF8String(text);
}

}  // namespace halvane
