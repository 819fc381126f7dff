#pragma once

#include <string>
#include <string_view>

namespace halvane {

/// Whether `bytes` are well-formed UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing past U+10FFFF.
bool isUtf8(std::string_view bytes);

/// `bytes` with U+FFFD in place of each maximal ill-formed sequence (Unicode, section 3.9, "Substitution of
/// Maximal Subparts"); well-formed text comes back as it is.
std::string repairUtf8(std::string_view bytes);

/// `text` without a byte-order mark (U+FEFF) at its start; a view of the same bytes.
std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace halvane
