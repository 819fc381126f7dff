#pragma once

// The user's moments and time zone as ICU takes them; only the files of this room include it.

#include <unicode/timezone.h>

#include <chrono>
#include <memory>

#include "user/dates.h"

namespace halvane {

/// `moment` as ICU counts: whole milliseconds since 1970-01-01T00:00:00Z, rounded down.
inline UDate icuDate(Instant moment) {
  const auto whole = std::chrono::floor<std::chrono::milliseconds>(moment);
  return static_cast<UDate>(whole.time_since_epoch().count());
}

/// The user's time zone as it is set now, looked up at each call; the caller owns it. UTC when none is set.
std::unique_ptr<icu::TimeZone> userTimeZone();

}  // namespace halvane
