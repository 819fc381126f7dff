#include "user/dates.h"

#include <unicode/calendar.h>

#include <limits>
#include <memory>
#include <new>

#include "user/user_locale.h"

namespace halvane {
namespace {

using std::chrono::days;
using std::chrono::milliseconds;

// Reads the fixed places of a date-time. What is no digit where one is due, or another sign than the form
// has, makes the whole reading fail.
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
  void sign(std::size_t at, char expected) { fits_ = fits_ && text_[at] == expected; }
  bool fits() const { return fits_; }

 private:
  std::string_view text_;
  bool fits_ = true;
};

// The days from 1970-01-01 to a day of the Julian calendar. The year is taken to begin in March, so that the
// leap day comes last.
days fromJulian(int year, int month, int day) {
  const int january = month <= 2 ? 1 : 0;
  const int years = year + 4800 - january;
  const int months = month + 12 * january - 3;
  return days(day + (153 * months + 2) / 5 + 365 * years + years / 4 - 2472671);
}

// The days from 1970-01-01 to a date in the calendar that people used: Julian to 4 October 1582, Gregorian
// from the next day on, which was the 15th. Nothing for a day that never was.
std::optional<days> fromDate(int year, int month, int day) {
  using namespace std::chrono;
  const auto date = [=](int inYear) {
    return year_month_day{std::chrono::year{inYear}, std::chrono::month{static_cast<unsigned>(month)},
                          std::chrono::day{static_cast<unsigned>(day)}};
  };
  if (date(year) >= 1582y / October / 15) {
    if (!date(year).ok()) return std::nullopt;
    return sys_days(date(year)).time_since_epoch();
  }
  if (date(year) > 1582y / October / 4 || !date(2000 + year % 4).ok()) return std::nullopt;
  return fromJulian(year, month, day);
}

}  // namespace

Instant now() {
  return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
}

std::optional<Instant> daysBefore(Instant moment, std::int64_t count) {
  if (count < 0 || count > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  const auto whole = std::chrono::floor<milliseconds>(moment);  // a calendar counts in these
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::Calendar> calendar(
      icu::Calendar::createInstance(*userTimeZone(), icu::Locale(userLocale().c_str()), status));
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(status)) return std::nullopt;
  calendar->setTime(static_cast<UDate>(whole.time_since_epoch().count()), status);
  calendar->add(UCAL_DATE, -static_cast<std::int32_t>(count), status);
  const UDate before = calendar->getTime(status);
  if (U_FAILURE(status)) return std::nullopt;
  return Instant(milliseconds(static_cast<std::int64_t>(before))) + (moment - whole);
}

std::optional<Instant> parseInternetDateTime(std::string_view text) {
  constexpr std::size_t zoneAt = 19;
  const bool utc = text.size() == zoneAt + 1 && text[zoneAt] == 'Z';
  if (!utc && text.size() != zoneAt + 6) return std::nullopt;

  FixedForm form(text);
  const int year = form.number(0, 4);
  form.sign(4, '-');
  const int month = form.number(5, 2);
  form.sign(7, '-');
  const int day = form.number(8, 2);
  form.sign(10, 'T');
  const int hour = form.number(11, 2);
  form.sign(13, ':');
  const int minute = form.number(14, 2);
  form.sign(16, ':');
  const int second = form.number(17, 2);
  int offset = 0;  // minutes east of Greenwich
  if (!utc) {
    const bool west = text[zoneAt] == '-';
    form.sign(zoneAt, west ? '-' : '+');
    const int hours = form.number(20, 2);
    form.sign(22, ':');
    const int minutes = form.number(23, 2);
    if (hours > 23 || minutes > 59) return std::nullopt;
    offset = (west ? -1 : 1) * (hours * 60 + minutes);
  }
  if (!form.fits() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  const std::optional<days> date = fromDate(year, month, day);
  if (!date) return std::nullopt;
  return Instant(*date + std::chrono::hours(hour) + std::chrono::minutes(minute - offset) +
                 std::chrono::seconds(second));
}

}  // namespace halvane
