#include <cstdlib>
#include <new>
#include <optional>
#include <string>

#include "user/core_foundation.h"
#include "user/icu_dates.h"

namespace halvane {

CfOwned<CFTimeZoneRef> systemTimeZone() {
  const char* setting = std::getenv("TZ");
  if (setting != nullptr && !cfString(setting))
    return CfOwned<CFTimeZoneRef>(CFTimeZoneCreateWithTimeIntervalFromGMT(kCFAllocatorDefault, 0));
  CFTimeZoneResetSystem();
  return CfOwned<CFTimeZoneRef>(CFTimeZoneCopySystem());
}

std::optional<std::string> unknownTimeZone() {
  const char* setting = std::getenv("TZ");
  if (setting == nullptr || *setting == '\0') return std::nullopt;
  const CfOwned<CFStringRef> name = cfString(setting);
  if (name && CfOwned<CFTimeZoneRef>(CFTimeZoneCreateWithName(kCFAllocatorDefault, name.get(), true)))
    return std::nullopt;
  return setting;
}

std::unique_ptr<icu::TimeZone> userTimeZone() {
  const CfOwned<CFTimeZoneRef> system = systemTimeZone();
  const std::string name = utf8Text(system ? CFTimeZoneGetName(system.get()) : nullptr).value_or("GMT");
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  if (!zone) throw std::bad_alloc();
  return zone;
}

}  // namespace halvane
