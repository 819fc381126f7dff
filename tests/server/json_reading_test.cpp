#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "server/json.h"

namespace halvane {
namespace {

using namespace std::string_literals;

constexpr std::array<std::string_view, 3> keptMembers = {"a", "b", "c"};

std::optional<JsonValue> parse(std::string_view text) {
  return JsonValue::parse(text, keptMembers);
}

// What was read, written again; "no JSON" when nothing was.
std::string readBack(std::string_view text) {
  const std::optional<JsonValue> value = parse(text);
  return value ? value->serialise() : "no JSON";
}

std::string nested(char open, char close, std::size_t levels) {
  return std::string(levels, open) + std::string(levels, close);
}

TEST(JsonReading, EveryKindOfValueIsRead) {
  struct Case {
    std::string_view text, back;
  };
  for (const Case& c : {Case{"null", "null"}, Case{"true", "true"}, Case{"false", "false"}, Case{"0", "0"},
                        Case{"\"\"", "\"\""}, Case{"\"a\"", "\"a\""}, Case{"[]", "[]"}, Case{"{}", "{}"},
                        Case{"[1,[2,{\"x\":null}],\"\"]", "[1,[2,{\"x\":null}],\"\"]"},
                        Case{"{\"a\":{\"x\":[true,false]}}", "{\"a\":{\"x\":[true,false]}}"},
                        Case{"{\"a\":1,\"b\":2}", "{\"a\":1,\"b\":2}"}}) {
    EXPECT_EQ(readBack(c.text), c.back) << c.text;
  }
}

TEST(JsonReading, BlanksTabsAndLineBreaksMayStandBetweenTokensOnly) {
  EXPECT_EQ(readBack(" \t\r\n{ \"a\"\t:\r[ 1 ,\n2 ] } \r"), "{\"a\":[1,2]}");
  EXPECT_EQ(readBack("{}\r"), "{}");
  for (const std::string& text : {"\v{}"s, "\f{}"s, "\u00A0{}"s, "\u2028{}"s, "{}\0"s, "\0{}"s, "tr ue"s,
                                  "1 2"s, "- 1"s, "1 .5"s, "\u200B{}"s}) {
    EXPECT_EQ(readBack(text), "no JSON") << testing::PrintToString(text);
  }
}

TEST(JsonReading, WhatIsNotJsonIsRefused) {
  for (const std::string& text :
       {""s, " "s, "x"s, "{"s, "}"s, "["s, "]"s, "[1"s, "{\"a\""s, "{\"a\":"s, "{\"a\":1"s, "\""s, "\"a"s,
        "\"a\\"s,
        // commas and colons
        "[1,]"s, "[,1]"s, "[1,,2]"s, "[1 2]"s, "{\"a\":1,}"s, "{,\"a\":1}"s, "{\"a\" 1}"s, "{\"a\":}"s,
        "{\"a\",1}"s, "{\"a\":1 \"b\":2}"s, "[1:2]"s, "{1:2}"s, "{a:1}"s, "{null:1}"s, "[}"s, "{]"s, "[1}"s,
        "{\"a\":1]"s,
        // more than one value
        "{}{}"s, "{} x"s, "1 1"s, "[]]"s, "{}}"s, "\"a\"\"b\""s, "null,"s,
        // words
        "nul"s, "nulll"s, "Null"s, "NULL"s, "True"s, "truee"s, "undefined"s, "NaN"s, "Infinity"s,
        "-Infinity"s, "inf"s, "nan"s,
        // quotes and comments
        "'a'"s, "{'a':1}"s, "// no\n{}"s, "/* no */{}"s, "{}// no"s, "[1,/* no */2]"s, "# no\n{}"s,
        // a byte-order mark
        "\uFEFF{}"s, "{}\uFEFF"s}) {
    EXPECT_EQ(readBack(text), "no JSON") << testing::PrintToString(text);
  }
}

TEST(JsonReading, EscapesInTextsAreUndone) {
  struct Case {
    std::string text, value;
  };
  for (const Case& c :
       {Case{R"("\"\\\/\b\f\n\r\t")", "\"\\/\b\f\n\r\t"}, Case{R"("\u0041\u00e9\u00E9\u20ac")", "Aéé€"},
        Case{R"("\ud83d\udc4d")", "👍"}, Case{R"("\uD83D\uDC4D")", "👍"},
        Case{R"("\uDBFF\uDFFF")", "\U0010FFFF"}, Case{R"("a\u0000b")", "a\0b"s}, Case{R"("\u0000")", "\0"s},
        Case{R"("\ufffe\uffff")", "\uFFFE\uFFFF"}, Case{R"("\u001f\u007f")", "\x1F\x7F"},
        Case{R"("\ufeff")", "\uFEFF"}, Case{"\"\x7F\u0080\u2028\u2029\"", "\x7F\u0080\u2028\u2029"},
        Case{"\"é👍\"", "é👍"}}) {
    const std::optional<JsonValue> value = parse(c.text);
    ASSERT_TRUE(value && value->text() != nullptr) << c.text;
    EXPECT_EQ(*value->text(), c.value) << c.text;
  }
}

TEST(JsonReading, AWrongEscapeOrARawControlCharacterIsRefused) {
  for (const std::string& text :
       {R"("\a")"s, R"("\x41")"s, R"("\'")"s, R"("\0")"s, R"("\U0041")"s, R"("\u")"s, R"("\u1")"s,
        R"("\u12")"s, R"("\u123")"s, R"("\u123g")"s, R"("\u+123")"s, R"("\ ")"s, "\"\\\n\""s}) {
    EXPECT_EQ(readBack(text), "no JSON") << text;
  }
  for (char control = 0; control < 0x20; ++control) {
    EXPECT_EQ(readBack("\"a"s + control + "b\""), "no JSON") << static_cast<int>(control);
    EXPECT_EQ(readBack("{\"a"s + control + "\":1}"), "no JSON") << static_cast<int>(control);
  }
}

TEST(JsonReading, AnEscapedSurrogateWithoutItsPartnerReadsAsAReplacementCharacter) {
  struct Case {
    std::string_view text, value;
  };
  for (const Case& c : {
           // alone: a high one, a low one, at the start, in the middle, at the end
           Case{R"("\ud83d")", "\uFFFD"},
           Case{R"("\udc4d")", "\uFFFD"},
           Case{R"("\uD83D")", "\uFFFD"},
           Case{R"("\ud800\udbff")", "\uFFFD\uFFFD"},
           Case{R"("\udc00 \udfff")", "\uFFFD \uFFFD"},
           Case{R"("\ud83dx")", "\uFFFDx"},
           Case{R"("caf\ud83d")", "caf\uFFFD"},
           Case{R"("a\udc4db")", "a\uFFFDb"},
           // before an escape that is no partner
           Case{R"("\ud83d\n")", "\uFFFD\n"},
           Case{R"("\ud83d\"")", "\uFFFD\""},
           Case{R"("\ud83d\\")", "\uFFFD\\"},
           Case{R"("\ud83d\u0041")", "\uFFFDA"},
           Case{R"("\ud83d\\udc4d")", "\uFFFD\\udc4d"},
           Case{R"("\ud83d \udc4d")", "\uFFFD \uFFFD"},
           // beside whole pairs
           Case{R"("\ud83d\ud83d")", "\uFFFD\uFFFD"},
           Case{R"("\udc4d\ud83d")", "\uFFFD\uFFFD"},
           Case{R"("\ud83d\ud83d\udc4d")", "\uFFFD👍"},
           Case{R"("\ud83d\udc4d\udc4d")", "👍\uFFFD"},
           Case{R"("\ud83d\udc4d\ud83d\udc4d\ud83d")", "👍👍\uFFFD"},
           // after backslashes: an even number of them escape one another, and the rest is plain text
           Case{R"("\\ud83d")", "\\ud83d"},
           Case{R"("\\ud83d\ud83d")", "\\ud83d\uFFFD"},
           Case{R"("\\\ud83d")", "\\\uFFFD"},
           Case{R"("\\\\ud83d")", "\\\\ud83d"},
           // beside escapes that need no repair
           Case{R"("\ud7ff\ud83d\ue000")", "\uD7FF\uFFFD\uE000"},
           Case{R"("\ufffd\udc4d")", "\uFFFD\uFFFD"},
       }) {
    const std::optional<JsonValue> value = parse(c.text);
    ASSERT_TRUE(value && value->text() != nullptr) << c.text;
    EXPECT_EQ(*value->text(), c.value) << c.text;
  }
}

