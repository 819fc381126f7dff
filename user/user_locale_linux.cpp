#include <sys/stat.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/ures.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "system/files.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

constexpr std::size_t longestSetting = 65536;

// The variables that say how dates are written, the strongest first.
constexpr std::array<std::string_view, 3> variables = {"LC_ALL", "LC_TIME", "LANG"};

// The value of `name` in a file of shell assignments; empty when it has none.
std::string assignedIn(std::string_view file, std::string_view name) {
  std::string value;
  while (!file.empty()) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    std::string_view line = file.substr(0, end);
    file.remove_prefix(std::min(end + 1, file.size()));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (line.starts_with("export ")) line.remove_prefix(7);
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with('=')) continue;
    line.remove_prefix(name.size() + 1);
    line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    const bool quoted = line.size() >= 2 && (line[0] == '"' || line[0] == '\'') && line.back() == line[0];
    value = quoted ? line.substr(1, line.size() - 2) : line;
  }
  return value;
}

// The POSIX name of the user's locale, such as de_DE.UTF-8; empty when none is set.
std::string localeName() {
  for (const std::string_view variable : variables) {
    const char* value = std::getenv(variable.data());
    if (value != nullptr && *value != '\0') return value;
  }
  for (const std::string_view path : {"/etc/locale.conf", "/etc/default/locale"}) {
    ByteBuffer buffer;
    const std::optional<std::string_view> settings = readFile(path, {}, buffer, longestSetting);
    if (!settings) continue;
    for (const std::string_view variable : variables) {
      if (std::string value = assignedIn(*settings, variable); !value.empty()) return value;
    }
  }
  return {};
}

// POSIX names a script by a modifier; the other modifiers, such as euro, mean nothing to a date.
std::string_view scriptOf(std::string_view modifier) {
  constexpr std::pair<std::string_view, std::string_view> scripts[] = {
      {"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}};
  for (const auto& [name, script] : scripts) {
    if (modifier == name) return script;
  }
  return {};
}

// Whether ICU has words of its own for the language.
bool isKnown(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  ures_close(ures_open(nullptr, locale.getLanguage(), &status));
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  return U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING && *locale.getLanguage() != '\0';
}

// The time zone as the C library has it: TZ with all that POSIX allows in it, otherwise the system's setting.
// Its zone files are kept up to date with the system; the zones in ICU's own data are as old as ICU is.
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
                         std::uint8_t, std::int32_t milliseconds, UErrorCode& /*status*/) const override {
    using namespace std::chrono;
    const int astronomical = era == icu::GregorianCalendar::AD ? year : 1 - year;
    const sys_days date = std::chrono::year(astronomical) /
                          std::chrono::month(static_cast<unsigned>(month + 1)) /
                          std::chrono::day(static_cast<unsigned>(day));
    const auto moment = static_cast<UDate>(std::chrono::milliseconds(date.time_since_epoch()).count());
    return offsetAt(moment + milliseconds - offsetAt(moment + milliseconds));
  }
  std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                         std::uint8_t dayOfWeek, std::int32_t milliseconds, std::int32_t /*monthLength*/,
                         UErrorCode& status) const override {
    return getOffset(era, year, month, day, dayOfWeek, milliseconds, status);
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

// The C library would wait for a pipe there.
bool isSettingRegular() {
  struct stat state;
  return stat("/etc/localtime", &state) == 0 && S_ISREG(state.st_mode);
}

}  // namespace

std::string userLocale() {
  constexpr const char* english = "en_US";
  const std::string name = localeName();
  const std::size_t end = std::min(name.find_first_of(".@"), name.size());
  const std::string plain = name.substr(0, end);
  const std::size_t at = name.find('@');
  const std::string_view script =
      at == std::string::npos ? "" : scriptOf(std::string_view(name).substr(at + 1));
  if (plain.empty() || plain == "C" || plain == "POSIX") return english;

  std::string identifier = plain;
  if (!script.empty()) {
    const std::size_t language = std::min(plain.find('_'), plain.size());
    identifier = plain.substr(0, language).append("_").append(script).append(plain.substr(language));
  }
  const icu::Locale locale(identifier.c_str());
  return isKnown(locale) ? locale.getName() : english;
}

bool userLocaleTellsDotlessI() {
  const std::string locale = userLocale();
  const std::string_view language = std::string_view(locale).substr(0, locale.find('_'));
  return language == "tr" || language == "az";
}

std::unique_ptr<icu::TimeZone> userTimeZone() {
  std::unique_ptr<icu::TimeZone> zone;
  if (std::getenv("TZ") == nullptr && !isSettingRegular()) {
    zone.reset(icu::TimeZone::getGMT()->clone());
  } else {
    tzset();  // reads the settings again
    zone = std::make_unique<SystemTimeZone>();
  }
  if (!zone) throw std::bad_alloc();  // ICU's classes have a new of their own, which answers with null
  return zone;
}

}  // namespace halvane
