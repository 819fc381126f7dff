#include "text/characters.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/test_vectors.h"
#include "text/text.h"

namespace halvane {
namespace {

using namespace std::string_literals;

// Where the user-perceived characters of `text` begin, and its length after them.
std::vector<std::size_t> boundariesOf(const std::string& text) {
  Characters characters(text);
  std::vector<std::size_t> boundaries = {0};
  while (boundaries.back() < text.size()) boundaries.push_back(characters.forward(boundaries.back(), 1));
  return boundaries;
}

const std::string family = "👩\u200D👩\u200D👧";
const std::string flag = "🇩🇪";

TEST(Characters, AreAsManyAsThePlatformCounts) {
  for (const auto& line : vectorsIn("characters.jsonl")) {
    const std::string text = textOf(line, "text");
    EXPECT_EQ(boundariesOf(text).size() - 1, line.at("count").to_number<std::size_t>())
        << boost::json::serialize(line);
  }
}

TEST(Characters, AreWhatAPersonSeesAsOne) {
  struct Case {
    std::string text;
    std::vector<std::size_t> boundaries;
  };
  for (const Case& c :
       {Case{"", {0}}, Case{"ab", {0, 1, 2}}, Case{"é", {0, 2}}, Case{"e\u0301x", {0, 3, 4}},
        Case{"a\r\nb", {0, 1, 3, 4}}, Case{"\n\r", {0, 1, 2}}, Case{"\n\u0301", {0, 1, 3}},
        Case{family + "!", {0, family.size(), family.size() + 1}}, Case{"👍🏽👍", {0, 8, 12}},
        Case{flag + flag, {0, 8, 16}}, Case{"नि", {0, 6}}, Case{"\0\0"s, {0, 1, 2}}}) {
    EXPECT_EQ(boundariesOf(c.text), c.boundaries) << testing::PrintToString(c.text);
  }
}

// Where characters begin, as ICU finds them in the whole text at once.
std::vector<std::size_t> icuBoundariesOf(const std::string& text) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> breaks(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  UText* bytes = utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
  breaks->setText(bytes, status);
  EXPECT_TRUE(U_SUCCESS(status));
  std::vector<std::size_t> boundaries;
  for (std::int32_t at = breaks->first(); at != icu::BreakIterator::DONE; at = breaks->next()) {
    boundaries.push_back(static_cast<std::size_t>(at));
  }
  utext_close(bytes);
  return boundaries;
}

TEST(Characters, AreThoseOfIcuFromWhereverTheyAreCounted) {
  const std::u32string alphabet =
      U"ab \r\n\t\u0301\u200D\u0600é👩🏽🇩🇪\u0915\u094D\u093F\u1100\u1161가\u11A8\uFE0F\u20E3#1";
  std::mt19937 random(42);
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    for (std::size_t length = 1 + random() % 12; length > 0; --length) {
      appendCodePoint(text, alphabet[random() % alphabet.size()]);
    }
    const std::vector<std::size_t> boundaries = icuBoundariesOf(text);
    ASSERT_EQ(boundariesOf(text), boundaries) << testing::PrintToString(text);
    Characters characters(text);
    const std::size_t last = boundaries.size() - 1;
    for (std::size_t i = 0; i <= last; ++i) {
      const std::size_t count = random() % 5;
      ASSERT_EQ(characters.startOf(boundaries[i]), boundaries[i]) << testing::PrintToString(text);
      ASSERT_EQ(characters.forward(boundaries[i], count), boundaries[std::min(i + count, last)])
          << testing::PrintToString(text);
      ASSERT_EQ(characters.back(boundaries[i], count), boundaries[i - std::min(i, count)])
          << testing::PrintToString(text);
    }
    for (std::size_t position = 0; position < text.size(); ++position) {
      if ((text[position] & 0xC0) == 0x80) continue;  // inside a code point
      const auto next = std::upper_bound(boundaries.begin(), boundaries.end(), position);
      ASSERT_EQ(characters.startOf(position), *(next - 1)) << testing::PrintToString(text) << " " << position;
    }
  }
}

TEST(Characters, StartWhereTheOneStartsInWhichAPositionLies) {
  const std::string text = "ab" + family + "\r\nz";
  Characters characters(text);
  EXPECT_EQ(characters.startOf(0), 0U);
  EXPECT_EQ(characters.startOf(1), 1U);
  EXPECT_EQ(characters.startOf(2), 2U);
  EXPECT_EQ(characters.startOf(6), 2U) << "after the first person of the family";
  EXPECT_EQ(characters.startOf(2 + family.size() - 4), 2U) << "before the last person of the family";
  EXPECT_EQ(characters.startOf(2 + family.size()), 2 + family.size());
  EXPECT_EQ(characters.startOf(2 + family.size() + 1), 2 + family.size()) << "between CR and LF";
  EXPECT_EQ(characters.startOf(text.size()), text.size());
}

TEST(Characters, CountForwardAndBackAndStopAtTheEnds) {
  const std::string text = "ab" + family + "e\u0301z";
  Characters characters(text);
  EXPECT_EQ(characters.forward(0, 0), 0U);
  EXPECT_EQ(characters.forward(0, 3), 2 + family.size());
  EXPECT_EQ(characters.forward(2, 2), 2 + family.size() + 3);
  EXPECT_EQ(characters.forward(0, 80), text.size());
  EXPECT_EQ(characters.forward(text.size(), 80), text.size());
  EXPECT_EQ(characters.back(text.size(), 0), text.size());
  EXPECT_EQ(characters.back(text.size(), 2), 2 + family.size());
  EXPECT_EQ(characters.back(2 + family.size(), 1), 2U);
  EXPECT_EQ(characters.back(text.size(), 80), 0U);
  EXPECT_EQ(characters.back(0, 80), 0U);
}

TEST(Characters, ThereAreNoneInTheEmptyText) {
  Characters characters("");
  EXPECT_EQ(characters.startOf(0), 0U);
  EXPECT_EQ(characters.forward(0, 1), 0U);
  EXPECT_EQ(characters.back(0, 1), 0U);
}

}  // namespace
}  // namespace halvane
