#pragma once

// What turns ICU's errors, lengths and normaliser into ours.

#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/utypes.h>

#include <cstdint>
#include <string_view>

namespace halvane {

/// Throws std::bad_alloc where `status` is a failure. ICU's data is linked in and the arguments are valid, so
/// a call can only fail for lack of memory.
void check(UErrorCode status);

/// The length of `text` in bytes, as ICU counts. Throws std::bad_alloc for 2 GiB and more, which it can't.
std::int32_t icuLength(std::string_view text);

/// `text` as ICU takes it; the bytes are not copied. Throws like icuLength.
icu::StringPiece icuPiece(std::string_view text);

/// ICU's normaliser for Normalization Form C, which knows every decomposition as well. It is ICU's own, for
/// the life of the program.
const icu::Normalizer2& icuNfc();

}  // namespace halvane
