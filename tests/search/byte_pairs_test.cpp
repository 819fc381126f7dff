#include "search/byte_pairs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/processor.h"

// The loop over blocks of bytes, for blocks of each size that this processor has, against a loop over bytes.

namespace halvane {
namespace {

using namespace std::string_view_literals;

ByteSet setOf(std::string_view bytes) {
  ByteSet set;
  for (const char byte : bytes) EXPECT_TRUE(set.add(static_cast<std::uint8_t>(byte)));
  return set;
}

// The places of the first step in which there are any, by bytes.
std::uint64_t plainPairs(std::string_view body, std::size_t& at, std::size_t last, std::size_t distance,
                         const ByteSet& first, const ByteSet& second) {
  for (; at <= last; at += bytePairStep) {
    std::uint64_t places = 0;
    for (std::size_t i = 0; i < bytePairStep; ++i) {
      const bool found = first.holds(static_cast<std::uint8_t>(body[at + i])) &&
                         second.holds(static_cast<std::uint8_t>(body[at + i + distance]));
      places |= std::uint64_t{found} << i;
    }
    if (places != 0) return places;
  }
  return 0;
}

TEST(BytePairs, AreFoundAtEveryPlaceInBlocksOfEverySize) {
  std::mt19937 chance(1);
  const std::vector<ByteSet> sets = {setOf("k"), setOf("kK"), setOf("kK\xAA"), setOf("sS\xBF\x9E\x9F")};
  for (int i = 0; i < 20'000; ++i) {
    std::string body;
    const std::string_view letters = "abcdefgk\xAA\x9ES\0"sv;
    for (std::size_t length = 70 + chance() % 300; body.size() < length;)
      body += chance() % 9 == 0 ? letters[chance() % letters.size()] : 'x';
    const ByteSet& first = sets[chance() % sets.size()];
    const ByteSet& second = sets[chance() % sets.size()];
    const std::size_t distance = chance() % 5;
    const std::size_t last = body.size() - distance - bytePairStep;
    std::size_t at = 0;
    const std::uint64_t expected = plainPairs(body, at, last, distance, first, second);
    std::vector<FindPairs> ways = {findPairsInBlocks};
    if (hasWideBlocks()) ways.push_back(findPairsInWideBlocks);
    for (const FindPairs find : ways) {
      std::size_t found = 0;
      ASSERT_EQ(find(body.data(), found, last, distance, first, second), expected);
      ASSERT_EQ(found, at);
    }
  }
}

}  // namespace
}  // namespace halvane
