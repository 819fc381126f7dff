#include "text/text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "text/icu.h"

namespace halvane {
namespace {

char32_t previousOfAnyBytes(std::string_view bytes, std::size_t& position) {
  const std::size_t end = position;
  position = startOfCodePoint(bytes, end - 1);
  std::size_t next = position;
  const char32_t character = nextOfAnyBytes(bytes, next);
  return next == end ? character : U'\uFFFD';
}

// No set of white space has one of these.
bool isVisibleAscii(char byte) {
  return byte > ' ' && byte < '\x7F';
}

template <typename InSet>
std::string_view trim(std::string_view text, InSet inSet) {
  if (!text.empty() && isVisibleAscii(text.front()) && isVisibleAscii(text.back())) return text;
  const auto isAsciiSpace = [inSet](char byte) {
    return isAscii(byte) && inSet(static_cast<char32_t>(byte));
  };
  while (!text.empty() && isAsciiSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isAsciiSpace(text.back())) text.remove_suffix(1);
  if (text.empty() || (isAscii(text.front()) && isAscii(text.back()))) return text;

  std::size_t begin = 0;
  for (std::size_t next = 0; next < text.size() && inSet(nextOfAnyBytes(text, next));) begin = next;
  text.remove_prefix(begin);
  std::size_t end = text.size();
  for (std::size_t next = end; next > 0 && inSet(previousOfAnyBytes(text, next));) end = next;
  return text.substr(0, end);
}

bool isSpaceWithinLine(char32_t character) {
  if (character < 0x80) return character == ' ' || character == '\t';
  return character == 0x200B || u_charType(static_cast<UChar32>(character)) == U_SPACE_SEPARATOR;
}

bool isSpaceOrNewline(char32_t character) {
  if (character < 0x80) return character == ' ' || (character >= '\t' && character <= '\r');
  constexpr std::uint32_t separators = U_GC_ZS_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
  return character == 0x85 || character == 0x200B ||
         (U_MASK(u_charType(static_cast<UChar32>(character))) & separators) != 0;
}

struct Mark {
  char32_t character;
  std::uint8_t combiningClass;
};

// Marks after one letter stand in the order of their classes. We sort a whole run at once: ICU inserts one
// mark after the other, which takes too long for a million marks.
void appendInOrder(std::string& text, std::vector<Mark>& marks) {
  std::stable_sort(marks.begin(), marks.end(), [](const Mark& left, const Mark& right) {
    return left.combiningClass < right.combiningClass;
  });
  for (const Mark& mark : marks) appendCodePoint(text, mark.character);
  marks.clear();
}

bool isAllAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), isAscii);
}

}  // namespace

std::string_view trimWhitespacesButNewlines(std::string_view text) {
  return trim(text, isSpaceWithinLine);
}

std::string_view trimWhitespacesAndNewlines(std::string_view text) {
  return trim(text, isSpaceOrNewline);
}

bool isWhitespace(char32_t character) {
  if (character < 0x80) return isSpaceOrNewline(character);
  return u_isUWhiteSpace(static_cast<UChar32>(character)) != 0;
}

bool isLetterOrMark(char32_t character) {
  if (character < 0x80) return (character | 0x20) >= U'a' && (character | 0x20) <= U'z';
  return (U_MASK(u_charType(static_cast<UChar32>(character))) & (U_GC_L_MASK | U_GC_M_MASK)) != 0;
}

std::string lowercased(std::string_view text) {
  std::string lower;
  if (isAllAscii(text)) {
    for (const char byte : text)
      lower += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
    return lower;
  }
  icu::StringByteSink<std::string> sink(&lower, icuLength(text));
  UErrorCode status = U_ZERO_ERROR;
  icu::CaseMap::utf8ToLower("", 0, icuPiece(text), sink, nullptr, status);
  check(status);
  return lower;
}

std::string precomposed(std::string_view text) {
  if (isAllAscii(text)) return std::string(text);
  const std::string ordered = decomposed(text);
  std::string composed;
  icu::StringByteSink<std::string> sink(&composed, icuLength(ordered));
  UErrorCode status = U_ZERO_ERROR;
  icuNfc().normalizeUTF8(0, icuPiece(ordered), sink, nullptr, status);
  check(status);
  return composed;
}

std::string decomposed(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  std::vector<Mark> marks;
  icu::UnicodeString mapping;
  const auto append = [&](char32_t character) {
    const std::uint8_t combiningClass = u_getCombiningClass(static_cast<UChar32>(character));
    if (combiningClass != 0) {
      marks.push_back({character, combiningClass});
    } else {
      appendInOrder(out, marks);
      appendCodePoint(out, character);
    }
  };
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = nextCodePoint(text, at);
    if (character < 0xC0 || !icuNfc().getDecomposition(static_cast<UChar32>(character), mapping)) {
      append(character);
      continue;
    }
    for (std::int32_t i = 0; i < mapping.length(); i = mapping.moveIndex32(i, 1)) {
      append(static_cast<char32_t>(mapping.char32At(i)));
    }
  }
  appendInOrder(out, marks);
  return out;
}

bool canonicallyEqual(std::string_view left, std::string_view right) {
  return left == right || decomposed(left) == decomposed(right);
}

void appendCodePoint(std::string& text, char32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  char encoded[U8_MAX_LENGTH];
  std::int32_t length = 0;
  U8_APPEND_UNSAFE(encoded, length, character);
  text.append(encoded, static_cast<std::size_t>(length));
}

}  // namespace halvane
