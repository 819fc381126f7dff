#pragma once

// In which language, and by which country's customs, the user reads.

#include <optional>
#include <string>

namespace halvane {

/// The user's locale as it is set at this moment, as an ICU identifier such as de_DE or sr_Latn_RS. English
/// (United States), en_US, when none is set, for C and POSIX, and for one that nobody knows, whatever its
/// name holds and however long it is.
std::string userLocale();

/// The setting for the user's locale as it stands, when nobody knows it and English is taken in its place;
/// nothing when it is known, when none is set, and for C and POSIX. It may hold any bytes.
std::optional<std::string> unknownLocale();

/// Whether the user's locale is one that tells dotted and dotless i apart: Turkish and Azerbaijani.
bool userLocaleTellsDotlessI();

}  // namespace halvane
