#pragma once

// Moments, their form in an entry file, and the user's calendar days and clock.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// A moment, the same one everywhere: microseconds since 1970-01-01T00:00:00Z without leap seconds.
using Instant = std::chrono::sys_time<std::chrono::microseconds>;

/// The present moment.
Instant now();

/// How far the user's clocks are ahead of UTC at `moment`, in the time zone that is set now; negative in the
/// west.
std::chrono::seconds utcOffset(Instant moment);

/// The setting for the user's time zone, unchanged, when the system doesn't know that zone and UTC takes its
/// place; nothing when it is known or none is set. It may contain any bytes.
std::optional<std::string> unknownTimeZone();

/// The moment `count` calendar days before `moment`, at the same wall-clock time in the user's calendar and
/// time zone as they are now. A time that a change of the clocks skips moves later by the gap. Of a time that
/// occurs twice, the second counts. Nothing when `count` is negative or above 2³¹−1, or when
/// the calendar has no such moment.
std::optional<Instant> daysBefore(Instant moment, std::int64_t count);

/// Reads an internet date-time (RFC 3339): YYYY-MM-DDTHH:MM:SS followed by Z or an offset +HH:MM or -HH:MM,
/// in capitals, whole seconds only. It must name a real day and time, with years from 0000 and offsets up to
/// 23:59; days before 15 October 1582 are days of the Julian calendar. Nothing for any other text.
std::optional<Instant> parseInternetDateTime(std::string_view text);

}  // namespace halvane
