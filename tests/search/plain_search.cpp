#include "tests/search/plain_search.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace halvane {
namespace {

const icu::Normalizer2& normalizer(const icu::Normalizer2* (*getInstance)(UErrorCode&)) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* instance = getInstance(status);
  if (U_FAILURE(status)) throw std::runtime_error("no normalizer");
  return *instance;
}

icu::UnicodeString normalized(const icu::Normalizer2& form, const icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString result = form.normalize(text, status);
  if (U_FAILURE(status)) throw std::runtime_error("can't normalize");
  return result;
}

const icu::Normalizer2& nfc() {
  return normalizer(&icu::Normalizer2::getNFCInstance);
}
const icu::Normalizer2& nfd() {
  return normalizer(&icu::Normalizer2::getNFDInstance);
}

// Without letter case and canonical form: NFD, full case folding, NFD.
icu::UnicodeString folded(icu::UnicodeString text, LetterI letterI) {
  if (letterI == LetterI::dottedAndDotless) {
    text = normalized(nfc(), text);  // an İ may come in two pieces
    text.findAndReplace(icu::UnicodeString(u'I'), icu::UnicodeString(u'\u0131'));
    text.findAndReplace(icu::UnicodeString(u'\u0130'), icu::UnicodeString(u'i'));
  }
  return normalized(nfd(), normalized(nfd(), text).foldCase(U_FOLD_CASE_DEFAULT));
}

// Whether a match may neither end in front of `character` nor begin at it.
bool continues(UChar32 character) {
  return u_hasBinaryProperty(character, UCHAR_GRAPHEME_EXTEND) ||
         u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) || !nfc().hasBoundaryBefore(character);
}

struct Piece {
  std::size_t begin;  // in bytes of UTF-8
  icu::UnicodeString folded;
};

std::vector<Piece> cut(std::string_view body, LetterI letterI) {
  const icu::UnicodeString text =
      icu::UnicodeString::fromUTF8({body.data(), static_cast<std::int32_t>(body.size())});
  std::vector<Piece> pieces;
  std::size_t bytes = 0;
  for (std::int32_t begin = 0; begin < text.length();) {
    std::int32_t end = text.moveIndex32(begin, 1);
    while (end < text.length() && continues(text.char32At(end))) end = text.moveIndex32(end, 1);
    const icu::UnicodeString piece = text.tempSubStringBetween(begin, end);
    pieces.push_back({bytes, folded(piece, letterI)});
    std::string utf8;
    bytes += piece.toUTF8String(utf8).size();
    begin = end;
  }
  pieces.push_back({bytes, {}});  // the end
  return pieces;
}

}  // namespace

std::optional<TextMatch> plainSearch(std::string_view query, std::string_view body, LetterI letterI) {
  const icu::UnicodeString wanted =
      folded(icu::UnicodeString::fromUTF8({query.data(), static_cast<std::int32_t>(query.size())}), letterI);
  const std::vector<Piece> pieces = cut(body, letterI);
  for (std::size_t begin = 0; begin < pieces.size(); ++begin) {
    icu::UnicodeString between;
    for (std::size_t end = begin + 1; end < pieces.size() && between.length() < wanted.length(); ++end) {
      between += pieces[end - 1].folded;
      if (between == wanted) return TextMatch{pieces[begin].begin, pieces[end].begin};
    }
  }
  return std::nullopt;
}

std::string shown(const std::optional<TextMatch>& match) {
  return match ? "[" + std::to_string(match->begin) + ", " + std::to_string(match->end) + ")" : "nothing";
}

}  // namespace halvane
