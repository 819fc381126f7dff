#pragma once

// Where a match is.

#include <cstddef>

namespace halvane {

/// Bytes [begin, end) of the body.
struct TextMatch {
  std::size_t begin;
  std::size_t end;
};

}  // namespace halvane
