#pragma once

// What a code point becomes when letter case and canonical form don't count.

#include <array>
#include <cstdint>

namespace halvane {

/// The Greek letter, and the mark below a vowel that folds to it. Sorting can move the mark after others, but
/// not the letter.
inline constexpr char32_t iota = 0x03B9;
inline constexpr char32_t iotaSubscript = 0x0345;

/// What one code point becomes when letter case and canonical form don't count: its canonical decomposition,
/// each part case-folded in full and decomposed again (Unicode, definition D145). The iota subscript alone
/// stays, because it must be sorted as a mark before it becomes the letter; see foldedMark.
struct Folding {
  static constexpr std::size_t maxUnits = 4;  // no code point becomes longer than this

  std::array<char32_t, maxUnits> units;
  std::array<std::uint8_t, maxUnits> combiningClasses;
  std::uint8_t count;
  /// Whether the code point can't be parted from the one before it: it has the property Grapheme_Extend or
  /// Emoji_Modifier, or can compose with what precedes it (Normalizer2::hasBoundaryBefore).
  bool continues;
};

constexpr char32_t foldingPageSize = 256;

/// The foldings by code point, in pages that makeFoldingPage fills in when they are first needed.
extern std::array<const Folding*, 0x110000 / foldingPageSize> foldingPages;

/// Fills in the page that `character` is on, from ICU's data, and returns it. Throws std::bad_alloc when
/// there is no memory.
const Folding* makeFoldingPage(char32_t character);

/// The folding of `character`; valid for the life of the program. Throws std::bad_alloc when there is no
/// memory.
inline const Folding& foldingOf(char32_t character) {
  const Folding* page = foldingPages[character / foldingPageSize];
  if (page == nullptr) page = makeFoldingPage(character);
  return page[character % foldingPageSize];
}

/// A unit in its final form, once the marks around it are in order.
inline char32_t foldedMark(char32_t unit) {
  return unit == iotaSubscript ? iota : unit;
}

}  // namespace halvane
