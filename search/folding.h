#pragma once

#include <array>
#include <cstdint>

namespace halvane {

/// What one code point becomes when letter case and canonical form no longer count: its canonical
/// decomposition, each part case-folded in full and decomposed again (Unicode, definition D145). U+0345 alone
/// stays, because it must be sorted as a mark before it becomes the letter iota; see foldedMark.
struct Folding {
  static constexpr std::size_t most = 4;  // no code point becomes longer than this

  std::array<char32_t, most> units;
  std::array<std::uint8_t, most> combiningClasses;
  std::uint8_t count;
  /// Whether the code point can't be parted from the one before it: it has the property Grapheme_Extend or
  /// Emoji_Modifier, or can compose with what precedes it (Normalizer2::hasBoundaryBefore).
  bool continues;
};

constexpr char32_t foldingPageSize = 256;

/// The foldings by code point, in pages that makeFoldingPage fills in when they are first needed.
extern std::array<const Folding*, 0x110000 / foldingPageSize> foldingPages;

/// Fills in the page that `character` is on, from ICU's data. Throws std::bad_alloc when there is no memory.
const Folding* makeFoldingPage(char32_t character);

/// The folding of `character`; valid for the life of the program.
inline const Folding& foldingOf(char32_t character) {
  const Folding* page = foldingPages[character / foldingPageSize];
  if (page == nullptr) page = makeFoldingPage(character);
  return page[character % foldingPageSize];
}

/// A unit in its final form, for use when the marks around it stand in their order.
inline char32_t foldedMark(char32_t unit) {
  return unit == 0x0345 ? 0x03B9 : unit;
}

}  // namespace halvane