TEST(JsonReading, ALoneSurrogateIsReplacedWhereverATextStands) {
  struct Case {
    std::string_view text, back;
  };
  for (const Case& c : {Case{R"(["a","\udc4d"])", "[\"a\",\"\uFFFD\"]"},
                        Case{R"({"a":{"\ud83d":1}})", "{\"a\":{\"\uFFFD\":1}}"},
                        Case{R"({"a":{"\ud83d":1,"\udc4d":2}})", "{\"a\":{\"\uFFFD\":2}}"},
                        Case{R"({"a":"\ud83d"})", "{\"a\":\"\uFFFD\"}"}, Case{R"({"z":"\ud83d"})", "{}"},
                        Case{R"({"\ud83d":1,"b":2})", R"({"b":2})"},
                        Case{R"({"z":{"\udc4d":["\ud83d"]},"b":2})", R"({"b":2})"}}) {
    EXPECT_EQ(readBack(c.text), c.back) << c.text;
  }
}

TEST(JsonReading, ALoneSurrogateExcusesNothingElse) {
  for (const char* text :
       {R"("\ud83d)", R"("\ud83)", R"("\ud83")", R"("\ud83g")", R"("\ud83d\udc4")", R"("\ud83d\u")",
        R"("\ud83d\")", R"("\ud83d\x")", R"(\ud83d)", R"(["\ud83d",])", R"({"\ud83d"})", R"("\ud83d"")"}) {
    EXPECT_EQ(readBack(text), "no JSON") << text;
  }
}

