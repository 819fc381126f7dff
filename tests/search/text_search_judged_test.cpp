#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "search/text_search.h"
#include "tests/search/plain_search.h"
#include "text/text.h"

// Compares the search with a plain judge, on random texts and on every code point.

namespace halvane {
namespace {

using namespace std::string_view_literals;

// Each has many characters with one kind of trouble. The alphabets are short, so texts made of them have
// matches.
const std::array<std::u32string_view, 16> alphabets = {
    U"aAbB\n ",
    U"etaoinshrdluETAOINSHRDLU ,.",
    U"sSſßẞﬆt",
    U"fFiIlLﬀﬁﬂﬃ",
    U"iIİı\u0307\u0323lL\u0301",
    U"e\u0301\u0300\u0323\u0327éẹE\u0345\u05B0\u0334\u035C",
    U"eEêÊếẾ\u0302\u0301oôơờ\u031B\u0300",
    U"aAà\u0300\u0340\u0301\u0341\u0313\u0343\u0308\u0344r\u0F71\u0F72\u0F73",
    U"αΑι\u0345ᾳᾼΐΐ\u0308\u0301ϊ\u0313",
    U"nʼŉNkKKåÅÅ\u030AaẚʾΩΩ",
    U"добрыйДОБРЫЙ и\u0306",
    U"եւևմﬓﬔՄնԵ",
    U"가각각\u1100\u1161\u11A8\u11A7힣\u1113",
    U"👍👩🏽🏻\u200D\uFE0F\u200C❤🇩🇪\u20E3#",
    U"निक\u094D\u093Cষ\u09C7\u09BE\u09D7\r\n\0a"sv,
    U";\u037E`\u1FEF\u2000\u2002\u2329\u3008豈豈更Ꭰꭰ𐐀𐐨",
};

class Chance {
 public:
  explicit Chance(std::uint32_t seed) : generator_(seed) {}

  std::size_t below(std::size_t count) { return generator_() % count; }

  // Characters of one alphabet, now and then one of another.
  std::string text(std::u32string_view alphabet, std::size_t longest) {
    std::string made;
    for (std::size_t length = 1 + below(longest); length > 0; --length) {
      const std::u32string_view from = below(12) == 0 ? alphabets[below(alphabets.size())] : alphabet;
      appendCodePoint(made, from[below(from.size())]);
    }
    return made;
  }

