#include <gtest/gtest.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "search/byte_pairs.h"
#include "search/search_filter.h"
#include "text/byte_block.h"
#include "text/processor.h"
#include "text/utf8_blocks.h"

// The loops over blocks of bytes, for blocks of each size that this processor has, against a loop over bytes.

namespace halvane {
namespace {

bool isUtf8ByIcu(std::string_view bytes) {
  const auto* text = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t at = 0; at < bytes.size();) {
    UChar32 character;
    U8_NEXT(text, at, bytes.size(), character);
    if (character < 0) return false;
  }
  return true;
}

void expectSameForAll(const std::string& bytes) {
  const bool expected = isUtf8ByIcu(bytes);
  EXPECT_EQ(!canShuffleBytes() || isUtf8InBlocks(bytes.data(), bytes.size()), !canShuffleBytes() || expected)
      << testing::PrintToString(bytes);
  EXPECT_EQ(!hasWideBlocks() || isUtf8InWideBlocks(bytes.data(), bytes.size()), !hasWideBlocks() || expected)
      << testing::PrintToString(bytes);
}

TEST(Utf8InBlocks, IsToldRightForEveryWrongOrRightStartAtEveryPlace) {
  const std::vector<std::string> pieces = {
      "a",        "\xC3\xA9",        "\xE2\x82\xAC", "\xF0\x9F\x91\x8D", "\x80",         "\xC3",
      "\xE2\x82", "\xF0\x9F\x91",    "\xC0\x80",     "\xE0\x9F\xBF",     "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
      "\xFF",     "\xF4\x90\x80\x80"};
  for (const std::string& piece : pieces) {
    for (std::size_t before = 0; before < 300; ++before) {
      for (const std::size_t behind : {0U, 1U, 2U, 40U, 200U})
        expectSameForAll(std::string(before, 'x') + piece + std::string(behind, 'y'));
    }
  }
}

TEST(Utf8InBlocks, IsToldRightForBytesByChance) {
  std::mt19937 chance(1);
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes;
    for (std::size_t length = chance() % 400; bytes.size() < length;) {
      constexpr std::uint32_t limits[] = {0x80, 0x800, 0x10000, 0x110000};
      const auto any = static_cast<std::uint32_t>(chance()) % limits[chance() % 4];
      const std::uint32_t character = U_IS_SURROGATE(any) ? U'a' : any;
      std::uint8_t unit[U8_MAX_LENGTH];
      std::size_t size = 0;
      U8_APPEND_UNSAFE(unit, size, character);
      bytes.append(reinterpret_cast<const char*>(unit), size);
    }
    if (!bytes.empty() && chance() % 2 == 0) bytes[chance() % bytes.size()] = static_cast<char>(chance());
    expectSameForAll(bytes);
  }
}

ByteSet setOf(std::string_view bytes) {
  ByteSet set;
  for (const char byte : bytes) EXPECT_TRUE(set.add(static_cast<std::uint8_t>(byte)));
  return set;
}

// The places of the first step in which there are any, by bytes.
std::uint64_t plainPairs(std::string_view body, std::size_t& at, std::size_t last, std::size_t distance,
                         const ByteSet& here, const ByteSet& there) {
  for (; at <= last; at += bytePairStep) {
    std::uint64_t places = 0;
    for (std::size_t i = 0; i < bytePairStep; ++i) {
      const bool found = here.holds(static_cast<std::uint8_t>(body[at + i])) &&
                         there.holds(static_cast<std::uint8_t>(body[at + i + distance]));
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
    const std::string_view letters = "abcdefgk\xAA\x9ES";
    for (std::size_t length = 70 + chance() % 300; body.size() < length;)
      body += chance() % 9 == 0 ? letters[chance() % letters.size()] : 'x';
    const ByteSet& here = sets[chance() % sets.size()];
    const ByteSet& there = sets[chance() % sets.size()];
    const std::size_t distance = chance() % 5;
    const std::size_t last = body.size() - distance - bytePairStep;
    std::size_t at = 0;
    const std::uint64_t expected = plainPairs(body, at, last, distance, here, there);
    std::vector<FindPairs> ways = {findPairsInBlocks};
    if (hasWideBlocks()) ways.push_back(findPairsInWideBlocks);
    for (const FindPairs find : ways) {
      std::size_t found = 0;
      ASSERT_EQ(find(body.data(), found, last, distance, here, there), expected);
      ASSERT_EQ(found, at);
    }
  }
}

}  // namespace
}  // namespace halvane
