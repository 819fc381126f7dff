#include "text/utf8.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace halvane {
namespace {

using namespace std::string_literals;

// ICU's own conversions are the judges.

bool icuConverts(std::string_view bytes) {
  std::vector<UChar> units(bytes.size() + 1);
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(units.data(), static_cast<std::int32_t>(units.size()), &length, bytes.data(),
                static_cast<std::int32_t>(bytes.size()), &status);
  return U_SUCCESS(status);
}

std::string icuRepairs(std::string_view bytes) {
  std::vector<UChar> units(bytes.size() + 1);
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(units.data(), static_cast<std::int32_t>(units.size()), &length, bytes.data(),
                       static_cast<std::int32_t>(bytes.size()), 0xFFFD, nullptr, &status);
  EXPECT_TRUE(U_SUCCESS(status));
  std::string repaired(3 * bytes.size() + 1, '\0');
  std::int32_t size = 0;
  u_strToUTF8(repaired.data(), static_cast<std::int32_t>(repaired.size()), &size, units.data(), length,
              &status);
  EXPECT_TRUE(U_SUCCESS(status));
  repaired.resize(static_cast<std::size_t>(size));
  return repaired;
}

char byte(unsigned value) {
  return static_cast<char>(static_cast<std::uint8_t>(value));
}

// For each length, whether such bytes are one character, from the list of all characters that ICU writes in
// so many bytes.
class ShortCharacters {
 public:
  ShortCharacters() {
    for (UChar32 character = 0; character <= 0xFFFF; ++character) {
      if (U_IS_SURROGATE(character)) continue;
      std::string bytes;
      icu::UnicodeString(character).toUTF8String(bytes);
      std::size_t number = 0;
      for (const char part : bytes) number = number * 256 + static_cast<std::uint8_t>(part);
      ofBytes_[bytes.size() - 1].at(number) = true;
    }
  }

  bool one(unsigned a) const { return ofBytes_[0][a]; }
  bool two(unsigned a, unsigned b) const { return ofBytes_[1][a * 256 + b]; }
  bool three(unsigned a, unsigned b, unsigned c) const { return ofBytes_[2][(a * 256 + b) * 256 + c]; }

