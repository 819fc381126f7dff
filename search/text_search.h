#pragma once

// Searches texts for a query: the entrance to this room. docs/search.md explains how it works.
//
// We don't use ICU's StringSearch. It compares collation keys, so a language's sorting order and not case
// folding decides what is equal. It takes UTF-16, and so a copy of every body. And it has no filter that
// rules out most of a journal at the speed of memory.

#include <memory>
#include <optional>
#include <string_view>

#include "search/segments.h"
#include "search/text_match.h"

namespace halvane {

/// One query, made ready to be found in many bodies in capital or small letters: by full case folding and
/// canonical equivalence (Unicode, definition D145). straße is found in STRASSE, and composed é in decomposed
/// é. Marks count: e is not found in é. A match doesn't begin or end inside what one character folds to (s is
/// not found in the single ß), nor before a character that can't be parted from the one before it:
/// Grapheme_Extend, Emoji_Modifier, or a character that can compose with the one before it.
class TextSearch {
 public:
  /// Looks for `query`: UTF-8, not empty, perhaps with NULs. Doesn't keep the text.
  TextSearch(std::string_view query, LetterI letterI);
  ~TextSearch();
  TextSearch(TextSearch&&) noexcept;

  /// The first match in `body`, UTF-8; nothing when there is none. Takes time linear in the body's length,
  /// for any query and body.
  std::optional<TextMatch> find(std::string_view body) const;

  /// False if no part of `bytes` has a match; true otherwise, and now and then without one. Bytes that are
  /// not UTF-8 match nothing. Takes less time than find, also linear in the length.
  bool mayBeWithin(std::string_view bytes) const;

 private:
  struct Query;

  std::unique_ptr<Query> query_;
};

}  // namespace halvane
