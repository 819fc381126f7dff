#pragma once

// The pieces of a text that can't be parted, and what each of them folds to.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "search/folding.h"
#include "text/text.h"

namespace halvane {

/// Whether dotted and dotless i are one letter. In most languages, I and i are one letter. Turkish and
/// Azerbaijani pair I with ı, and İ with i.
enum class LetterI { oneLetter, dottedAndDotless };

inline constexpr Folding dotlessI{{U'ı'}, {}, 1, false};
inline constexpr Folding dottedI{{U'i'}, {}, 1, false};

/// What `character` folds to when it is a whole segment, without marks after it; valid for the life of the
/// program.
inline const Folding& foldingAlone(char32_t character, LetterI letterI) {
  if (letterI == LetterI::dottedAndDotless && character == U'I') return dotlessI;
  if (letterI == LetterI::dottedAndDotless && character == U'İ') return dottedI;
  return foldingOf(character);
}

/// Whether a segment of `text` starts at `position`, the start of a code point, or the text ends there. A
/// segment is a code point with those after it that can't be parted from it (Folding::continues).
inline bool startsSegment(std::string_view text, std::size_t position) {
  return position == 0 || position == text.size() || !foldingOf(nextCodePoint(text, position)).continues;
}

/// Whether the byte at `position` is an ASCII character that the next byte shows to be a whole segment.
inline bool isAsciiSegment(std::string_view text, std::size_t position) {
  return isAscii(text[position]) && (position + 1 == text.size() || isAscii(text[position + 1]));
}

/// Folds a text segment by segment, and puts marks in order within each segment.
class SegmentFolder {
 public:
  struct Unit {
    char32_t character;
    std::uint8_t combiningClass;
  };

  explicit SegmentFolder(LetterI letterI) : letterI_(letterI) {}

  /// Folds the segment of `text`, UTF-8, that begins at `position`, which moves past it. Null for a segment
  /// of more than `maxUnits` units, which takes no more memory than these units, however long it is. The
  /// units are valid until the next call.
  const std::vector<Unit>* fold(std::string_view text, std::size_t& position, std::size_t maxUnits);

 private:
  void append(std::string_view text, std::size_t& position);
  void orderMarks();

  LetterI letterI_;
  std::vector<Unit> units_;
};

}  // namespace halvane
