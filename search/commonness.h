#pragma once

// How often bytes and letters come in what people write, roughly and over all languages. It only decides
// which of the safe places is looked for: a wrong number costs time, never a match.

#include <string_view>

#include "search/byte_set.h"

namespace halvane {

/// How many of a thousand bytes are in the set.
unsigned commonness(const ByteSet& set);

/// Whether `letters` are two that like to stand together: both are found side by side more often than each of
/// them promises.
bool areOftenTogether(std::u32string_view letters);

}  // namespace halvane
