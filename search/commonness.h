#pragma once

// How often bytes and letters occur in what people write, roughly and over all languages. This only decides
// which of the safe seams a filter uses: a wrong number costs time, never a match.

#include <string_view>

#include "search/byte_set.h"

namespace halvane {

/// How many of a thousand bytes are in the set.
unsigned commonness(const ByteSet& set);

/// Whether `letters` are two that often occur together: more often than the commonness of each suggests.
bool areOftenTogether(std::u32string_view letters);

}  // namespace halvane
