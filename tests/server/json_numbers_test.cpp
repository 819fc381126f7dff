#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "server/json.h"

namespace halvane {
namespace {

using namespace std::string_literals;

std::optional<std::int64_t> wholeNumberOf(const std::string& text) {
  return JsonValue::parse(text, {}).value().wholeNumber();
}

TEST(JsonNumbers, ComeOutAgainDigitForDigit) {
  for (const std::string& number : {"0"s,
                                    "-0"s,
                                    "0.0"s,
                                    "-0.0"s,
                                    "1"s,
                                    "10"s,
                                    "1.10"s,
                                    "1e2"s,
                                    "1E2"s,
                                    "1e+2"s,
                                    "1E-2"s,
                                    "1e02"s,
                                    "0e0"s,
                                    "1e400"s,
                                    "-1e400"s,
                                    "1e-400"s,
                                    "0e9"s,
                                    "123456789012345678901234567890"s,
                                    "-123456789012345678901234567890"s,
                                    "9007199254740993"s,
                                    "18446744073709551616"s,
                                    "3.14159265358979323846264338327950288"s,
                                    "0.1000000000000000055511151231257827"s,
                                    "1e999999999"s,
                                    "1"s + std::string(1000, '0'),
                                    "0."s + std::string(1000, '0') + "1"}) {
    const std::optional<JsonValue> value = JsonValue::parse(number, {});
    ASSERT_TRUE(value) << number;
    EXPECT_EQ(value->serialise(), number);
  }
}

TEST(JsonNumbers, AnyOtherSpellingIsNoNumber) {
  for (const std::string& text :
       {"+1"s,    "-"s,     "--1"s, "-+1"s, "01"s,     "00"s,      "-01"s,   "1."s,    ".5"s,
        "-.5"s,   "1.e2"s,  "1e"s,  "1e+"s, "1e-"s,    "1ee2"s,    "1e2.5"s, "1.2.3"s, "0x10"s,
        "1_000"s, "1,000"s, "1f"s,  "1n"s,  "\u0661"s, "1\u0660"s, "\uFF11"s}) {
    EXPECT_FALSE(JsonValue::parse(text, {})) << text;
  }
}

// Older versions of the JSON library refuse an exponent of ten digits, newer ones read it.
TEST(JsonNumbers, AnExponentIsReadDigitForDigitOrNotAtAll) {
  for (const char* number : {"1e999999999", "1e-999999999", "1e10000000000", "1e-10000000000",
                             "1e99999999999999999999", "1e-99999999999999999999"}) {
    const std::optional<JsonValue> value = JsonValue::parse(number, {});
    EXPECT_EQ(value ? value->serialise() : number, number);
    EXPECT_FALSE(value && value->wholeNumber()) << number;
  }
  EXPECT_TRUE(JsonValue::parse("1e999999999", {}));
  EXPECT_TRUE(JsonValue::parse("1e-999999999", {}));
}

TEST(JsonNumbers, AreWholeByTheirExactDecimalValue) {
  struct Case {
    std::string number;
    std::optional<std::int64_t> whole;
  };
  const std::string zeros(400, '0');
  for (const Case& c : {
           Case{"10", 10},
           Case{"10.0", 10},
           Case{"1e1", 10},
           Case{"1E+1", 10},
           Case{"100e-1", 10},
           Case{"1.0e1", 10},
           Case{"0.1e2", 10},
           Case{"0.001e4", 10},
           Case{"10.000000000000000000000000000000", 10},
           Case{"-10", -10},
           Case{"-1e1", -10},
           Case{"2.5", std::nullopt},
           Case{"2.50", std::nullopt},
           Case{"25e-1", std::nullopt},
           Case{"1e-1", std::nullopt},
           Case{"-0.5", std::nullopt},
           Case{"10.000000000000000000000000000001", std::nullopt},
           Case{"0", 0},
           Case{"-0", 0},
           Case{"0.000", 0},
           Case{"-0.0", 0},
           Case{"0e9", 0},
           Case{"0e400", 0},
           Case{"0e-400", 0},
           Case{"-0e400", 0},
           Case{"-0e-400", 0},
           Case{"0.0e999999999", 0},
           Case{"9223372036854775807", INT64_MAX},
           Case{"9223372036854775807.0", INT64_MAX},
           Case{"92233720368547758070e-1", INT64_MAX},
           Case{"9.223372036854775807e18", INT64_MAX},
           Case{"9223372036854775808", std::nullopt},
           Case{"-9223372036854775808", INT64_MIN},
           Case{"-9.223372036854775808e18", INT64_MIN},
           Case{"-9223372036854775809", std::nullopt},
           Case{"9007199254740993", 9007199254740993},
           Case{"1e18", 1000000000000000000},
           Case{"1e19", std::nullopt},
           Case{"1e400", std::nullopt},
           Case{"-1e400", std::nullopt},
           Case{"1e-400", std::nullopt},
           Case{"1e999999999", std::nullopt},
           Case{"1e-999999999", std::nullopt},
           Case{"123456789012345678901234567890", std::nullopt},
           Case{"123456789012345678901234567890e-20", std::nullopt},
           Case{"12345678901234567890e-1", 1234567890123456789},
           Case{"1" + zeros, std::nullopt},
           Case{"1" + zeros + "e-400", 1},
           Case{"0." + zeros + "1e401", 1},
           Case{"5" + zeros + ".0" + zeros + "e-399", 50},
       }) {
    EXPECT_EQ(wholeNumberOf(c.number), c.whole) << c.number;
  }
}

TEST(JsonNumbers, WhatIsNoNumberIsNoWholeNumber) {
  for (const char* text : {"null", "true", "false", "\"10\"", "[10]", "{}"}) {
    EXPECT_EQ(wholeNumberOf(text), std::nullopt) << text;
  }
}

TEST(JsonNumbers, OnesMadeHereAreWrittenInDecimal) {
  EXPECT_EQ(JsonValue(std::int64_t{-32601}).serialise(), "-32601");
  EXPECT_EQ(JsonValue(std::int64_t{INT64_MIN}).serialise(), "-9223372036854775808");
  EXPECT_EQ(JsonValue(std::int64_t{7}).wholeNumber(), 7);
}

}  // namespace
}  // namespace halvane
