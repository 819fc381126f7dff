#pragma once

// What of a text may go to a terminal.

#include <string>
#include <string_view>

namespace halvane {

/// `text` (raw bytes) as UTF-8 that a terminal only shows: U+FFFD stands in place of bytes that are not UTF-8
/// and of each code point that controls, formats or ends a line, or has no meaning that everybody knows
/// (general categories Cc, Cf, Zl, Zp, Cs, Co, Cn). U+200C and U+200D stay: Persian words and emoji need
/// them, and they move nothing but their neighbours.
std::string printable(std::string_view text);

}  // namespace halvane
