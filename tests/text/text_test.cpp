#include "text/text.h"

#include <gtest/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/support/test_vectors.h"

namespace halvane {
namespace {

using namespace std::string_literals;

std::string utf8(char32_t character) {
  std::string text;
  appendCodePoint(text, character);
  return text;
}

bool isSurrogate(char32_t character) {
  return character >= 0xD800 && character <= 0xDFFF;
}

// The ranges of the platform's set called `name`, both ends included.
std::vector<std::pair<char32_t, char32_t>> rangesOf(const std::string& name) {
  std::vector<std::pair<char32_t, char32_t>> ranges;
  for (const auto& line : vectorsIn("sets.jsonl")) {
    if (textOf(line, "set") != name) continue;
    for (const auto& range : line.at("ranges").as_array()) {
      ranges.emplace_back(range.at(0).as_int64(), range.at(1).as_int64());
    }
  }
  return ranges;
}

// The code points on which `inSet` and the platform's set called `name` differ.
std::vector<char32_t> differences(const std::string& name, const std::function<bool(char32_t)>& inSet) {
  const auto ranges = rangesOf(name);
  EXPECT_FALSE(ranges.empty()) << name;
  std::vector<char32_t> found;
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (isSurrogate(character)) continue;
    const bool expected = std::any_of(ranges.begin(), ranges.end(), [character](const auto& range) {
      return character >= range.first && character <= range.second;
    });
    if (inSet(character) != expected) found.push_back(character);
  }
  return found;
}

TEST(Trimming, TakesExactlyThePlatformsWhitespacesWithinALine) {
  EXPECT_EQ(
      differences("whitespaces",
                  [](char32_t character) { return trimWhitespacesButNewlines(utf8(character)).empty(); }),
      std::vector<char32_t>{});
}

TEST(Trimming, TakesExactlyThePlatformsWhitespacesAndNewlines) {
  EXPECT_EQ(
      differences("whitespacesAndNewlines",
                  [](char32_t character) { return trimWhitespacesAndNewlines(utf8(character)).empty(); }),
      std::vector<char32_t>{});
}

TEST(Trimming, TakesWhatStandsAtBothEndsAndNothingWithin) {
  struct Case {
    std::string text, inLine, everywhere;
  };
  for (const Case& c : {Case{"", "", ""}, Case{"a", "a", "a"}, Case{"  a b\t", "a b", "a b"},
                        Case{" \t\u00A0\u3000\u200B", "", ""}, Case{"\n a \n", "\n a \n", "a"},
                        Case{" \r\n\x0B\x0C\u0085\u2028\u2029 ", "\r\n\x0B\x0C\u0085\u2028\u2029", ""},
                        Case{"\u2003é\u2003", "é", "é"}, Case{" \u0301a", "\u0301a", "\u0301a"},
                        Case{"a \u0301", "a \u0301", "a \u0301"}, Case{"\0 "s, "\0"s, "\0"s},
                        Case{"\uFEFF ", "\uFEFF", "\uFEFF"}}) {
    EXPECT_EQ(trimWhitespacesButNewlines(c.text), c.inLine) << testing::PrintToString(c.text);
    EXPECT_EQ(trimWhitespacesAndNewlines(c.text), c.everywhere) << testing::PrintToString(c.text);
  }
}

TEST(Trimming, LeavesBytesThatAreNotUtf8) {
  for (const std::string& bytes : {"\xFF"s, "\xC2"s, "\x85"s, "\xE2\x80"s, "\xF0\x9F\xA6"s}) {
    EXPECT_EQ(trimWhitespacesButNewlines(" " + bytes + "\t"), bytes) << testing::PrintToString(bytes);
    EXPECT_EQ(trimWhitespacesAndNewlines("\n" + bytes + "\u2003"), bytes) << testing::PrintToString(bytes);
  }
  EXPECT_EQ(trimWhitespacesAndNewlines("\u2003\xE2\x80"), "\xE2\x80");
  EXPECT_EQ(trimWhitespacesAndNewlines("\xE2\x80\u2003"), "\xE2\x80");
}

TEST(WhiteSpace, IsExactlyThePlatformsProperty) {
  EXPECT_EQ(differences("isWhitespace", isWhitespace), std::vector<char32_t>{});
}

TEST(Letters, AreLettersOfAnyScriptAndCombiningMarksAndNothingElse) {
  for (const char32_t letter :
       {U'a', U'Z',      U'é',  U'ß',  U'ǅ',      U'ʰ',      U'ª',      U'λ',      U'я',  U'א',
        U'न', U'\u093F', U'漢', U'한', U'\u0301', U'\u20E3', U'\uFE0F', U'\u0903', U'ａ', U'\U00010400'}) {
    EXPECT_TRUE(isLetterOrMark(letter)) << utf8(letter);
  }
  for (const char32_t other :
       {U'0',      U'9',      U'-',      U'_',      U' ',      U'#',         U'.', U'\u0661',
        U'²',      U'Ⅷ',      U'ⅷ',      U'\u200D', U'\u200B', U'€',         U'👍', U'\U0001F3FB',
        U'\uFEFF', U'\uE000', U'\uFFFD', U'\0',     U'\n',     U'\U0010FFFF'}) {
    EXPECT_FALSE(isLetterOrMark(other)) << static_cast<std::uint32_t>(other);
  }
}

TEST(LowerCase, IsUnicodesFullDefaultMappingInEveryLocale) {
  struct Case {
    std::string text, lower;
  };
  for (const Case& c :
       {Case{"", ""}, Case{"Harbour", "harbour"}, Case{"CAFÉ", "café"}, Case{"STRASSE", "strasse"},
        Case{"ẞ", "ß"}, Case{"İ", "i\u0307"}, Case{"I", "i"}, Case{"ΟΔΟΣ", "οδος"}, Case{"Σ", "σ"},
        Case{"ΑΣΑ", "ασα"}, Case{"ΑΣ ΑΣ", "ας ας"}, Case{"ΑΣ\u0301", "ας\u0301"}, Case{"Ǆ", "ǆ"},
        Case{"\U00010400", "\U00010428"}, Case{"Ａ", "ａ"}, Case{"K", "k"}, Case{"A\0B"s, "a\0b"s}}) {
    EXPECT_EQ(lowercased(c.text), c.lower) << c.text;
  }
}

TEST(CanonicalForms, AreThoseOfIcu) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2& nfc = *icu::Normalizer2::getNFCInstance(status);
  const icu::Normalizer2& nfd = *icu::Normalizer2::getNFDInstance(status);
  ASSERT_TRUE(U_SUCCESS(status));
  const std::u32string characters =
      U"aeoIAqSs\u00E9\u00C5\u212B\u1E69\u1EA5\u0344\u0345\u1FB3\u0390\u0301\u0300\u0307\u0323\u0327\u0328"
      U"\u0315\u031B"
      U"\u05B8\u05BC\u0F71\u0F72\u0F73\u1100\u1161\u11A8\uAC00\uAC01\uFB2C\u0958\u2ADC\U0001D15E\U00011099"
      U"\u09C7\u09BE ";
  std::mt19937 random(19991);
  for (int round = 0; round < 50000; ++round) {
    std::string text;
    for (std::size_t length = random() % 8; length > 0; --length) {
      appendCodePoint(text, characters[random() % characters.size()]);
    }
    std::string composed;
    std::string taken;
    nfc.normalize(icu::UnicodeString::fromUTF8(text), status).toUTF8String(composed);
    nfd.normalize(icu::UnicodeString::fromUTF8(text), status).toUTF8String(taken);
    ASSERT_TRUE(U_SUCCESS(status));
    ASSERT_EQ(precomposed(text), composed) << testing::PrintToString(text);
    ASSERT_EQ(decomposed(text), taken) << testing::PrintToString(text);
  }
}

