#pragma once

// Every way in which a letter of a query may be written.

#include <string_view>
#include <vector>

namespace halvane {

/// The code points by which a letter of a query may stand in a body.
struct LetterForms {
  std::vector<char32_t> first;  ///< what it may begin with
  std::vector<char32_t> last;   ///< what it may end with
};

/// The forms of `letter`, a folded starter with the marks after it (see foldingOf), such as k: k, K and the
/// Kelvin sign. Empty when they are not known for certain. They are all that there are where neither
/// neighbour in the query may share a code point with it.
LetterForms formsOf(std::u32string_view letter);

/// Whether there is a code point that folds to `left` with `right` right after it, so that one character of
/// the body may stand for both: ß for ss, ﬁ for fi.
bool mayShareCodePoint(char32_t left, char32_t right);

/// The code points that stand for `left`, `right` and perhaps more: those that fold to a text which begins so
/// are the `first`, those of which it is the end the `last`. Not for an iota on the right, of which every
/// vowel with an iota subscript would be one.
LetterForms formsOfPair(char32_t left, char32_t right);

}  // namespace halvane
