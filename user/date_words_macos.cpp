#include <chrono>
#include <new>
#include <string_view>
#include <utility>

#include "user/core_foundation.h"
#include "user/date_words.h"
#include "user/hour_letters.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// With valid arguments, CoreFoundation can only fail for lack of memory.
template <typename Object>
CfOwned<Object> checked(Object object) {
  if (object == nullptr) throw std::bad_alloc();
  return CfOwned<Object>(object);
}

bool isSet(CFStringRef setting) {
  return CFPreferencesGetAppBooleanValue(setting, kCFPreferencesCurrentApplication, nullptr) != 0;
}

bool isOf(CFLocaleRef locale, CFStringRef part, CFStringRef value) {
  const auto found = static_cast<CFStringRef>(CFLocaleGetValue(locale, part));
  return found != nullptr && CFEqual(found, value);
}

// The fields to show if the user has set 12 or 24 hours in place of the locale's; null if not.
// CFLocaleCopyCurrent would keep that setting as it was when the process first asked, so we read it here each
// time. In Taiwan, twelve hours come with the part of the day, B, and not with AM or PM.
CFStringRef wantedFields(CFLocaleRef locale) {
  CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
  if (isSet(CFSTR("AppleICUForce24HourTime"))) return CFSTR("yMMMdHmm");
  if (!isSet(CFSTR("AppleICUForce12HourTime"))) return nullptr;
  const bool isTaiwan =
      isOf(locale, kCFLocaleLanguageCode, CFSTR("zh")) && isOf(locale, kCFLocaleCountryCode, CFSTR("TW"));
  return isTaiwan ? CFSTR("yMMMdBhmm") : CFSTR("yMMMdhmm");
}

std::string patternOf(CFStringRef fields, CFLocaleRef locale) {
  const auto pattern =
      checked(CFDateFormatterCreateDateFormatFromTemplate(kCFAllocatorDefault, fields, 0, locale));
  return utf8Text(pattern.get()).value_or(std::string());
}

// The hour is at its shortest if its letter is the one that the locale prefers (j). If the user has set other
// hours, they are as long as in the locale's pattern, and in English they are short too.
std::string patternFor(CFLocaleRef locale) {
  const std::string own = patternOf(CFSTR("yMMMdjmm"), locale);
  const CFStringRef fields = wantedFields(locale);
  if (fields == nullptr) return withShortHours(own);
  const std::string wanted = patternOf(fields, locale);
  const bool isShort =
      hourLetter(wanted) == hourLetter(own) || isOf(locale, kCFLocaleLanguageCode, CFSTR("en"));
  return isShort ? withShortHours(wanted) : wanted;
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
  const CfOwned<CFTimeZoneRef> zone = systemTimeZone();
  if (!zone) throw std::bad_alloc();
  CFTimeZoneSetDefault(zone.get());  // a new formatter takes it, and would look for it by itself
  const auto locale = checked(CFLocaleCreate(kCFAllocatorDefault, cfString(userLocale()).get()));
  auto format = checked(CFDateFormatterCreate(kCFAllocatorDefault, locale.get(), kCFDateFormatterNoStyle,
                                              kCFDateFormatterNoStyle));
  CFDateFormatterSetFormat(format.get(), cfString(patternFor(locale.get())).get());
  formatter_ = std::make_unique<Formatter>(Formatter{std::move(format)});
}

DateWords::~DateWords() = default;

std::string DateWords::of(Instant moment) const {
  // The words show nothing below the minute, and a double represents whole seconds exactly.
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
