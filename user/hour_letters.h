#pragma once

// The hours in a date pattern, the language of letters in which Unicode's locale data say how dates are
// written (UTS #35).

#include <string>
#include <string_view>

namespace halvane {

/// The first letter of `pattern`, UTF-8, that stands for the hour: h, H, k or K. NUL when none does.
char hourLetter(std::string_view pattern);

/// `pattern`, UTF-8, with every hour at its shortest: 9:14, even if the locale would write 09:14.
std::string withShortHours(std::string_view pattern);

}  // namespace halvane
