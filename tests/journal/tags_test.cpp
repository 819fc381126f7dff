#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "journal/entry.h"
#include "tests/support/test_vectors.h"

namespace halvane {
namespace {

using namespace std::string_literals;
using Tags = std::vector<std::string>;

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

struct Case {
  std::string text;
  std::optional<std::string> tag;
};

void expectEach(std::initializer_list<Case> cases) {
  for (const Case& c : cases) EXPECT_EQ(Entry::normalizeTag(c.text), c.tag) << testing::PrintToString(c.text);
}

constexpr std::nullopt_t nothing = std::nullopt;

TEST(CanonicalTag, IsWhatThePlatformsTextServicesMakeOfIt) {
  for (const auto& line : vectorsIn("tags.jsonl")) {
    const std::optional<std::string> tag =
        line.at("tag").is_null() ? std::nullopt : std::optional(textOf(line, "tag"));
    EXPECT_EQ(Entry::normalizeTag(textOf(line, "text")), tag) << boost::json::serialize(line);
  }
}

TEST(CanonicalTag, IsLowerCaseWithoutHashAndWithWordsJoinedByHyphens) {
  expectEach({{"  #Work  ", "work"},
              {"##Deep Work", "deep-work"},
              {"Deep   Focus", "deep-focus"},
              {"snake_case", "snake-case"},
              {"a__b", "a-b"},
              {"a - b", "a---b"},
              {"-Idea-", "idea"},
              {"R&D", "rd"},
              {"node.js", "nodejs"},
              {"2024 Goals", "2024-goals"},
              {"# my tag", "my-tag"},
              {"Cafe\u0301", "caf\u00E9"},
              {"#", nothing},
              {"!!!", nothing},
              {"\U0001F389 party", "party"},
              {"work", "work"},
              {"deep_work", "deep-work"},
              {"deep-work", "deep-work"}});
}

TEST(CanonicalTag, OfNothingUsableIsNothing) {
  expectEach({{"", nothing},
              {" ", nothing},
              {"\t\r\n\u2028", nothing},
              {"___", nothing},
              {"---", nothing},
              {"# # #", nothing},
              {"_-_ -", nothing},
              {"👍", nothing},
              {"\u200B", nothing},
              {"\0"s, nothing}});
}

TEST(CanonicalTag, IsTheSameWhenItIsMadeAgain) {
  for (const char* tag : {"work", "a---b", "caf\u00E9", "2024-goals", "straße", "ας", "i\u0307"}) {
    EXPECT_EQ(Entry::normalizeTag(tag), tag);
  }
}

TEST(CanonicalTag, HasUpToThirtyUserPerceivedCharacters) {
  expectEach({{repeated("T", 30), repeated("t", 30)},
              {repeated("T", 31), nothing},
              {repeated("é", 30), repeated("é", 30)},
              {repeated("e\u0301", 30), repeated("é", 30)},
              {repeated("e\u0301", 31), nothing},
              {repeated("नि", 30), repeated("नि", 30)},
              {repeated("नि", 31), nothing},
              {"#" + repeated("t", 30) + "-!", repeated("t", 30)},
              {repeated("t", 30) + "👍", repeated("t", 30)},
              {repeated("t", 15) + " " + repeated("t", 14), repeated("t", 15) + "-" + repeated("t", 14)},
              {repeated("t", 15) + " " + repeated("t", 15), nothing},
              {"x" + repeated("\u0301", 1000), "x" + repeated("\u0301", 1000)}});
}

TEST(CanonicalTag, LowersCaseInFull) {
  expectEach({{"ΟΔΟΣ", "οδος"},
              {"ΟΔΟΣ ΟΔΟΣ", "οδος-οδος"},
              {"Σ", "σ"},
              {"İ", "i\u0307"},
              {"ISTANBUL", "istanbul"},
              {"STRASSE", "strasse"},
              {"Straße", "straße"},
              {"ẞ", "ß"},
              {"Ａ", "ａ"},
              {"ǅ", "ǆ"},
              {"\U00010400", "\U00010428"}});
}

TEST(CanonicalTag, DeletesWhatIsNoLetterMarkDigitOrHyphenWithoutATrace) {
  expectEach({{"a.b/c&d", "abcd"},
              {"a#b", "ab"},
              {"o'clock", "oclock"},
              {"\"quoted\"", "quoted"},
              {"(a)", "a"},
              {"a;b", "ab"},
              {"a|b", "ab"},
              {"a,b", "ab"},
              {"x²", "x"},
              {"ⅷ", nothing},
              {"\u0661\u0662", nothing},
              {"a\u0660b", "ab"},
              {"０", nothing},
              {"a\u200Db", "ab"},
              {"a\u00ADb", "ab"},
              {"a\u200Bb", "ab"},
              {"a\u2013b", "ab"},
              {"a\u2010b", "ab"},
              {"🇩🇪 de", "de"},
              {"\uFEFFbom", "bom"},
              {"a\0b"s, "ab"}});
}

TEST(CanonicalTag, HasNoOtherSignThanTheHyphen) {
  for (const char sign : "!\"#$%&'()*+,./:;<=>?@[\\]^`{|}~"s)
    EXPECT_EQ(Entry::normalizeTag("a"s + sign + "0"), "a0") << sign;
}

TEST(CanonicalTag, SeparatesWordsAtWhiteSpaceAndUnderlines) {
  expectEach({{"a\tb", "a-b"},
              {"a\nb", "a-b"},
              {"a\r\nb", "a-b"},
              {"a\u00A0b", "a-b"},
              {"a\u3000b", "a-b"},
              {"a\u2028b", "a-b"},
              {"a\u0085b", "a-b"},
              {"a _ b", "a-b"},
              {"_a_", "a"},
              {"a- b", "a--b"},
              {"a & b", "a--b"},
              {"a \u0301b", "a-b"},
              {"a\uFF3Fb", "ab"}});
}

TEST(CanonicalTag, AnUnderlineOrAHashWithAMarkIsAnotherCharacter) {
  expectEach({{"_\u0301x", "\u0301x"},
              {"#\u0301x", "\u0301x"},
              {"a_\u0301b", "a\u0301b"},
              {"##\u0301x", "\u0301x"}});
}

TEST(CanonicalTags, KeepTheirOrderAndComeOnce) {
  EXPECT_EQ(Entry::normalizeTags({"Work", "#work", "Deep Work", "!!", "deep_work"}),
            (Tags{"work", "deep-work"}));
  EXPECT_EQ(Entry::normalizeTags({"b", "a", "B", "c", "A"}), (Tags{"b", "a", "c"}));
  EXPECT_EQ(Entry::normalizeTags({"caf\u00E9", "Cafe\u0301"}), (Tags{"caf\u00E9"}));
}

TEST(CanonicalTags, LeaveOutWhatHasNoCanonicalForm) {
  EXPECT_EQ(Entry::normalizeTags({}), Tags{});
  EXPECT_EQ(Entry::normalizeTags({"", "!!", "#"}), Tags{});
  EXPECT_EQ(Entry::normalizeTags({"", "a", "!"}), Tags{"a"});
}

TEST(TagList, IsWhatThePlatformsTextServicesMakeOfIt) {
  for (const auto& line : vectorsIn("tag_lists.jsonl")) {
    Tags tags;
    for (const auto& tag : line.at("tags").as_array()) tags.emplace_back(tag.as_string());
    EXPECT_EQ(Entry::parseTags(textOf(line, "text")), tags) << boost::json::serialize(line);
  }
}

TEST(TagList, IsSplitAtCommasAndLineFeedsAndNowhereElse) {
  struct ListCase {
    std::string text;
    Tags tags;
  };
  for (const ListCase& c : {ListCase{"[Work, #Deep Work]", {"work", "deep-work"}},
                            ListCase{"work,work, Work", {"work"}},
                            ListCase{"[\"a\", \"b\"]", {"a", "b"}},
                            ListCase{"a;b", {"ab"}},
                            ListCase{"a b", {"a-b"}},
                            ListCase{"(a, b)", {"a", "b"}},
                            ListCase{"- work\n- deep work", {"work", "deep-work"}},
                            ListCase{",,", {}},
                            ListCase{"[]", {}},
                            ListCase{"", {}},
                            ListCase{"a", {"a"}},
                            ListCase{"a,", {"a"}},
                            ListCase{",a,,b,", {"a", "b"}},
                            ListCase{"a|b", {"ab"}},
                            ListCase{"[[a], [b]]", {"a", "b"}},
                            ListCase{" \t[] [a, b] \t", {"a", "b"}},
                            ListCase{"a,\u0301b", {"a", "\u0301b"}},
                            ListCase{"a\uFF0Cb", {"ab"}},
                            ListCase{"a\r\nb", {"a", "b"}},
                            ListCase{"[a\n]", {"a"}},
                            ListCase{"\n[a]\n", {"a"}},
                            ListCase{repeated("t", 31) + ", b", {"b"}}}) {
    EXPECT_EQ(Entry::parseTags(c.text), c.tags) << testing::PrintToString(c.text);
  }
}

TEST(TagList, MayBeVeryLong) {
  std::string list;
  Tags tags;
  for (int i = 0; i < 20000; ++i) {
    tags.push_back("t" + std::to_string(i));
    list.append(tags.back()).append(", ").append(tags.back()).append(",");
  }
  EXPECT_EQ(Entry::parseTags(list), tags);
}

}  // namespace
}  // namespace halvane
