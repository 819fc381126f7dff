#pragma once

// Unicode text operations, by ICU. Texts are well-formed UTF-8; positions and lengths are in bytes. The
// functions throw std::bad_alloc when ICU finds no memory, and for a text of 2 GiB or more, which is longer
// than ICU can count.

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace halvane {

/// `text` without the space separators, tabs and U+200B at its ends. A view of the same bytes. The text may
/// be any bytes: those that are not UTF-8 stay.
std::string_view trimWhitespacesButNewlines(std::string_view text);

/// The same for every white space: also line and paragraph separators, U+000A to U+000D and U+0085.
std::string_view trimWhitespacesAndNewlines(std::string_view text);

/// Whether `character` has the property White_Space.
bool isWhitespace(char32_t character);

/// Whether `character` is a letter of any script or a combining mark (general categories L and M).
bool isLetterOrMark(char32_t character);

/// `text` by the full default lower-case mapping, final sigma included, the same in every locale.
std::string lowercased(std::string_view text);

/// `text` in Normalization Form C (Unicode Annex 15), in linear time whatever marks it holds.
std::string precomposed(std::string_view text);

/// `text` in Normalization Form D (Unicode Annex 15), in linear time whatever marks it holds.
std::string decomposed(std::string_view text);

/// Whether the two texts are canonically equivalent (Unicode, definition D70).
bool canonicallyEqual(std::string_view left, std::string_view right);

/// Whether `byte` of a text is an ASCII character.
inline bool isAscii(char byte) {
  return static_cast<signed char>(byte) >= 0;
}

/// The start of the code point in which `position` lies; `position` itself at the end of the text.
inline std::size_t startOfCodePoint(std::string_view text, std::size_t position) {
  while (position > 0 && position < text.size() && U8_IS_TRAIL(text[position])) --position;
  return position;
}

/// The code point at `position`, which must be below the length; `position` moves past it.
inline char32_t nextCodePoint(std::string_view text, std::size_t& position) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  UChar32 character;
  U8_NEXT_UNSAFE(bytes, position, character);
  return static_cast<char32_t>(character);
}

/// The same for any bytes: U+FFFD stands for those that are not UTF-8.
inline char32_t nextOfAnyBytes(std::string_view bytes, std::size_t& position) {
  const auto* text = reinterpret_cast<const std::uint8_t*>(bytes.data());
  UChar32 character;
  U8_NEXT_OR_FFFD(text, position, bytes.size(), character);
  return static_cast<char32_t>(character);
}

/// Appends `character` as UTF-8.
void appendCodePoint(std::string& text, char32_t character);

}  // namespace halvane
