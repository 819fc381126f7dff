#include <algorithm>
#include <unordered_set>
#include <utility>

#include "journal/entry.h"
#include "text/characters.h"
#include "text/text.h"

namespace halvane {
namespace {

constexpr std::size_t longestTag = 30;  // user-perceived characters

bool isSeparator(std::string_view character) {
  std::size_t position = 0;
  return character == "_" || isWhitespace(nextCodePoint(character, position));
}

// The words between separators, joined by "-".
std::string joinWords(std::string_view text) {
  std::string joined;
  bool between = false;
  Characters characters(text);
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = characters.forward(begin, 1);
    const std::string_view character = text.substr(begin, end - begin);
    begin = end;
    if (isSeparator(character)) {
      between = !joined.empty();
    } else {
      if (std::exchange(between, false)) joined += '-';
      joined.append(character);
    }
  }
  return joined;
}

// Removes every other character, also between two letters.
std::string onlyLettersDigitsAndHyphens(std::string_view text) {
  std::string kept;
  for (std::size_t next = 0; next < text.size();) {
    const char32_t character = nextCodePoint(text, next);
    const bool digit = character >= U'0' && character <= U'9';
    if (digit || character == U'-' || isLetterOrMark(character)) appendCodePoint(kept, character);
  }
  return kept;
}

std::string_view trim(std::string_view text, std::string_view characters) {
  const std::size_t begin = std::min(text.find_first_not_of(characters), text.size());
  return text.substr(begin, text.find_last_not_of(characters) + 1 - begin);
}

// Most tags are canonical already.
bool isOfPlainLetters(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '-';
  });
}

bool isTooLong(std::string_view text) {
  return text.size() > longestTag && Characters(text).forward(0, longestTag) < text.size();
}

// Calls `visit` with each piece of a tags value until it returns false. Returns whether it never did.
template <typename Visit>
bool eachPiece(std::string_view value, Visit visit) {
  const std::string_view list = trim(value, "[] \t");
  for (std::size_t begin = 0; begin <= list.size();) {
    std::size_t end = begin;
    while (end < list.size() && list[end] != ',' && list[end] != '\n') ++end;
    if (!visit(list.substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return true;
}

}  // namespace

std::optional<std::string> Entry::normalizeTag(std::string_view text) {
  const std::string_view trimmed = trimWhitespacesAndNewlines(text);
  std::string kept(trimmed);
  if (!isOfPlainLetters(trimmed)) {
    const std::string plain = precomposed(lowercased(trimmed));
    kept = onlyLettersDigitsAndHyphens(joinWords(plain));
  }
  const std::string_view tag = trim(kept, "-");
  if (tag.empty() || isTooLong(tag)) return std::nullopt;
  return std::string(tag);
}

std::vector<std::string> Entry::normalizeTags(const std::vector<std::string_view>& texts) {
  std::vector<std::string> tags;
  std::unordered_set<std::string> seen;
  for (const std::string_view text : texts) {
    std::optional<std::string> tag = normalizeTag(text);
    if (tag && seen.insert(*tag).second) tags.push_back(std::move(*tag));
  }
  return tags;
}

std::vector<std::string> Entry::parseTags(std::string_view value) {
  std::vector<std::string_view> pieces;
  eachPiece(value, [&](std::string_view piece) {
    pieces.push_back(piece);
    return true;
  });
  return normalizeTags(pieces);
}

bool Entry::isAmongTags(std::string_view tag, std::string_view value) {
  return !eachPiece(value, [&](std::string_view piece) { return normalizeTag(piece) != tag; });
}

}  // namespace halvane
