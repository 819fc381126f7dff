#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "server/json.h"

namespace halvane {
namespace {

using namespace std::string_literals;

TEST(JsonWriting, TextsAreEscapedWhereTheyMustBeAndAtEverySlash) {
  struct Case {
    std::string text, written;
  };
  for (const Case& c : {Case{"", R"("")"}, Case{"plain", R"("plain")"}, Case{"/a/b", R"("\/a\/b")"},
                        Case{"a\"b\\c", R"("a\"b\\c")"}, Case{"\b\t\n\f\r", R"("\b\t\n\f\r")"},
                        Case{"\0\x01\x0B\x1F"s, R"("\u0000\u0001\u000b\u001f")"}, Case{"\x7F", "\"\x7F\""},
                        Case{"é…👍", "\"é…👍\""}, Case{"\u2028\u2029\uFEFF", "\"\u2028\u2029\uFEFF\""}}) {
    EXPECT_EQ(JsonValue(c.text).serialise(), c.written);
  }
}

TEST(JsonWriting, EveryControlCharacterIsEscapedSoThatAReplyIsOneLine) {
  for (char control = 0; control < 0x20; ++control) {
    const std::string written = JsonValue(std::string(1, control)).serialise();
    EXPECT_EQ(written.substr(0, 2), "\"\\") << static_cast<int>(control);
    const std::optional<JsonValue> back = JsonValue::parse(written, {});
    ASSERT_TRUE(back && back->text() != nullptr) << written;
    EXPECT_EQ(*back->text(), std::string(1, control));
  }
}

TEST(JsonWriting, NamesOfMembersAreEscapedLikeTexts) {
  EXPECT_EQ(JsonValue(JsonValue::Object{{"a/\"\n", JsonValue(true)}}).serialise(), R"({"a\/\"\n":true})");
}

TEST(JsonWriting, NothingStandsBetweenTokens) {
  const JsonValue value(JsonValue::Object{
      {"n", JsonValue()},
      {"b", JsonValue(false)},
      {"i", JsonValue(std::int64_t{1})},
      {"d", JsonValue(JsonValue::Number{"1.10"})},
      {"t", JsonValue("x y")},
      {"l", JsonValue(JsonValue::Array{JsonValue(), JsonValue(JsonValue::Array{}),
                                       JsonValue(JsonValue::Object{})})},
      {"o", JsonValue(JsonValue::Object{{"p", JsonValue(true)}})},
  });
  EXPECT_EQ(value.serialise(),
            R"({"n":null,"b":false,"i":1,"d":1.10,"t":"x y","l":[null,[],{}],"o":{"p":true}})");
}

TEST(JsonWriting, MembersKeepTheirOrder) {
  EXPECT_EQ(
      JsonValue(JsonValue::Object{{"z", JsonValue()}, {"a", JsonValue()}, {"m", JsonValue()}}).serialise(),
      R"({"z":null,"a":null,"m":null})");
}

TEST(JsonWriting, WhatIsWrittenReadsTheSame) {
  const std::string text = R"({"a":["\u0000\"\\\/\u001f",{"b":-0.0,"":null}],"c":1e400})";
  constexpr std::array<std::string_view, 2> kept = {"a", "c"};
  const std::string written = JsonValue::parse(text, kept).value().serialise();
  EXPECT_EQ(written, text);
  EXPECT_EQ(JsonValue::parse(written, kept).value().serialise(), written);
}

}  // namespace
}  // namespace halvane
