#pragma once

// Every way in which a body may contain a letter of a query.

#include <string_view>
#include <vector>

namespace halvane {

/// The code points with which a body may contain a letter of a query.
struct LetterForms {
  std::vector<char32_t> first;  ///< what it may begin with
  std::vector<char32_t> last;   ///< what it may end with
};

/// The forms of `letter`, a folded starter with the marks after it (see foldingOf), such as k: k, K and the
/// Kelvin sign. Empty when they are not known for certain. They are complete unless a neighbour in the query
/// may share a code point with the letter.
LetterForms formsOf(std::u32string_view letter);

/// Whether one code point may contain both letters: whether any folds to a text with `left` and, right after
/// it, `right`, as ß does for ss and ﬁ for fi.
bool mayShareCodePoint(char32_t left, char32_t right);

/// The code points that contain `left`, then `right`, and perhaps other letters: `first` are those that fold
/// to a text that begins with the two, `last` those that fold to a text that ends with them. Not for an iota
/// on the right, which every vowel with an iota subscript contains.
LetterForms formsOfPair(char32_t left, char32_t right);

}  // namespace halvane
