#pragma once

// The search for a text in others: the way into this room. docs/search.md tells how it works.
//
// ICU has a search of its own, StringSearch. It compares collation keys, so that what counts as equal is a
// matter of a language's sorting order and not of case folding; it takes UTF-16, and so a copy of every body;
// and it has no filter that would rule out most of a journal at the speed of memory.

#include <memory>
#include <optional>
#include <string_view>

#include "search/segments.h"
#include "search/text_match.h"

namespace halvane {

/// One query, made ready to be found in many bodies without regard to letter case: by full case folding and
/// canonical equivalence (Unicode, definition D145), so that straße is found in STRASSE and é composed in é
/// decomposed. Marks count: e is not found in é. A match begins and ends between two characters of the body
/// that may be parted, never inside what one character folds to (s is not found in the single ß), nor in
/// front of a character that continues the one before it: Grapheme_Extend, Emoji_Modifier, or one that can
/// compose with what precedes it.
class TextSearch {
 public:
  /// Looks for `query`, UTF-8, not empty; may hold NULs. The text is not kept.
  TextSearch(std::string_view query, LetterI letterI);
  ~TextSearch();
  TextSearch(TextSearch&&) noexcept;
  TextSearch& operator=(TextSearch&&) noexcept;

  /// The first match in `body`, UTF-8; nothing when there is none. Takes time linear in the body's length,
  /// whatever query and body are.
  std::optional<TextMatch> find(std::string_view body) const;

 private:
  struct Query;

  std::unique_ptr<Query> query_;
};

}  // namespace halvane
