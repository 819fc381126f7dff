#include "search/search_filter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Any seam of a query is right, but the rarest one rules out most of a body.

namespace halvane {
namespace {

// Sees that the seam for `query` lies after so many units, between these two bytes.
void expectSeam(std::u32string_view query, std::size_t unitsBefore, char before, char after) {
  const std::optional<SearchFilter> filter = SearchFilter::forQuery(query, false);
  ASSERT_TRUE(filter);
  EXPECT_EQ(filter->unitsBefore, unitsBefore);
  EXPECT_EQ(filter->distance, 1U);
  EXPECT_TRUE(filter->first.holds(static_cast<std::uint8_t>(before))) << before;
  EXPECT_TRUE(filter->second.holds(static_cast<std::uint8_t>(after))) << after;
}

TEST(SeamOfAQuery, LiesBetweenTheRarestLetters) {
  expectSeam(U"my xylophone", 4, 'x', 'y');
  expectSeam(U"the jazz age", 7, 'z', 'z');
}

TEST(SeamOfAQuery, DoesNotLieBetweenLettersThatLikeToStandTogether) {
  expectSeam(U"quz", 2, 'u', 'z');
}

TEST(SeamOfAQuery, DoesNotLieWhereThePairComesTwice) {
  expectSeam(U"xyxye", 2, 'y', 'x');
}

// Wherever else it lay, a body that repeats the query's pieces would have it at every other byte.
TEST(SeamOfAQuery, LiesWhereALongRepetitionEnds) {
  std::u32string query;
  for (int i = 0; i < 4000; ++i) query += U"ab";
  expectSeam(query + U"c", 8000, 'b', 'c');
  expectSeam(query + U"c" + query, 8000, 'b', 'c');
}

TEST(SeamOfAQuery, OfASingleLetterIsThatLetterAlone) {
  const std::optional<SearchFilter> filter = SearchFilter::forQuery(U"x", false);
  ASSERT_TRUE(filter);
  EXPECT_EQ(filter->distance, 0U);
  EXPECT_EQ(filter->unitsBefore, 1U);
  EXPECT_TRUE(filter->first.holds('x'));
  EXPECT_TRUE(filter->first.holds('X'));
  EXPECT_FALSE(filter->first.holds('y'));
}

// Many letters of one script end with the same byte.
TEST(SeamOfAQuery, OfALetterOfSeveralBytesIsAfterItsLastTwo) {
  for (const std::u32string_view letter : {U"ж", U"河", U"🌻"}) {
    const std::optional<SearchFilter> filter = SearchFilter::forQuery(letter, false);
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->distance, 1U);
    EXPECT_EQ(filter->seam, 2U);
    EXPECT_EQ(filter->unitsBefore, 1U);
  }
  const std::optional<SearchFilter> flower = SearchFilter::forQuery(U"🌻", false);
  EXPECT_TRUE(flower->first.holds(0x8C));
  EXPECT_TRUE(flower->second.holds(0xBB));
}

TEST(SeamOfAQuery, IsNotKnownForEveryQuery) {
  EXPECT_FALSE(SearchFilter::forQuery(U"", false));
  EXPECT_FALSE(SearchFilter::forQuery(U"i", true)) << "of which Turkish has two";
}

}  // namespace
}  // namespace halvane
