#pragma once

// The places in a body that a filter leaves.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "search/search_filter.h"

namespace halvane {

/// The places in one body where a match of one query is possible, one after the other. Two bytes rule out
/// nearly every place of nearly every body, many places at once, at the speed of memory. Only the other
/// places need a comparison.
class PossiblePlaces {
 public:
  /// The places that pass `filter` in `body`. Both must outlive this.
  PossiblePlaces(const SearchFilter& filter, std::string_view body) : filter_(filter), body_(body) {}

  /// The next possible place: the seam lies right after the byte there. Places near the end may come twice.
  /// std::string_view::npos when there are no more.
  std::size_t next();

 private:
  std::size_t nextByByte();

  const SearchFilter& filter_;
  std::string_view body_;
  std::size_t at_ = 0;       // where the current step begins
  std::uint64_t found_ = 0;  // the places in it that next() has yet to return, as bits
};

}  // namespace halvane
