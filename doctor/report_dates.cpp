#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "doctor/date_line.h"
#include "doctor/report_sections.h"
#include "user/dates.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// The distance of the user's clocks from UTC at `moment`, such as UTC+01:00.
std::string offsetInWords(Instant moment) {
  const auto minutes = static_cast<int>(utcOffset(moment) / std::chrono::minutes(1));
  std::array<char, 32> text;
  const int length = std::snprintf(text.data(), text.size(), "UTC%c%02d:%02d", minutes < 0 ? '-' : '+',
                                   std::abs(minutes) / 60, std::abs(minutes) % 60);
  return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace

void describeDates(Page& page) {
  const Instant present = now();
  page.heading("How dates are shown");
  page.line("Now it is " + dateInWords(present) + ".");
  const std::string offset = offsetInWords(present);
  page.line("The locale is " + userLocale() + ", the time zone " + offset + ".");
  if (const auto locale = unknownLocale())
    page.attention("The locale " + *locale + " is unknown: dates are shown in English.");
  if (const auto zone = unknownTimeZone())
    page.attention("The time zone " + *zone + " is unknown: dates are shown in " + offset + ".");
}

}  // namespace halvane