 private:
  std::array<std::vector<bool>, 3> ofBytes_ = {std::vector<bool>(1 << 8), std::vector<bool>(1 << 16),
                                               std::vector<bool>(1 << 24)};
};

TEST(Utf8, AmongAllSequencesOfUpToThreeBytesExactlyThoseMadeOfCharactersAreWellFormed) {
  const ShortCharacters are;
  std::size_t differences = 0;
  const auto expect = [&](bool wellFormed, std::string_view bytes) {
    if (isUtf8(bytes) != wellFormed) ++differences;
  };
  std::array<char, 3> bytes{};
  for (unsigned a = 0; a < 256; ++a) {
    bytes[0] = byte(a);
    expect(are.one(a), {bytes.data(), 1});
    for (unsigned b = 0; b < 256; ++b) {
      bytes[1] = byte(b);
      const bool firstTwo = are.two(a, b) || (are.one(a) && are.one(b));
      expect(firstTwo, {bytes.data(), 2});
      for (unsigned c = 0; c < 256; ++c) {
        bytes[2] = byte(c);
        expect(are.three(a, b, c) || (firstTwo && are.one(c)) || (are.one(a) && are.two(b, c)),
               {bytes.data(), 3});
      }
    }
  }
  EXPECT_EQ(differences, 0U);
}

TEST(Utf8, EverySequenceOfUpToThreeBytesIsRepairedLikeIcuDoes) {
  for (unsigned first = 0; first < 256; ++first) {
    for (unsigned second = 0; second < 256; ++second) {
      // A letter ends an unfinished sequence, so one text can contain many of them.
      std::string bytes = {byte(first), 'x', byte(first), byte(second), 'x'};
      for (unsigned third = 0; third < 256; ++third) {
        bytes.append({byte(first), byte(second), byte(third), 'x'});
      }
      ASSERT_EQ(repairUtf8(bytes), icuRepairs(bytes)) << first << " " << second;
    }
  }
}

TEST(Utf8, SequencesOfFourAndMoreBytesAreJudgedAndRepairedLikeIcuDoes) {
  std::mt19937 random(20251103);
  // Bytes that begin, continue and spoil sequences, more often than chance would have them.
  const std::string telling =
      "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFE\xFF"s;
  for (int round = 0; round < 300000; ++round) {
    std::string bytes;
    const std::size_t length = 4 + random() % 5;
    while (bytes.size() < length) {
      bytes += random() % 4 == 0 ? byte(random() & 255U) : telling[random() % telling.size()];
    }
    ASSERT_EQ(isUtf8(bytes), icuConverts(bytes)) << testing::PrintToString(bytes);
    ASSERT_EQ(repairUtf8(bytes), icuRepairs(bytes)) << testing::PrintToString(bytes);
  }
}

TEST(Utf8, ASequenceIsJudgedTheSameWhereverItStands) {
  for (const std::string& filler : {"a"s, "é"s, "€"s, "👍"s}) {
    for (const std::string& sequence :
         {"\xFF"s, "\x80"s, "\xC3"s, "\xC0\xAF"s, "\xE2\x82"s, "\xE0\x80\x80"s, "\xED\xA0\x80"s,
          "\xF0\x9F\x91"s, "\xF0\x80\x80\x80"s, "\xF4\x90\x80\x80"s, "\xF5\x80\x80\x80"s,
          "\xF8\x88\x80\x80\x80"s, "é"s, "€"s, "👍"s, "\0"s, "\U0010FFFF"s, "\uD7FF"s}) {
      std::string text;
      for (int before = 0; before < 300; ++before) {
        const std::string whole = text + sequence + filler;
        ASSERT_EQ(isUtf8(whole), icuConverts(whole))
            << testing::PrintToString(sequence) << " at " << text.size();
        const std::string atTheEnd = text + sequence;
        ASSERT_EQ(isUtf8(atTheEnd), icuConverts(atTheEnd)) << testing::PrintToString(sequence) << " last";
        text += filler;
      }
    }
  }
}

TEST(Utf8, OneReplacementStandsForEachMaximalIllFormedSequence) {
  struct Case {
    std::string bytes, repaired;
  };
  for (const Case& c :
       {Case{"a\xFFz", "a�z"}, Case{"a\xC3", "a�"}, Case{"\xC3(", "�("},
        Case{"\xC0\xAF", "��"},                              // overlong: neither byte can begin anything
        Case{"\xE0\x80\xAF", "���"},                         // overlong
        Case{"\xED\xA0\x80", "���"},                         // a surrogate
        Case{"\xE2\x82", "�"},                               // the beginning of a three-byte character
        Case{"\xE2\x82z", "�z"}, Case{"\xF0\x9F\x91", "�"},  // the beginning of a four-byte character
        Case{"\xF0\x9F\x91\xE2\x82\xAC", "�€"}, Case{"\xF4\x90\x80\x80", "����"},  // beyond U+10FFFF
        Case{"\xF0\x80\x80\x80", "����"},                                          // overlong
        Case{"\x80\x80", "��"},                                                    // continuations of nothing
        Case{"\xF1\x80\x80\xE1\x80\xC2z\x80y\x80\xBFx"s, "���z�y��x"}}) {
    EXPECT_EQ(repairUtf8(c.bytes), c.repaired) << testing::PrintToString(c.bytes);
  }
}

TEST(Utf8, WellFormedTextIsLeftAsItIs) {
  for (const std::string& text : {""s, "plain"s, "caf\u00E9 \u2026 \U0001F44D"s, "\0nul\0"s, "\uFFFD"s,
                                  "\uFEFFmark"s, "\U0010FFFF"s, "\uD7FF\uE000"s}) {
    EXPECT_TRUE(isUtf8(text));
    EXPECT_EQ(repairUtf8(text), text);
  }
}

TEST(Utf8, AByteOrderMarkIsSkippedAtTheStartOnlyAndOnce) {
  EXPECT_EQ(withoutByteOrderMark("\uFEFF{}"), "{}");
  EXPECT_EQ(withoutByteOrderMark("\uFEFF\uFEFF{}"), "\uFEFF{}");
  EXPECT_EQ(withoutByteOrderMark("{\uFEFF}"), "{\uFEFF}");
  EXPECT_EQ(withoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
  EXPECT_EQ(withoutByteOrderMark(""), "");
}

}  // namespace
}  // namespace halvane
