#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "search/folding.h"

namespace halvane {

/// How dotted and dotless i are taken: most languages take I and i for one letter; Turkish and Azerbaijani
/// pair I with ı, and İ with i.
enum class LetterI { oneLetter, dottedAndDotless };

inline constexpr Folding dotlessI{{U'ı'}, {}, 1, false};
inline constexpr Folding dottedI{{U'i'}, {}, 1, false};

/// What `character` folds to when it is a whole segment, without marks behind it; valid for the life of the
/// program.
inline const Folding& foldingAlone(char32_t character, LetterI letterI) {
  if (letterI == LetterI::dottedAndDotless && character == U'I') return dotlessI;
  if (letterI == LetterI::dottedAndDotless && character == U'İ') return dottedI;
  return foldingOf(character);
}

/// Folds a text segment by segment. A segment is a code point with those behind it that can't be parted from
/// it (Folding::continues): marks are put into their order only within one.
class SegmentFolder {
 public:
  struct Unit {
    char32_t character;
    std::uint8_t combiningClass;
  };

  explicit SegmentFolder(LetterI letterI) : letterI_(letterI) {}

  /// Folds the segment of `text`, UTF-8, that begins at `position`, which moves behind it. A segment of more
  /// than `most` units comes out as null, however long it is without taking more memory than these. The units
  /// are valid until the next call.
  const std::vector<Unit>* fold(std::string_view text, std::size_t& position, std::size_t most);

 private:
  void append(std::string_view text, std::size_t& position);
  void orderMarks();

  LetterI letterI_;
  std::vector<Unit> units_;
};

}  // namespace halvane
