#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "search/byte_set.h"

namespace halvane {

/// Finds the places in a body where a match of one query is possible at all, by looking at two of its bytes
/// for every place, sixteen places at once. Nearly every place of nearly every body is ruled out by that, at
/// the speed of memory; only what is left needs the exact comparison.
///
/// It looks for the seam between two neighbouring letters of the query. Whatever forms the two take in a body
/// (capital or small, composed or not, the Kelvin sign for a k), the last byte of the first one's form stands
/// right before the first byte of the second one's. Not used are a seam that may lie inside one code point,
/// such as the one of ss, which may be ß, and letters whose forms are not known for certain, as are some with
/// marks.
class SearchFilter {
 public:
  /// The filter for a query, given as the code points that it folds to (foldingOf); nothing when there is no
  /// place in it that would be safe to look for. `turkic` when dotted and dotless i are told apart.
  static std::optional<SearchFilter> forQuery(std::u32string_view units, bool turkic);

  /// The units of the query in front of the seam.
  std::size_t unitsBefore() const { return unitsBefore_; }

  class Places;

 private:
  ByteSet here_;   // the byte in front of the seam
  ByteSet there_;  // the byte `distance_` places behind that
  std::size_t distance_ = 0;
  std::size_t unitsBefore_ = 0;
};

/// The possible places in one body, one after the other.
class SearchFilter::Places {
 public:
  /// By `filter`, in `body`; both must outlive this.
  Places(const SearchFilter& filter, std::string_view body) : filter_(filter), body_(body) {}

  /// The next possible place: the seam lies behind the byte there. std::string_view::npos when there are no
  /// more.
  std::size_t next();

 private:
  std::size_t nextByByte();

  const SearchFilter& filter_;
  std::string_view body_;
  std::size_t at_ = 0;       // where the step begins that is being looked at
  std::uint64_t found_ = 0;  // the places in it that were not yet handed out, as bits
};

}  // namespace halvane
