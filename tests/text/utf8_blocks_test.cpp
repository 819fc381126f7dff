#include "text/utf8_blocks.h"

#include <gtest/gtest.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/processor.h"

// The check of UTF-8 in each way that this processor has, against ICU's macros.

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
  EXPECT_EQ(isUtf8OneByOne(bytes.data(), bytes.size()), expected) << testing::PrintToString(bytes);
  if (canShuffleBytes()) {
    EXPECT_EQ(isUtf8InBlocks(bytes.data(), bytes.size()), expected) << testing::PrintToString(bytes);
  }
  if (hasWideBlocks()) {
    EXPECT_EQ(isUtf8InWideBlocks(bytes.data(), bytes.size()), expected) << testing::PrintToString(bytes);
  }
}

TEST(Utf8InBlocks, IsToldRightForEveryWrongOrRightStartAtEveryPlace) {
  const std::vector<std::string> pieces = {
      "a",        "\xC3\xA9",        "\xE2\x82\xAC", "\xF0\x9F\x91\x8D", "\x80",         "\xC3",
      "\xE2\x82", "\xF0\x9F\x91",    "\xC0\x80",     "\xE0\x9F\xBF",     "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
      "\xFF",     "\xF4\x90\x80\x80"};
  for (const std::string& piece : pieces) {
    for (std::size_t before = 0; before < 300; ++before) {
      for (const std::size_t after : {0U, 1U, 2U, 40U, 200U})
        expectSameForAll(std::string(before, 'x') + piece + std::string(after, 'y'));
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

}  // namespace
}  // namespace halvane
