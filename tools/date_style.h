#pragma once

// How all three tools show a date.

#include "user/date_words.h"

namespace halvane {

/// How the tools show an entry's date: abbreviated date and short time in the user's own locale, calendar and
/// time zone. It stores nothing, so a change of the user's settings shows at the next call.
struct DateStyle {
  /// The words for the dates of one tool call, by the settings of this moment.
  DateWords words() const { return DateWords(); }
};

inline constexpr DateStyle dateStyle;

}  // namespace halvane
