#include <unicode/locid.h>

#include <new>
#include <string_view>

#include "user/core_foundation.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// CFLocaleCopyCurrent answers the same for as long as the process lives, so the setting behind it is read. It
// names language and region, and calendar, digits and hours where they are not the usual ones.
std::string settingsIdentifier() {
  CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
  const CfOwned<CFPropertyListRef> setting(
      CFPreferencesCopyAppValue(CFSTR("AppleLocale"), kCFPreferencesCurrentApplication));
  if (setting && CFGetTypeID(setting.get()) == CFStringGetTypeID()) {
    const CfOwned<CFStringRef> canonical(CFLocaleCreateCanonicalLocaleIdentifierFromString(
        kCFAllocatorDefault, static_cast<CFStringRef>(setting.get())));
    return utf8Text(canonical.get()).value_or(std::string());
  }
  const CfOwned<CFLocaleRef> current(CFLocaleCopyCurrent());
  return current ? utf8Text(CFLocaleGetIdentifier(current.get())).value_or(std::string()) : std::string();
}

}  // namespace

std::string userLocale() {
  const icu::Locale locale(settingsIdentifier().c_str());
  const bool isKnown = *locale.getISO3Language() != '\0';
  return isKnown ? locale.getName() : "en_US";
}

bool userLocaleTellsDotlessI() {
  const icu::Locale locale(userLocale().c_str());
  const std::string_view language = locale.getLanguage();
  return language == "tr" || language == "az";
}

std::unique_ptr<icu::TimeZone> userTimeZone() {
  CFTimeZoneResetSystem();
  const CfOwned<CFTimeZoneRef> system(CFTimeZoneCopySystem());
  const std::string name = utf8Text(CFTimeZoneGetName(system.get())).value_or("GMT");
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  if (!zone) throw std::bad_alloc();
  return zone;
}

}  // namespace halvane