TEST(JsonReading, TextThatIsNotUtf8IsRefused) {
  for (const std::string& text : {"\"\xFF\""s, "\"\xC3\""s, "\"\xC0\xAF\""s, "\"\xED\xA0\xBD\xED\xB1\x8D\""s,
                                  "\"\xF4\x90\x80\x80\""s, "{\"\xFF\":1}"s, "\xFF"s}) {
    EXPECT_EQ(readBack(text), "no JSON") << testing::PrintToString(text);
  }
}

TEST(JsonReading, FiveHundredAndTwelveLevelsAreReadAndNotOneMore) {
  EXPECT_EQ(readBack(nested('[', ']', 512)), nested('[', ']', 512));
  EXPECT_EQ(readBack(nested('[', ']', 513)), "no JSON");
  EXPECT_EQ(readBack("{\"a\":" + nested('[', ']', 511) + "}"), "{\"a\":" + nested('[', ']', 511) + "}");
  EXPECT_EQ(readBack("{\"a\":" + nested('[', ']', 512) + "}"), "no JSON");
  EXPECT_EQ(readBack(nested('[', ']', 1000000)), "no JSON");
}

TEST(JsonReading, ObjectsCountAsLevelsToo) {
  const auto objects = [](std::size_t levels) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i) text += "{\"a\":";
    return text + "1" + std::string(levels, '}');
  };
  EXPECT_EQ(readBack(objects(512)), objects(512));
  EXPECT_EQ(readBack(objects(513)), "no JSON");
}

TEST(JsonReading, TheLimitOfLevelsHoldsInMembersThatAreDropped) {
  EXPECT_EQ(readBack("{\"z\":" + nested('[', ']', 511) + "}"), "{}");
  EXPECT_EQ(readBack("{\"z\":" + nested('[', ']', 512) + "}"), "no JSON");
}

TEST(JsonReading, OfMembersWithOneNameTheLastOneCounts) {
  struct Case {
    std::string_view text, back;
  };
  for (const Case& c :
       {Case{R"({"a":1,"a":2})", R"({"a":2})"}, Case{R"({"a":1,"b":2,"a":3})", R"({"b":2,"a":3})"},
        Case{R"({"a":1,"\u0061":2})", R"({"a":2})"}, Case{R"({"a":{"x":1},"a":null})", R"({"a":null})"},
        Case{R"({"a":{"x":1,"y":2,"x":3}})", R"({"a":{"y":2,"x":3}})"},
        Case{R"([{"x":1,"x":2}])", R"([{"x":2}])"},
        Case{"{\"a\":{\"\u00e9\":1,\"e\u0301\":2}}", "{\"a\":{\"\u00e9\":1,\"e\u0301\":2}}"},
        Case{R"({"a":{"X":1,"x":2}})", R"({"a":{"X":1,"x":2}})"},
        Case{R"({"a":{"":1,"":2}})", R"({"a":{"":2}})"}}) {
    EXPECT_EQ(readBack(c.text), c.back) << c.text;
  }
}

