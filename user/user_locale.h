#pragma once

// The user's language and country, for dates.

#include <optional>
#include <string>

namespace halvane {

/// The user's locale as it is set now, as an ICU identifier such as de_DE or sr_Latn_RS. English (United
/// States), en_US, when none is set, for C and POSIX, and for any unknown locale.
std::string userLocale();

/// The setting for the user's locale, unchanged, when ICU doesn't know that locale and English takes its
/// place; nothing when it is known, when none is set, and for C and POSIX. It may contain any bytes.
std::optional<std::string> unknownLocale();

/// Whether the user's locale is one that tells dotted and dotless i apart: Turkish and Azerbaijani.
bool userLocaleTellsDotlessI();

}  // namespace halvane
