#include <sys/stat.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "system/files.h"
#include "system/paths.h"
#include "user/icu_dates.h"

namespace halvane {
namespace {

// The C library's time zone: TZ in every form that POSIX allows, otherwise the system's setting. The system
// keeps the C library's zone files up to date. The zones in ICU's data are as old as ICU.
class SystemTimeZone : public icu::TimeZone {
 public:
  using icu::TimeZone::getOffset;

  void getOffset(UDate date, UBool local, std::int32_t& rawOffset, std::int32_t& savings,
                 UErrorCode& /*status*/) const override {
    savings = 0;
    rawOffset = offsetAt(date);
    if (local) rawOffset = offsetAt(date - rawOffset);
  }
  std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                         std::uint8_t, std::int32_t timeOfDay, UErrorCode& /*status*/) const override {
    using namespace std::chrono;
    const int astronomical = era == icu::GregorianCalendar::AD ? year : 1 - year;
    const sys_days date = std::chrono::year(astronomical) /
                          std::chrono::month(static_cast<unsigned>(month + 1)) /
                          std::chrono::day(static_cast<unsigned>(day));
    const auto midnight = static_cast<UDate>(std::chrono::milliseconds(date.time_since_epoch()).count());
    return offsetAt(midnight + timeOfDay - offsetAt(midnight + timeOfDay));
  }
  std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                         std::uint8_t dayOfWeek, std::int32_t timeOfDay, std::int32_t /*monthLength*/,
                         UErrorCode& status) const override {
    return getOffset(era, year, month, day, dayOfWeek, timeOfDay, status);
  }
  void setRawOffset(std::int32_t /*milliseconds*/) override {}
  std::int32_t getRawOffset() const override { return offsetAt(icu::Calendar::getNow()); }
  UBool useDaylightTime() const override { return false; }
  UBool inDaylightTime(UDate /*date*/, UErrorCode& /*status*/) const override { return false; }
  icu::TimeZone* clone() const override { return new SystemTimeZone(*this); }
  static UClassID getStaticClassID() {
    static char identity = 0;
    return &identity;
  }
  UClassID getDynamicClassID() const override { return getStaticClassID(); }

 private:
  static std::int32_t offsetAt(UDate date) {
    const auto moment = static_cast<std::time_t>(std::floor(date / 1000));
    std::tm fields{};
    return localtime_r(&moment, &fields) != nullptr ? static_cast<std::int32_t>(fields.tm_gmtoff) * 1000 : 0;
  }
};

constexpr std::size_t longestZoneFile = 1 << 20;

// Whether reading `path` would wait, as with a pipe.
bool isNoRegularFile(const std::string& path) {
  struct stat state;
  return stat(path.c_str(), &state) == 0 && !S_ISREG(state.st_mode);
}

// The file that the C library reads for the name of a zone.
std::string zoneFile(std::string_view name) {
  const char* folder = std::getenv("TZDIR");
  const bool isSet = folder != nullptr && *folder != '\0';
  return name.starts_with('/') ? std::string(name) : joinPath(isSet ? folder : "/usr/share/zoneinfo", name);
}

// The file in which the C library looks for the time zone `setting`, the value of TZ, before it reads
// `setting` as a rule; the file of the system's zone when TZ is not set.
std::string firstFile(const char* setting) {
  if (setting == nullptr) return "/etc/localtime";
  return zoneFile(*setting == ':' ? setting + 1 : setting);
}

// Whether the C library can find the time zone without waiting. It reads posixrules if a rule doesn't say on
// which days the clocks change.
bool isReadable(const char* setting) {
  return !isNoRegularFile(firstFile(setting)) && !isNoRegularFile(zoneFile("posixrules"));
}

// Whether the file at `path` begins as the zones' files do (RFC 8536).
bool isZoneFile(const std::string& path) {
  constexpr std::string_view openings[] = {"TZif"};
  ByteBuffer buffer;
  return readFile(path, {openings}, buffer, longestZoneFile).has_value();
}

bool isLetter(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

// Whether `setting` begins like a POSIX rule, such as CET-1CEST or <+0330>-3:30: with a name, which is
// between < and > or has three letters or more, and an offset.
bool isRule(std::string_view setting) {
  std::size_t end = setting.find('>') + 1;
  if (!setting.starts_with('<')) {
    end = 0;
    while (end < setting.size() && isLetter(setting[end])) ++end;
    if (end < 3) return false;
  }
  setting.remove_prefix(end);
  if (setting.starts_with('+') || setting.starts_with('-')) setting.remove_prefix(1);
  return !setting.empty() && setting.front() >= '0' && setting.front() <= '9';
}

}  // namespace

std::optional<std::string> unknownTimeZone() {
  const char* setting = std::getenv("TZ");
  if (setting == nullptr || *setting == '\0') return std::nullopt;
  const std::string_view name = *setting == ':' ? setting + 1 : setting;
  const bool isUtc = name.empty() || name == "UTC" || name == "GMT";
  if (isUtc || isZoneFile(firstFile(setting)) || isRule(name)) return std::nullopt;
  return setting;
}

std::unique_ptr<icu::TimeZone> userTimeZone() {
  std::unique_ptr<icu::TimeZone> zone;
  if (isReadable(std::getenv("TZ"))) {
    tzset();  // reads the settings again
    zone = std::make_unique<SystemTimeZone>();
  } else {
    zone.reset(icu::TimeZone::getGMT()->clone());
  }
  if (!zone) throw std::bad_alloc();  // ICU's classes have their own operator new, which returns null
  return zone;
}

}  // namespace halvane
