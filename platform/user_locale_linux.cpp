#include <unicode/locid.h>
#include <unicode/simpletz.h>
#include <unicode/ures.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/files.h"
#include "platform/user_locale.h"

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

// The zone that ICU's own data hold under the name `id`, with its history; nothing when they don't know it.
// Names that ICU would make up, such as GMT+3, are left to POSIX, where the sign is the other way round.
std::unique_ptr<icu::TimeZone> namedZone(std::string_view id) {
  for (const std::string_view variant : {"posix/", "right/"}) {
    if (id.starts_with(variant)) id.remove_prefix(variant.size());
  }
  const auto name = icu::UnicodeString::fromUTF8({id.data(), static_cast<std::int32_t>(id.size())});
  icu::UnicodeString canonical;
  UBool isSystem = false;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(name, canonical, isSystem, status);
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(status) || !isSystem) return nullptr;
  return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(name));
}

// The part of a zone file's path behind the folder of all zones.
std::unique_ptr<icu::TimeZone> zoneOfPath(std::string_view path) {
  constexpr std::string_view folder = "zoneinfo/";
  const std::size_t at = path.find(folder);
  return at == std::string_view::npos ? nullptr : namedZone(path.substr(at + folder.size()));
}

// Reads a rule such as CET-1CEST,M3.5.0,M10.5.0/3 (POSIX, "TZ"), in which offsets count westwards.
class ZoneRule {
 public:
  explicit ZoneRule(std::string_view rule) : rest_(rule) {}

  std::unique_ptr<icu::TimeZone> zone() {
    if (!skipName()) return nullptr;
    const std::int32_t standard = -time();
    auto zone = std::make_unique<icu::SimpleTimeZone>(standard, icu::UnicodeString("local"));
    if (fits_ && !rest_.empty()) readSaving(standard, *zone);
    return fits_ ? std::move(zone) : nullptr;
  }

 private:
  static constexpr std::int32_t second = 1000;
  static constexpr std::int32_t hour = 3600 * second;

  void readSaving(std::int32_t standard, icu::SimpleTimeZone& zone) {
    fits_ = skipName();
    const std::int32_t saving = rest_.empty() || rest_[0] == ',' ? standard + hour : -time();
    if (rest_.empty()) rest_ = ",M3.2.0,M11.1.0";  // what the C library takes where a rule names no days
    UErrorCode status = U_ZERO_ERROR;
    const Change start = change();
    const Change end = change();
    fits_ = fits_ && rest_.empty() && saving != standard;
    if (!fits_) return;
    zone.setDSTSavings(saving - standard, status);
    zone.setStartRule(start.month, start.week, start.day, start.time, status);
    zone.setEndRule(end.month, end.week, end.day, end.time, status);
    fits_ = U_SUCCESS(status);
  }

  struct Change {
    std::int32_t month, week, day, time;
  };

  // ",Mm.w.d" and "/time" or two o'clock; the fifth week is the last one.
  Change change() {
    fits_ = skip(',') && skip('M') && fits_;
    const std::int32_t month = number() - 1;
    fits_ = skip('.') && fits_;
    const std::int32_t week = number();
    fits_ = skip('.') && fits_;
    const std::int32_t day = number() + 1;
    return {month, week == 5 ? -1 : week, day, skip('/') ? time() : 2 * hour};
  }

  std::int32_t time() {
    const bool negative = skip('-');
    if (!negative) skip('+');
    std::int32_t milliseconds = number() * hour;
    if (skip(':')) milliseconds += number() * 60 * second;
    if (skip(':')) milliseconds += number() * second;
    return negative ? -milliseconds : milliseconds;
  }

  std::int32_t number() {
    std::size_t places = 0;
    std::int32_t value = 0;
    for (; places < std::min<std::size_t>(rest_.size(), 3) && rest_[places] >= '0' && rest_[places] <= '9';
         ++places) {
      value = value * 10 + (rest_[places] - '0');
    }
    fits_ = fits_ && places > 0;
    rest_.remove_prefix(places);
    return value;
  }

  bool skipName() {
    std::size_t length = 0;
    if (rest_.starts_with('<')) {
      length = rest_.find('>') + 1;
    } else {
      while (length < rest_.size() && std::isalpha(static_cast<unsigned char>(rest_[length])) != 0) ++length;
    }
    rest_.remove_prefix(length);
    return length >= 3;
  }

  bool skip(char expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::string_view rest_;
  bool fits_ = true;
};

std::unique_ptr<icu::TimeZone> zoneNamedBy(std::string_view setting) {
  if (setting.starts_with(':')) setting.remove_prefix(1);
  if (auto zone = setting.starts_with('/') ? zoneOfPath(setting) : namedZone(setting)) return zone;
  return ZoneRule(setting).zone();
}

std::unique_ptr<icu::TimeZone> systemZone() {
  std::array<char, 4096> target;
  const ssize_t size = readlink("/etc/localtime", target.data(), target.size());
  if (size > 0) {
    if (auto zone = zoneOfPath({target.data(), static_cast<std::size_t>(size)})) return zone;
  }
  ByteBuffer buffer;
  if (const auto name = readFile("/etc/timezone", {}, buffer, longestSetting)) {
    if (auto zone = namedZone(name->substr(0, name->find_first_of(" \t\n")))) return zone;
  }
  // A zone file ends with a line that holds its present rule (RFC 8536).
  if (const auto file = readFile("/etc/localtime", {}, buffer, longestSetting);
      file && file->ends_with('\n')) {
    const std::string_view lines = file->substr(0, file->size() - 1);
    return ZoneRule(lines.substr(lines.rfind('\n') + 1)).zone();
  }
  return nullptr;
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
  const char* setting = std::getenv("TZ");
  std::unique_ptr<icu::TimeZone> zone = setting != nullptr ? zoneNamedBy(setting) : systemZone();
  return zone ? std::move(zone) : std::unique_ptr<icu::TimeZone>(icu::TimeZone::getGMT()->clone());
}

}  // namespace halvane
