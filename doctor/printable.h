#pragma once

// Makes a text safe to print to a terminal.

#include <string>
#include <string_view>

namespace halvane {

/// `text` (raw bytes) as UTF-8 that can't control a terminal. U+FFFD takes the place of bytes that are not
/// UTF-8 and of each code point that controls or formats text, ends a line, or has no assigned meaning
/// (general categories Cc, Cf, Zl, Zp, Cs, Co, Cn). U+200C and U+200D stay: Persian words and emoji need
/// them, and they move nothing but their neighbours.
std::string printable(std::string_view text);

}  // namespace halvane
