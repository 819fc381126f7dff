#include "fuzz/plain_tag.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "fuzz/property.h"

namespace halvane {
namespace {

// ICU lacks nothing that is asked of it here.
void check(UErrorCode status) {
  mustHold(U_SUCCESS(status), "ICU does as it is told");
}

icu::UnicodeSet setOf(const char16_t* pattern) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeSet set(pattern, status);
  check(status);
  return set;
}

icu::UnicodeString composed(const icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString result = icu::Normalizer2::getNFCInstance(status)->normalize(text, status);
  check(status);
  return result;
}

std::vector<icu::UnicodeString> charactersOf(const icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> breaks(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  check(status);
  breaks->setText(text);
  std::vector<icu::UnicodeString> characters;
  std::int32_t begin = 0;
  for (std::int32_t end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next()) {
    characters.emplace_back(text, begin, end - begin);
    begin = end;
  }
  return characters;
}

icu::UnicodeString trimmed(const icu::UnicodeString& text, const icu::UnicodeSet& set) {
  const std::int32_t begin = set.span(text, 0, USET_SPAN_SIMPLE);
  const std::int32_t end = set.spanBack(text, INT32_MAX, USET_SPAN_SIMPLE);
  return icu::UnicodeString(text, begin, std::max(begin, end) - begin);
}

bool isSeparator(const icu::UnicodeString& character) {
  return character == u"_" || u_isUWhiteSpace(character.char32At(0));
}

// The words of `text`, without "#" in front of them, joined by "-".
icu::UnicodeString joined(const icu::UnicodeString& text) {
  icu::UnicodeString words;
  bool leading = true;
  bool between = false;
  for (const icu::UnicodeString& character : charactersOf(text)) {
    leading = leading && character == u"#";
    if (leading) continue;
    if (isSeparator(character)) {
      between = true;
      continue;
    }
    if (between && !words.isEmpty()) words += u'-';
    between = false;
    words += character;
  }
  return words;
}

icu::UnicodeString only(const icu::UnicodeSet& set, const icu::UnicodeString& text) {
  icu::UnicodeString kept;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    if (set.contains(text.char32At(at))) kept += text.char32At(at);
  }
  return kept;
}

}  // namespace

std::optional<std::string> plainTag(std::string_view text) {
  static const icu::UnicodeSet whiteSpace = setOf(u"[[:Z:]\\u0009-\\u000D\\u0085\\u200B]");
  static const icu::UnicodeSet alphabet = setOf(u"[[:L:][:M:]0-9\\-]");
  static const icu::UnicodeSet hyphen = setOf(u"[\\-]");
  const auto given = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
  const icu::UnicodeString plain = composed(trimmed(given, whiteSpace).toLower(icu::Locale::getRoot()));
  const icu::UnicodeString tag = trimmed(only(alphabet, joined(plain)), hyphen);
  if (tag.isEmpty() || charactersOf(tag).size() > 30) return std::nullopt;
  std::string utf8;
  return tag.toUTF8String(utf8);
}

}  // namespace halvane
