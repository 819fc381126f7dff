#include <chrono>
#include <new>
#include <string_view>
#include <utility>

#include "user/core_foundation.h"
#include "user/date_words.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// With valid arguments memory is all that CoreFoundation can lack.
template <typename Object>
CfOwned<Object> checked(Object object) {
  if (object == nullptr) throw std::bad_alloc();
  return CfOwned<Object>(object);
}

bool isSet(CFStringRef setting) {
  return CFPreferencesGetAppBooleanValue(setting, kCFPreferencesCurrentApplication, nullptr) != 0;
}

// j stands for the hours that the locale prefers. A user who wants the others has a setting for that, which
// CFLocaleCopyCurrent would mix in as it was when the process first asked. So it is read here, anew each
// time.
CFStringRef fieldsToShow() {
  CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
  if (isSet(CFSTR("AppleICUForce24HourTime"))) return CFSTR("yMMMdHmm");
  if (isSet(CFSTR("AppleICUForce12HourTime"))) return CFSTR("yMMMdhmm");
  return CFSTR("yMMMdjmm");
}

// `pattern` with every hour at its shortest: 9:14, also where the locale itself would write 09:14. What
// stands between apostrophes is text.
std::string withShortHours(std::string_view pattern) {
  constexpr std::string_view hours = "hHkK";
  std::string shortened;
  bool isText = false;
  for (const char letter : pattern) {
    if (letter == '\'') isText = !isText;
    const bool isHour = !isText && hours.find(letter) != std::string_view::npos;
    if (!isHour || !shortened.ends_with(letter)) shortened += letter;
  }
  return shortened;
}

CfOwned<CFStringRef> patternFor(CFLocaleRef locale) {
  const auto pattern =
      checked(CFDateFormatterCreateDateFormatFromTemplate(kCFAllocatorDefault, fieldsToShow(), 0, locale));
  return cfString(withShortHours(utf8Text(pattern.get()).value_or(std::string())));
}

void replaceAll(std::string& text, std::string_view old, std::string_view replacement) {
  for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += replacement.size()) {
    text.replace(at, old.size(), replacement);
  }
}

}  // namespace

struct DateWords::Formatter {
  CfOwned<CFDateFormatterRef> format;
};

// The calendar is the locale's, and the Gregorian one is CoreFoundation's: Julian before 15 October 1582.
DateWords::DateWords() {
  CFTimeZoneResetSystem();
  const auto zone = checked(CFTimeZoneCopySystem());
  const auto locale = checked(CFLocaleCreate(kCFAllocatorDefault, cfString(userLocale()).get()));
  auto format = checked(CFDateFormatterCreate(kCFAllocatorDefault, locale.get(), kCFDateFormatterNoStyle,
                                              kCFDateFormatterNoStyle));
  CFDateFormatterSetProperty(format.get(), kCFDateFormatterTimeZone, zone.get());
  CFDateFormatterSetFormat(format.get(), patternFor(locale.get()).get());
  formatter_ = std::make_unique<Formatter>(Formatter{std::move(format)});
}

DateWords::~DateWords() = default;

std::string DateWords::of(Instant moment) const {
  // Nothing below the minute is shown, and a double holds whole seconds exactly.
  const auto seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
  const auto words = checked(CFDateFormatterCreateStringWithAbsoluteTime(
      kCFAllocatorDefault, formatter_->format.get(),
      static_cast<double>(seconds) - kCFAbsoluteTimeIntervalSince1970));
  std::string text = utf8Text(words.get()).value_or(std::string());
  constexpr std::string_view narrowNoBreakSpace = "\xE2\x80\xAF";
  replaceAll(text, narrowNoBreakSpace, " ");
  return text;
}

}  // namespace halvane
