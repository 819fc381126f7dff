#pragma once

// The letters of a query, and the forms that each may have in a body.

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "search/letter_forms.h"

namespace halvane {

/// The letters of a query: starters with the marks or vowels that can't be parted from them.
class QueryLetters {
 public:
  /// The letters of the query that folds to `units` (foldingOf), which must outlive this. `turkic` when
  /// dotted and dotless i are different letters.
  QueryLetters(std::u32string_view units, bool turkic);

  std::size_t count() const { return ends_.size(); }
  /// Where the letter at `index` begins and ends, in units.
  std::size_t begin(std::size_t index) const { return index == 0 ? 0 : ends_[index - 1]; }
  std::size_t end(std::size_t index) const { return ends_[index]; }
  /// The units from one letter to another, both included.
  std::u32string_view units(std::size_t first, std::size_t last) const {
    return units_.substr(begin(first), end(last) - begin(first));
  }

  /// The code points with which the letter at `index` may end, if the next letter begins with another code
  /// point. Empty when they are not known for certain.
  std::vector<char32_t> lastForms(std::size_t index);
  /// The code points with which it may begin, if the letter before it ends with another code point. Empty
  /// when they are not known for certain.
  std::vector<char32_t> firstForms(std::size_t index);

  /// Whether one code point may be part of the letter at `index` and of the next one.
  bool shareCodePoint(std::size_t index) const;

 private:
  const LetterForms& known(std::size_t index);
  std::vector<char32_t> withShared(const std::vector<char32_t>& shared, std::size_t index,
                                   std::vector<char32_t> forms) const;

  std::u32string_view units_;
  bool turkic_;
  std::vector<std::size_t> ends_;
  std::map<std::u32string_view, LetterForms> known_;
};

}  // namespace halvane
