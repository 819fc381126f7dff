#pragma once

// Whether bytes are UTF-8, and what to make of them when they are not.

#include <string>
#include <string_view>

namespace halvane {

/// Whether `bytes` are well-formed UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing past U+10FFFF.
/// We don't use ICU for this: it can only convert the text, or go from one code point to the next, which
/// would make reading a journal take half as long again. A library for this purpose, simdutf, is not in
/// Debian 12.
bool isUtf8(std::string_view bytes);

/// `bytes` with U+FFFD in place of each maximal ill-formed sequence (Unicode, section 3.9, "Substitution of
/// Maximal Subparts"); well-formed text comes back as it is.
std::string repairUtf8(std::string_view bytes);

/// `text` without a byte-order mark (U+FEFF) at its start; a view of the same bytes.
std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace halvane
