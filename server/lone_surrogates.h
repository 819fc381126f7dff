#pragma once

// Repairs texts that were cut in the middle of an emoji.

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// A copy of the JSON text `json` with \ufffd in place of every escaped surrogate that has no partner: a high
/// one (\ud800 to \udbff) without a low one (\udc00 to \udfff) right after it, or a low one without a high
/// one before it. UTF-16 writes an emoji as a pair of surrogates, and a cut between them leaves one alone.
/// The grammar of JSON (RFC 8259, section 8.2) allows that, but UTF-8 can't express it. Nothing when there is
/// none to replace.
std::optional<std::string> withoutLoneSurrogates(std::string_view json);

}  // namespace halvane
