#include "search/commonness.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace halvane {
namespace {

unsigned commonnessOf(std::string_view bytes) {
  ByteSet set;
  for (const char byte : bytes) EXPECT_TRUE(set.add(static_cast<std::uint8_t>(byte)));
  return commonness(set);
}

TEST(Commonness, FallsFromWhatEveryTextIsMadeOfToWhatFewTextsHold) {
  unsigned before = 1001;
  for (const std::string_view byte : {"\xD0", " ", "e", "t", "a", "s", "d", "k", "Z", "q"}) {
    EXPECT_LE(commonnessOf(byte), before) << byte;
    before = commonnessOf(byte);
  }
  EXPECT_LT(commonnessOf("q"), commonnessOf("e"));
  EXPECT_LT(commonnessOf("E"), commonnessOf("e"));
  EXPECT_LT(commonnessOf("7"), commonnessOf("e"));
}

TEST(Commonness, OfBytesBeyondAsciiIsThatOfTheirPlaceInACharacter) {
  for (const std::string_view lead : {"\xC4", "\xCE", "\xD0", "\xE3", "\xED"}) {
    EXPECT_GT(commonnessOf(lead), commonnessOf(" ")) << "of an alphabet in which every letter begins so";
  }
  for (const std::string_view byte : {"\xC3", "\xE2", "\xEE", "\xF0", "\x80", "\xBF", "\xC2"}) {
    EXPECT_LT(commonnessOf(byte), commonnessOf("n")) << "of a letter, a sign or an emoji among others";
  }
}

TEST(Commonness, OfASetIsThatOfAllItsBytesTogether) {
  EXPECT_EQ(commonnessOf("aA"), commonnessOf("a") + commonnessOf("A"));
  EXPECT_EQ(commonnessOf("abc"), commonnessOf("a") + commonnessOf("b") + commonnessOf("c"));
  EXPECT_EQ(commonnessOf("aAq"), commonnessOf("a") + commonnessOf("A") + commonnessOf("q"));
  EXPECT_EQ(commonnessOf(""), 0U);
}

TEST(LettersOftenTogether, AreTwoOfOneWordInOneOrder) {
  for (const std::u32string_view letters : {U"th", U"he", U"qu", U"ch", U"di", U"ll", U"pp"})
    EXPECT_TRUE(areOftenTogether(letters));
  for (const std::u32string_view letters : {U"", U"t", U"the", U"ht", U"xq", U"h ", U" e", U"TH"})
    EXPECT_FALSE(areOftenTogether(letters));
}

}  // namespace
}  // namespace halvane
