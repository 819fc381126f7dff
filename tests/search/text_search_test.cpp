#include "search/text_search.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <tuple>

#include "search/folded_query.h"
#include "tests/search/plain_search.h"
#include "tests/support/test_vectors.h"
#include "text/text.h"

namespace halvane {
namespace {

using namespace std::string_literals;

constexpr LetterI oneLetter = LetterI::oneLetter;
constexpr LetterI dottedAndDotless = LetterI::dottedAndDotless;

std::string found(const std::string& query, const std::string& body, LetterI letterI = oneLetter) {
  const TextSearch search(query, letterI);
  const std::optional<TextMatch> match = search.find(body);
  for (const char* around : {"", "---\n", "\xFF"})
    EXPECT_TRUE(!match || search.mayBeWithin(around + body + around)) << testing::PrintToString(query);
  return shown(match);
}

struct Case {
  std::string query, body, match;
};

void expectEach(std::initializer_list<Case> cases, LetterI letterI = oneLetter) {
  for (const Case& c : cases) {
    EXPECT_EQ(found(c.query, c.body, letterI), c.match)
        << testing::PrintToString(c.query) << " in " << testing::PrintToString(c.body);
    EXPECT_EQ(shown(plainSearch(c.query, c.body, letterI)), c.match)
        << "the judge, " << testing::PrintToString(c.query);
  }
}

TEST(TextSearch, FindsWhatThePlatformFinds) {
  for (const auto& line : vectorsIn("find.jsonl")) {
    std::string expected = "nothing";
    if (const auto* match = line.at("match").if_array()) {
      const auto begin = match->at(0).to_number<std::size_t>();
      expected = shown(TextMatch{begin, begin + match->at(1).to_number<std::size_t>()});
    }
    EXPECT_EQ(found(textOf(line, "query"), textOf(line, "body")), expected) << boost::json::serialize(line);
  }
}

TEST(TextSearch, IgnoresLetterCase) {
  expectEach({{"Harbour", "to the harbour", "[7, 14)"},
              {"harbour", "TO THE HARBOUR", "[7, 14)"},
              {"УТРО", "доброе утро", "[13, 21)"},
              {"\U00010400", "\U00010428", "[0, 4)"},
              {"οδος", "ΟΔΟΣ", "[0, 8)"},
              {"ΟΔΟΣ", "οδος", "[0, 8)"},
              {"σ", "ς", "[0, 2)"},
              {"k", "\u212A", "[0, 3)"},
              {"s", "ſ", "[0, 2)"},
              {"Ꭰ", "ꭰ", "[0, 3)"},
              {"ǆ", "Ǆ", "[0, 2)"},
              {"ǅ", "ǆ", "[0, 2)"}});
}

TEST(TextSearch, FoldsCaseInFull) {
  expectEach({{"straße", "STRASSE", "[0, 7)"},
              {"STRASSE", "straße", "[0, 7)"},
              {"ẞ", "ß", "[0, 2)"},
              {"ss", "ß", "[0, 2)"},
              {"ß", "ss", "[0, 2)"},
              {"fi", "ﬁn", "[0, 3)"},
              {"ﬀi", "ﬃ", "[0, 3)"},
              {"ŉ", "\u02BCn", "[0, 3)"},
              {"ΐ", "\u1FD3", "[0, 3)"},
              {"ᾳ", "αι", "[0, 4)"},
              {"αι", "ᾼ", "[0, 3)"},
              {"\u0345", "ι", "[0, 2)"},
              {"i\u0307", "İ", "[0, 2)"}});
}

// Beside a rare letter, which is what the search looks for first
TEST(TextSearch, FindsLettersThatTheBodyHasInOneCharacter) {
  expectEach({{"qfi", "a q\uFB01", "[2, 6)"},
              {"qffi", "a q\uFB03", "[2, 6)"},
              {"qss", "a q\u00DF", "[2, 5)"},
              {"qst", "a q\uFB06", "[2, 6)"},
              {"fiq", "a \uFB01q", "[2, 6)"},
              {"ffiq", "a \uFB03q", "[2, 6)"},
              {"ssq", "a \u00DFq", "[2, 5)"},
              {"stq", "a \uFB06q", "[2, 6)"}});
}

TEST(TextSearch, NeverMatchesAPartOfWhatOneCharacterFoldsTo) {
  expectEach({{"s", "ß", "nothing"},
              {"s", "ßs", "[2, 3)"},
              {"ss", "sß", "[1, 3)"},
              {"sss", "sß", "[0, 3)"},
              {"sss", "ßs", "[0, 3)"},
              {"f", "ﬁ", "nothing"},
              {"i", "ﬁ", "nothing"},
              {"ff", "ﬃ", "nothing"},
              {"n", "ŉ", "nothing"},
              {"α", "ᾳ", "nothing"},
              {"ss", "sßs", "[1, 3)"},
              {"ssss", "sßs", "[0, 4)"}});
}

TEST(TextSearch, TakesCanonicallyEquivalentTextsForEqual) {
  expectEach({{"é", "cafe\u0301", "[3, 6)"},
              {"e\u0301", "café", "[3, 5)"},
              {"Å", "\u212B", "[0, 3)"},
              {"a\u0323\u0301", "A\u0301\u0323", "[0, 5)"},
              {"가", "\u1100\u1161", "[0, 6)"},
              {"각", "\u1100\u1161\u11A8", "[0, 9)"},
              {"\u1F80", "\u03B1\u0345\u0313", "[0, 6)"},
              {"ΐ", "Ι\u0308\u0301", "[0, 6)"}});
}

TEST(TextSearch, FindsMarksUnderTheirSecondNames) {
  expectEach({{"a\u0343reou", "xA\u0343REOUx", "[1, 8)"},
              {"a\u0313reou", "xA\u0343REOUx", "[1, 8)"},
              {"a\u0308\u0301reou", "xA\u0344REOUx", "[1, 8)"},
              {"a\u0344reou", "xA\u0308\u0301REOUx", "[1, 10)"},
              {"àreou", "xA\u0340REOUx", "[1, 8)"}});
}

TEST(TextSearch, NeverPartsALetterFromItsMarks) {
  expectEach({{"e", "é", "nothing"},
              {"e", "e\u0301", "nothing"},
              {"cafe", "café", "nothing"},
              {"cafe", "cafe\u0301", "nothing"},
              {"e", "e\u0301e", "[3, 4)"},
              {"\u0301", "e\u0301", "nothing"},
              {"é", "e\u0301\u0323", "nothing"},
              {"i", "İ", "nothing"},
              {"\u1100", "가", "nothing"},
              {"\u1161", "\u1100\u1161", "nothing"},
              {"가", "각", "nothing"},
              {"\u11A8", "각", "nothing"},
              {"न", "न\u093C", "nothing"},
              {"\u09C7", "\u09C7\u09BE", "nothing"}});
}

TEST(TextSearch, NeverPartsALetterFromAnyNumberOfMarks) {
  const std::string mark = "\U0001E8D0";
  std::string marked = "a\U00010428";
  for (int marks = 0; marks < 1100; ++marks, marked += mark) {
    const std::string match = "[0, " + std::to_string(marked.size()) + ")";
    ASSERT_EQ(found(marked, marked + "b"), match) << marks;
    ASSERT_EQ(found(marked, marked + mark + "b"), "nothing") << marks;
    ASSERT_EQ(found(marked, marked + mark + marked),
              "[" + std::to_string(marked.size() + mark.size()) + ", " +
                  std::to_string(2 * marked.size() + mark.size()) + ")")
        << marks;
  }
}

TEST(TextSearch, FindsALoneMark) {
  expectEach({{"\u0301", "\u0301", "[0, 2)"},
              {"\u0301", "\u0301\u0301", "nothing"},
              {"\u0323\u0301", "\u0301\u0323", "[0, 4)"},
              {"\u0301e", "\u0301e", "[0, 3)"}});
}

TEST(TextSearch, NeverPartsAnEmojiFromItsSkinOrItsVariation) {
  expectEach({{"👍", "👍🏽", "nothing"},
              {"👍🏽", "👍🏽", "[0, 8)"},
              {"🏽", "👍🏽", "nothing"},
              {"👍", "👍🏽👍", "[8, 12)"},
              {"\u2764", "\u2764\uFE0F", "nothing"},
              {"\u2764\uFE0F", "\u2764\uFE0F", "[0, 6)"},
              {"#", "#\uFE0F\u20E3", "nothing"}});
}

TEST(TextSearch, DoesPartWhatOnlyStandsTogetherInOneUserPerceivedCharacter) {
  expectEach({{"न", "नि", "[0, 3)"},
              {"ि", "नि", "[3, 6)"},
              {"👩", "👩\u200D👩\u200D👧", "[0, 4)"},
              {"👧", "👩\u200D👩\u200D👧", "[14, 18)"},
              {"\n", "a\r\nb", "[2, 3)"},
              {"\r", "a\r\nb", "[1, 2)"},
              {"🇩", "🇩🇪", "[0, 4)"},
              {"🇪", "🇩🇪", "[4, 8)"}});
}

TEST(TextSearch, FindsTheFirstOfManyMatches) {
  expectEach({{"ab", "xababab", "[1, 3)"},
              {"aab", "aaab", "[1, 4)"},
              {"aba", "abcababa", "[3, 6)"},
              {"e", "e\u0301 é e", "[7, 8)"},
              {"ss", "sſß", "[0, 3)"}});
}

TEST(TextSearch, TheWholeQueryMustBeThere) {
  expectEach({{"harbour", "harbou", "nothing"},
              {"harbour ", "harbour", "nothing"},
              {" ", "harbour", "nothing"},
              {"  ", "a b", "nothing"},
              {"a b", "a\nb", "nothing"},
              {"a b", "a\u00A0b", "nothing"},
              {"ａ", "a", "nothing"},
              {"x", "", "nothing"}});
}

TEST(TextSearch, ANulIsACharacterLikeAnyOther) {
  expectEach({{"\0"s, "a\0b"s, "[1, 2)"},
              {"b", "a\0b"s, "[2, 3)"},
              {"a\0b"s, "A\0B"s, "[0, 3)"},
              {"a\0c"s, "a\0b"s, "nothing"}});
}

// As where a file is read into memory that a longer one has left.
TEST(TextSearch, EndsAtTheEndOfTheBody) {
  const std::string_view memory = "cafe\u0301\u0323";
  for (const auto& [query, size, match] :
       {std::tuple("cafe", 4U, "[0, 4)"), std::tuple("cafe\u0301", 6U, "[0, 6)"),
        std::tuple("cafe\u0301", 4U, "nothing"), std::tuple("cafe\u0301\u0323", 6U, "nothing")})
    EXPECT_EQ(shown(TextSearch(query, oneLetter).find(memory.substr(0, size))), match) << query << size;
}

TEST(TextSearch, TakesAllLettersIForOneInMostLanguages) {
  expectEach({{"istanbul", "ISTANBUL", "[0, 8)"},
              {"I", "ı", "nothing"},
              {"ı", "I", "nothing"},
              {"ı", "ı", "[0, 2)"},
              {"i", "İ", "nothing"},
              {"i\u0307", "İ", "[0, 2)"}});
}

TEST(TextSearch, TellsDottedAndDotlessIApartInTurkish) {
  expectEach({{"istanbul", "İSTANBUL", "[0, 9)"},
              {"istanbul", "ISTANBUL", "nothing"},
              {"ısparta", "ISPARTA", "[0, 7)"},
              {"ISPARTA", "ısparta", "[0, 8)"},
              {"I", "i", "nothing"},
              {"i", "I", "nothing"},
              {"I", "ı", "[0, 2)"},
              {"İ", "i", "[0, 1)"},
              {"i", "İ", "[0, 2)"},
              {"i", "I\u0307", "[0, 3)"},
              {"I\u0307", "i", "[0, 1)"},
              {"ı", "I\u0307", "nothing"},
              {"İ\u0323", "I\u0323\u0307", "[0, 5)"},
              {"straße", "STRASSE", "[0, 7)"},
              {"ì", "Ì", "[0, 2)"}},
             dottedAndDotless);
}

TEST(TextSearch, TakesTimeInProportionWhateverQueryAndBodyAre) {
  const std::string body(4000000, 'a');
  std::string marks = "a";
  for (int i = 0; i < 500000; ++i) marks += "\u0301\u0323";
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(found(std::string(100000, 'a') + "b", body), "nothing");
  EXPECT_EQ(found("a", marks), "nothing");
  EXPECT_EQ(found(marks, marks + "b"), "[0, " + std::to_string(marks.size()) + ")");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

// Letters that stand side by side in every order, as in a long text in Chinese.
std::string manySeams(std::size_t letters) {
  std::string text;
  std::uint32_t state = 1;
  while (letters-- > 0) {
    state = state * 1664525 + 1013904223;
    appendCodePoint(text, 0x4E00 + (state >> 8) % 20000);
  }
  return text;
}

template <typename Work>
std::clock_t processorTime(const Work& work) {
  const std::clock_t begin = std::clock();
  work();
  return std::clock() - begin;
}

// That they fold is what a long query costs at least; it takes time in proportion.
TEST(TextSearch, IsMadeReadyInLittleMoreTimeThanItsQueryIsFoldedIn) {
  const std::string query = manySeams(1000000);
  const std::clock_t folding = processorTime([&] { const FoldedQuery folded(query, oneLetter); });
  const std::clock_t all = processorTime([&] { const TextSearch search(query, oneLetter); });
  EXPECT_LT(all, 4 * folding);
}

TEST(TextSearch, FindsAQueryOfVeryManyLetters) {
  const std::string query = manySeams(20000);
  EXPECT_EQ(found(query, "a" + query + "b"), "[1, " + std::to_string(query.size() + 1) + ")");
  EXPECT_EQ(found(query + "c", "a" + query + "b"), "nothing");
}

TEST(TextSearch, OneQueryIsFoundInManyBodies) {
  TextSearch search("Straße", oneLetter);
  EXPECT_EQ(shown(search.find("STRASSE")), "[0, 7)");
  EXPECT_EQ(shown(search.find("stra")), "nothing");
  EXPECT_EQ(shown(search.find("sse strasse")), "[4, 11)");
  const TextSearch moved = std::move(search);
  EXPECT_EQ(shown(moved.find("eine Straße")), "[5, 12)");
}

TEST(TextSearch, TellsOfMostFilesThatTheyHoldNoMatch) {
  const TextSearch search("kingfisher", oneLetter);
  for (const char* text : {"", "k", "a dog, a fish", "dogfish", "kinGFi"})
    EXPECT_FALSE(search.mayBeWithin(text)) << text;
  for (const char* text : {"KingFisher", "a kingfisher\n"}) EXPECT_TRUE(search.mayBeWithin(text)) << text;
  EXPECT_FALSE(TextSearch("翠鸟", oneLetter).mayBeWithin("翠色的飞鸟"));
}

// A file may be anything. The sanitizers see it when a byte beyond its end is read.
TEST(TextSearch, SeesAMatchAmongBytesThatAreNoText) {
  for (const std::string& query : {"é"s, "né"s, "éa"s, "翠鸟"s, std::string(200, 'e') + "\u0301"}) {
    const TextSearch search(query, oneLetter);
    for (const char* piece :
         {"\x80", "\xA9", "\x9F", "\xC3", "\xA0\xE9\xB8\x9F", "\xF0\x9F", "\xC3\xA9\xA9", "\xFF"}) {
      std::string bytes;
      while (bytes.size() < 5000) bytes += piece;
      for (std::size_t cut = 0; cut < 8; ++cut) {
        const std::string part = bytes.substr(cut);
        EXPECT_TRUE(search.mayBeWithin(part + query + part)) << testing::PrintToString(piece);
      }
    }
  }
}

}  // namespace
}  // namespace halvane
