#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "search/segments.h"

namespace halvane {

/// Where a match stands in the body: bytes [begin, end) of it.
struct TextMatch {
  std::size_t begin;
  std::size_t end;
};

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