 private:
  std::mt19937 generator_;
};

std::size_t codePointStart(std::string_view text, std::size_t position) {
  while (position > 0 && position < text.size() && (text[position] & 0xC0) == 0x80) --position;
  return position;
}

// Half of the queries are a piece of the body, in other letter case or in another form.
std::string queryFor(const std::string& body, std::u32string_view alphabet, Chance& chance) {
  if (chance.below(2) == 0) return chance.text(alphabet, 5);
  const std::size_t begin = codePointStart(body, chance.below(body.size()));
  std::size_t end = begin;
  for (std::size_t count = 1 + chance.below(6); count > 0 && end < body.size(); --count)
    nextCodePoint(body, end);
  const std::string piece = body.substr(begin, end - begin);
  switch (chance.below(5)) {
    case 0:
      return precomposed(piece);
    case 1:
      return decomposed(piece);
    case 2:
      return lowercased(piece);
    case 3: {
      std::string upper;
      return icu::UnicodeString::fromUTF8(piece).toUpper(icu::Locale::getRoot()).toUTF8String(upper);
    }
    default:
      return piece;
  }
}

void compareWithJudge(LetterI letterI, std::uint32_t seed, std::size_t rounds, std::size_t longest) {
  Chance chance(seed);
  std::size_t matches = 0;
  for (std::size_t round = 0; round < rounds; ++round) {
    const std::u32string_view alphabet = alphabets[round % alphabets.size()];
    const std::string body = chance.text(alphabet, longest);
    const std::string query = queryFor(body, alphabet, chance);
    const std::optional<TextMatch> match = plainSearch(query, body, letterI);
    matches += match ? 1 : 0;
    ASSERT_EQ(shown(TextSearch(query, letterI).find(body)), shown(match))
        << testing::PrintToString(query) << " in " << testing::PrintToString(body) << ", round " << round;
  }
  EXPECT_GT(matches, rounds / 4) << "too few matches to tell anything";
  EXPECT_GT(rounds - matches, rounds / 20) << "too many matches to tell anything";
}

TEST(TextSearchAgainstItsJudge, FindsTheSameInShortTextsInMostLanguages) {
  compareWithJudge(LetterI::oneLetter, 1, 200000, 12);
}

TEST(TextSearchAgainstItsJudge, FindsTheSameInShortTextsInTurkish) {
  compareWithJudge(LetterI::dottedAndDotless, 2, 200000, 12);
}

TEST(TextSearchAgainstItsJudge, FindsTheSameInLongTextsInMostLanguages) {
  compareWithJudge(LetterI::oneLetter, 3, 15000, 300);
}

TEST(TextSearchAgainstItsJudge, FindsTheSameInLongTextsInTurkish) {
  compareWithJudge(LetterI::dottedAndDotless, 4, 15000, 300);
}

// A long text in which the query stands once, at any of its places.
TEST(TextSearchAgainstItsJudge, FindsTheOneMatchWhereverItStands) {
  Chance chance(5);
  for (const char* query :
       {"q", "zq", "harbour", "straße", "é", "\u212Aq", "각", "да", "👍🏽", "ﬁz", "q\n", "漢字"}) {
    for (std::size_t place = 0; place < 200; ++place) {
      std::string body(place, 'x');
      body.append(query).append(chance.below(100), 'y');
      const std::string expected = shown(TextMatch{place, place + std::string(query).size()});
      ASSERT_EQ(shown(plainSearch(query, body, LetterI::oneLetter)), expected) << query;
      ASSERT_EQ(shown(TextSearch(query, LetterI::oneLetter).find(body)), expected)
          << query << " at " << place;
    }
  }
}

// Every code point that Unicode says something of, and some of the others, which are all alike: those without
// a meaning, those for private use, and ideographs, which are neither folded nor composed.
bool isWorthLooking(char32_t character) {
  if (character >= 0xD800 && character <= 0xDFFF) return false;
  const auto codePoint = static_cast<UChar32>(character);
  const bool isLikeOthers = u_isdefined(codePoint) == 0 || u_charType(codePoint) == U_PRIVATE_USE_CHAR ||
                            u_hasBinaryProperty(codePoint, UCHAR_UNIFIED_IDEOGRAPH) != 0;
  return !isLikeOthers || character % 61 == 0;
}

std::string utf8(char32_t character) {
  std::string text;
  appendCodePoint(text, character);
  return text;
}

std::string caseFolded(const std::string& text) {
  std::string folded;
  return icu::UnicodeString::fromUTF8(text).foldCase(U_FOLD_CASE_DEFAULT).toUTF8String(folded);
}

void expectEachInItself(char32_t last, LetterI letterI) {
  for (char32_t character = 0; character <= last; ++character) {
    if (!isWorthLooking(character)) continue;
    const std::string text = utf8(character);
    const std::optional<TextMatch> match = TextSearch(text, letterI).find(text);
    ASSERT_TRUE(match) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(match->begin, 0U) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(match->end, text.size()) << static_cast<std::uint32_t>(character);
  }
}

TEST(TextSearchOfEveryCodePoint, FindsItInItself) {
  expectEachInItself(0x10FFFF, LetterI::oneLetter);
}

TEST(TextSearchOfEveryCodePoint, FindsItInItselfInTurkish) {
  expectEachInItself(0x1FFFF, LetterI::dottedAndDotless);  // no letter comes after these
}

TEST(TextSearchOfEveryCodePoint, FindsItInItsCaseFoldedPartnerAndThePartnerInIt) {
  std::size_t partners = 0;
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (!isWorthLooking(character)) continue;
    const std::string text = utf8(character);
    const std::string partner = caseFolded(text);
    if (partner == text) continue;
    ++partners;
    const std::optional<TextMatch> there = TextSearch(text, LetterI::oneLetter).find(partner);
    ASSERT_TRUE(there) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(there->begin, 0U);
    ASSERT_EQ(there->end, partner.size());
    const std::optional<TextMatch> back = TextSearch(partner, LetterI::oneLetter).find(text);
    ASSERT_TRUE(back) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(back->begin, 0U);
    ASSERT_EQ(back->end, text.size());
  }
  EXPECT_GT(partners, 1400U);
}

TEST(TextSearchOfEveryCodePoint, FindsItBetweenOthersLikeTheJudge) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (!isWorthLooking(character)) continue;
    const std::string text = utf8(character);
    const std::string body = "x" + text + "x";
    ASSERT_EQ(shown(TextSearch(text, LetterI::oneLetter).find(body)),
              shown(plainSearch(text, body, LetterI::oneLetter)))
        << static_cast<std::uint32_t>(character);
  }
}

}  // namespace
}  // namespace halvane
