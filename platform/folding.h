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

/// The folding of `character`; valid for the life of the program. The tables are made from ICU's data, 256
/// code points at a time, when the first of them is asked for. Throws std::bad_alloc when there is no memory.
const Folding& foldingOf(char32_t character);

/// A unit in its final form, for use when the marks around it stand in their order.
inline char32_t foldedMark(char32_t unit) { return unit == 0x0345 ? 0x03B9 : unit; }

}  // namespace halvane
