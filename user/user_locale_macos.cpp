#include "user/core_foundation.h"
#include "user/locale_setting.h"

namespace halvane {

// CFLocaleCopyCurrent always gives the locale that was set when the process first asked, so we read the
// setting itself. It names the language and region, and the calendar, digits and hours if they are not the
// usual ones.
std::string localeSetting() {
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

}  // namespace halvane
