#pragma once

#include <memory>
#include <string>

#include <unicode/timezone.h>

namespace halvane {

/// The user's locale as it is set at this moment, as an ICU identifier such as de_DE or sr_Latn_RS. English
/// (United States), en_US, when none is set, for C and POSIX, and for a language that nobody knows.
std::string userLocale();

/// Whether the user's locale is one that tells dotted and dotless i apart: Turkish and Azerbaijani.
bool userLocaleTellsDotlessI();

/// The user's time zone as it is set at this moment, looked up anew at each call; the caller owns it. UTC
/// when none is set.
std::unique_ptr<icu::TimeZone> userTimeZone();

}  // namespace halvane
