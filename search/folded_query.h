#pragma once

// A query as the search compares it.

#include <array>
#include <string>
#include <string_view>

#include "search/segments.h"

namespace halvane {

/// A value that no text folds to.
inline constexpr char32_t noUnit = 0xFFFFFFFF;

struct FoldedQuery {
  /// Of `query`, UTF-8, not empty.
  FoldedQuery(std::string_view query, LetterI letterI);

  /// How many units a match has.
  std::size_t count() const { return units.size() - 1; }

  LetterI letterI;
  std::u32string units;                   // with noUnit after the last one
  std::array<char32_t, 0x80> asciiUnits;  // what each ASCII character folds to
};

}  // namespace halvane
