#pragma once

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace halvane {

// Unicode text operations, by ICU. Texts are well-formed UTF-8; positions and lengths are in bytes. Memory
// that ICU can't have becomes std::bad_alloc; so does a text of 2 GiB and more, which is beyond what ICU
// counts.

/// `text` without the white space at its ends that stands within a line: space separators, the tab and
/// U+200B. A view of the same bytes.
std::string_view trimWhitespaces(std::string_view text);

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

/// The code point at `position`, which must be below the length; `position` moves behind it.
inline char32_t nextCodePoint(std::string_view text, std::size_t& position) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  UChar32 character;
  U8_NEXT_UNSAFE(bytes, position, character);
  return static_cast<char32_t>(character);
}

/// Appends `character` as UTF-8.
void appendCodePoint(std::string& text, char32_t character);

/// The user-perceived characters of one text: its extended grapheme clusters (Unicode Annex 29).
class Characters {
 public:
  /// Of `text`, whose bytes must outlive this.
  explicit Characters(std::string_view text);
  ~Characters();
  Characters(const Characters&) = delete;
  Characters& operator=(const Characters&) = delete;

  /// The start of the character in which `position` lies: `position` itself between two characters and at
  /// either end of the text.
  std::size_t startOf(std::size_t position);
  /// The position `count` characters before the start `position`; 0 when fewer precede it.
  std::size_t back(std::size_t position, std::size_t count);
  /// The position `count` characters behind the start `position`; the text's length when fewer follow.
  std::size_t forward(std::size_t position, std::size_t count);

 private:
  struct Iterator;
  Iterator& iterator();

  std::string_view text_;
  std::unique_ptr<Iterator> iterator_;
};

}  // namespace halvane
