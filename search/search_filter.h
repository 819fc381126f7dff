#pragma once

// Which two bytes to look for, to rule out nearly all of a body.

#include <cstddef>
#include <optional>
#include <string_view>

#include "search/byte_set.h"

namespace halvane {

/// The values that two bytes of a body must have where a match of one query is possible.
///
/// The two bytes are on both sides of the seam between two neighbouring letters of the query. Whatever forms
/// the letters have in a body (capital or small, composed or not, the Kelvin sign for a k), the last byte of
/// the left form is right before the first byte of the right form. A filter doesn't use a seam that may be
/// inside one code point, such as that of ss, which may be ß, or letters whose forms are not known for
/// certain, such as some with marks. For a query of one letter, the two are the last bytes of its forms, and
/// the seam is after them. Where a form has only one byte, both are that byte. A filter may also use only the
/// last byte of one letter of a longer query; then, too, both are that byte.
struct SearchFilter {
  ByteSet first;
  ByteSet second;               // the byte `distance` places after the first one
  std::size_t distance = 0;     // 0 when both are the same byte
  std::size_t seam = 1;         // how many places after the first byte the seam is
  std::size_t unitsBefore = 0;  // the units of the query before the seam

  /// The filter for a query, given as the code points that it folds to (foldingOf); nothing when the query
  /// has no safe seam and no safe letter. `turkic` when dotted and dotless i are different letters.
  static std::optional<SearchFilter> forQuery(std::u32string_view units, bool turkic);
};

}  // namespace halvane