TEST(JsonReading, OtherMembersThanTheKeptOnesAreDropped) {
  struct Case {
    std::string_view text, back;
  };
  for (const Case& c :
       {Case{R"({"z":1})", "{}"}, Case{R"({"z":1,"a":2,"y":3})", R"({"a":2})"},
        Case{R"({"z":{"a":1},"a":2})", R"({"a":2})"}, Case{R"({"z":[[{}],"a"],"b":[]})", R"({"b":[]})"},
        Case{R"({"z":{"y":{"x":[1,{"w":2}]}},"c":"d"})", R"({"c":"d"})"},
        Case{R"({"":1,"A":2,"aa":3})", "{}"}, Case{R"({"z":"text","z":null,"a":true})", R"({"a":true})"}}) {
    EXPECT_EQ(readBack(c.text), c.back) << c.text;
  }
}

TEST(JsonReading, BelowTheOutermostObjectEveryMemberIsKept) {
  EXPECT_EQ(readBack(R"({"a":{"z":1,"y":{"x":2}}})"), R"({"a":{"z":1,"y":{"x":2}}})");
  EXPECT_EQ(readBack(R"([{"z":1}])"), R"([{"z":1}])");
}

TEST(JsonReading, WhatIsDroppedIsCheckedAllTheSame) {
  for (const char* text :
       {R"({"z":01})", R"({"z":[1,]})", R"({"z":"\x"})", R"({"z":nul})", R"({"z":{"y"}})"}) {
    EXPECT_EQ(readBack(text), "no JSON") << text;
  }
}

TEST(JsonReading, MembersAreFoundByName) {
  const JsonValue object = parse(R"({"a":"x","b":null})").value();
  ASSERT_NE(object.find("a"), nullptr);
  EXPECT_EQ(*object.find("a")->text(), "x");
  ASSERT_NE(object.find("b"), nullptr) << "null is not absent";
  EXPECT_EQ(object.find("b")->serialise(), "null");
  EXPECT_EQ(object.find("c"), nullptr);
  EXPECT_EQ(object.find("A"), nullptr);
  EXPECT_EQ(parse("[\"a\"]").value().find("a"), nullptr) << "no object";
  EXPECT_EQ(parse("\"a\"").value().find("a"), nullptr) << "no object";
}

TEST(JsonReading, AMemberIsATextOnlyWhenItIsOne) {
  const JsonValue object = parse(R"({"a":"x","b":null})").value();
  EXPECT_EQ(object.textIn("a"), "x");
  EXPECT_EQ(object.textIn("b"), std::nullopt);
  EXPECT_EQ(object.textIn("c"), std::nullopt);
  EXPECT_EQ(parse("[\"a\"]").value().textIn("a"), std::nullopt) << "no object";
}

TEST(JsonReading, ANulInANameDoesNotEndIt) {
  const JsonValue object = parse(R"({"a":{"x\u0000y":1}})").value();
  const JsonValue& inner = *object.find("a");
  EXPECT_EQ(inner.find("x"), nullptr);
  EXPECT_NE(inner.find("x\0y"s), nullptr);
}

TEST(JsonReading, OnlyObjectsAreObjectsAndOnlyTextsAreTexts) {
  for (const char* text : {"null", "true", "1", "[]", "{}", "\"\""}) {
    const JsonValue value = parse(text).value();
    EXPECT_EQ(value.isObject(), text == "{}"s) << text;
    EXPECT_EQ(value.text() != nullptr, text == "\"\""s) << text;
  }
}

TEST(JsonReading, LongTextsAndManyMembersAreReadWhole) {
  const std::string text(5000000, 'x');
  EXPECT_EQ(readBack("\"" + text + "\""), "\"" + text + "\"");
  std::string members = "{\"a\":{";
  for (int i = 0; i < 100000; ++i)
    members.append(i == 0 ? "" : ",").append("\"m").append(std::to_string(i)).append("\":0");
  members += "}}";
  EXPECT_EQ(readBack(members), members);
}

}  // namespace
}  // namespace halvane
