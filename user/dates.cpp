#include "user/dates.h"

#include <unicode/calendar.h>
#include <unicode/gregocal.h>

#include <limits>
#include <memory>

#include "text/icu.h"
#include "user/icu_dates.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

using std::chrono::days;
using std::chrono::milliseconds;

// Reads the fixed places of a date-time. If a digit is missing, or another character is in place of a fixed
// one, the whole reading fails.
class FixedForm {
 public:
  explicit FixedForm(std::string_view text) : text_(text) {}

  int number(std::size_t at, std::size_t places) {
    int value = 0;
    for (std::size_t end = at + places; at < end; ++at) {
      const int digit = text_[at] - '0';
      fits_ = fits_ && digit >= 0 && digit <= 9;
      value = value * 10 + digit;
    }
    return value;
  }
  void character(std::size_t at, char expected) { fits_ = fits_ && text_[at] == expected; }
  bool fits() const { return fits_; }

 private:
  std::string_view text_;
  bool fits_ = true;
};

// To copy a calendar is much faster than to make a new one.
const icu::GregorianCalendar& emptyCalendar() {
  static const icu::GregorianCalendar empty = [] {
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getRoot(), status);
    check(status);
    calendar.clear();
    return calendar;
  }();
  return empty;
}

bool isSameDay(const icu::Calendar& calendar, int year, int month, int day, UErrorCode& status) {
  return calendar.get(UCAL_EXTENDED_YEAR, status) == year && calendar.get(UCAL_MONTH, status) == month - 1 &&
         calendar.get(UCAL_DATE, status) == day;
}

// The same as daysTo, for a day before 15 October 1582: by ICU's calendar, which knows the change of
// calendars. It takes a day that doesn't exist for another one.
std::optional<days> daysToEarly(int year, int month, int day) {
  UErrorCode status = U_ZERO_ERROR;
  icu::GregorianCalendar calendar = emptyCalendar();
  calendar.set(UCAL_EXTENDED_YEAR, year);  // in which 0 is the year before 1
  calendar.set(UCAL_MONTH, month - 1);
  calendar.set(UCAL_DATE, day);
  const UDate midnight = calendar.getTime(status);
  const bool was = isSameDay(calendar, year, month, day, status);
  check(status);
  if (!was) return std::nullopt;
  return std::chrono::floor<days>(milliseconds(static_cast<std::int64_t>(midnight)));
}

// The days from 1970-01-01 to a date in the calendar that people used: Julian to 4 October 1582, Gregorian
// from the next day on, which was the 15th. Nothing for a day that doesn't exist.
std::optional<days> daysTo(int year, int month, int day) {
  using namespace std::chrono;
  const year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                            std::chrono::day{static_cast<unsigned>(day)}};
  if (date < 1582y / October / 15) return daysToEarly(year, month, day);
  if (!date.ok()) return std::nullopt;
  return sys_days(date).time_since_epoch();
}

}  // namespace

Instant now() {
  return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
}

std::chrono::seconds utcOffset(Instant moment) {
  std::int32_t raw = 0;
  std::int32_t savings = 0;
  UErrorCode status = U_ZERO_ERROR;
  userTimeZone()->getOffset(icuDate(moment), 0, raw, savings, status);
  check(status);
  return std::chrono::floor<std::chrono::seconds>(milliseconds(raw + savings));
}

std::optional<Instant> daysBefore(Instant moment, std::int64_t count) {
  if (count < 0 || count > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::TimeZone> zone = userTimeZone();
  const icu::Locale locale(userLocale().c_str());
  // Without a default locale and time zone, ICU looks for them itself, and may wait or fail.
  icu::Locale::setDefault(locale, status);
  icu::TimeZone::setDefault(*zone);
  const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(*zone, locale, status));
  if (status == U_MEMORY_ALLOCATION_ERROR) check(status);
  if (U_FAILURE(status)) return std::nullopt;
  calendar->setTime(icuDate(moment), status);
  calendar->add(UCAL_DATE, -static_cast<std::int32_t>(count), status);
  const UDate before = calendar->getTime(status);
  if (U_FAILURE(status)) return std::nullopt;
  const auto belowMilliseconds = moment - std::chrono::floor<milliseconds>(moment);
  return Instant(milliseconds(static_cast<std::int64_t>(before))) + belowMilliseconds;
}

std::optional<Instant> parseInternetDateTime(std::string_view text) {
  constexpr std::size_t zoneAt = 19;
  const bool utc = text.size() == zoneAt + 1 && text[zoneAt] == 'Z';
  if (!utc && text.size() != zoneAt + 6) return std::nullopt;

  FixedForm form(text);
  const int year = form.number(0, 4);
  form.character(4, '-');
  const int month = form.number(5, 2);
  form.character(7, '-');
  const int day = form.number(8, 2);
  form.character(10, 'T');
  const int hour = form.number(11, 2);
  form.character(13, ':');
  const int minute = form.number(14, 2);
  form.character(16, ':');
  const int second = form.number(17, 2);
  int offset = 0;  // minutes east of Greenwich
  if (!utc) {
    const bool west = text[zoneAt] == '-';
    form.character(zoneAt, west ? '-' : '+');
    const int hours = form.number(20, 2);
    form.character(22, ':');
    const int minutes = form.number(23, 2);
    if (hours > 23 || minutes > 59) return std::nullopt;
    offset = (west ? -1 : 1) * (hours * 60 + minutes);
  }
  if (!form.fits() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  const std::optional<days> date = daysTo(year, month, day);
  if (!date) return std::nullopt;
  return Instant(*date + std::chrono::hours(hour) + std::chrono::minutes(minute - offset) +
                 std::chrono::seconds(second));
}

}  // namespace halvane
