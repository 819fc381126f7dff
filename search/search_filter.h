#pragma once

// What to look for in a body so as to rule out nearly all of it.

#include <cstddef>
#include <optional>
#include <string_view>

#include "search/byte_set.h"

namespace halvane {

/// What two bytes of a body must be where a match of one query is possible at all.
///
/// They stand around the seam between two neighbouring letters of the query. Whatever forms the two take in a
/// body (capital or small, composed or not, the Kelvin sign for a k), the last byte of the first one's form
/// stands right before the first byte of the second one's. Not used are a seam that may lie inside one code
/// point, such as the one of ss, which may be ß, and letters whose forms are not known for certain, as are
/// some with marks.
struct SearchFilter {
  ByteSet beforeSeam;           // the byte in front of the seam
  ByteSet afterSeam;            // the byte `distance` places after that one
  std::size_t distance = 0;     // 0 where the query has no second letter to look at: both are the same byte
  std::size_t unitsBefore = 0;  // the units of the query in front of the seam

  /// The filter for a query, given as the code points that it folds to (foldingOf); nothing when there is no
  /// place in it that would be safe to look for. `turkic` when dotted and dotless i are told apart.
  static std::optional<SearchFilter> forQuery(std::u32string_view units, bool turkic);
};

}  // namespace halvane