TEST(CanonicalForms, AreThoseOfIcuForEveryCodePoint) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2& nfc = *icu::Normalizer2::getNFCInstance(status);
  const icu::Normalizer2& nfd = *icu::Normalizer2::getNFDInstance(status);
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (isSurrogate(character)) continue;
    const icu::UnicodeString text(static_cast<UChar32>(character));
    std::string composed;
    std::string taken;
    nfc.normalize(text, status).toUTF8String(composed);
    nfd.normalize(text, status).toUTF8String(taken);
    ASSERT_TRUE(U_SUCCESS(status));
    ASSERT_EQ(precomposed(utf8(character)), composed) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(decomposed(utf8(character)), taken) << static_cast<std::uint32_t>(character);
  }
}

TEST(CanonicalForms, TakeTimeInProportionWhateverMarksATextHolds) {
  // Two classes by turns are what one-by-one insertion takes longest for: half a million of them would take
  // it minutes.
  std::string text = "a";
  for (int i = 0; i < 250000; ++i) text += "\u0301\u0323";
  const auto start = std::chrono::steady_clock::now();
  const std::string taken = decomposed(text);
  EXPECT_EQ(taken.size(), text.size());
  EXPECT_TRUE(taken.starts_with("a\u0323\u0323"));
  EXPECT_TRUE(taken.ends_with("\u0301\u0301"));
  EXPECT_TRUE(precomposed(text).starts_with("\u1EA1\u0323"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(CanonicalEquivalence, IsTheSameTextInOtherCodePoints) {
  struct Case {
    const char *left, *right;
    bool equal;
  };
  for (const Case& c :
       {Case{"", "", true}, Case{"a", "a", true}, Case{"café", "cafe\u0301", true}, Case{"Å", "\u212B", true},
        Case{"a\u0323\u0301", "a\u0301\u0323", true}, Case{"가", "\u1100\u1161", true}, Case{"a", "A", false},
        Case{"cafe", "café", false}, Case{"ﬁ", "fi", false}, Case{"ａ", "a", false}, Case{"a", "a ", false},
        Case{"a\u0300\u0301", "a\u0301\u0300", false}}) {
    EXPECT_EQ(canonicallyEqual(c.left, c.right), c.equal) << c.left << " " << c.right;
  }
}

TEST(CodePoints, AreReadAndWrittenAsUtf8) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (isSurrogate(character)) continue;
    const std::string text = "a" + utf8(character) + "b";
    std::size_t position = 1;
    ASSERT_EQ(nextCodePoint(text, position), character);
    ASSERT_EQ(position, text.size() - 1);
  }
  EXPECT_EQ(utf8(U'A'), "A");
  EXPECT_EQ(utf8(U'é'), "\xC3\xA9");
  EXPECT_EQ(utf8(U'…'), "\xE2\x80\xA6");
  EXPECT_EQ(utf8(U'👍'), "\xF0\x9F\x91\x8D");
}

}  // namespace
}  // namespace halvane
