#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tools/search_entries.h"

namespace halvane {
namespace {

using namespace std::string_literals;

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

// What stands below the first line of the hit for `query` in `body`.
std::string snippetOf(const std::string& body, const std::string& query) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{.body = body}.text());
  const std::string found = searchEntries(query, std::nullopt, 1);
  return found.substr(found.find('\n') + 1);
}

const std::string family = "👩\u200D👩\u200D👧";

TEST(Snippet, IsTheWholeOfAShortBodyBetweenTwoEllipses) {
  EXPECT_EQ(snippetOf("Walked to the harbour.", "harbour"), "…Walked to the harbour.…");
  EXPECT_EQ(snippetOf("harbour", "harbour"), "…harbour…");
  EXPECT_EQ(snippetOf("x", "X"), "…x…");
}

TEST(Snippet, HoldsEightyCharactersOnEachSideOfTheMatch) {
  const std::string before = "<" + repeated("b", 80);
  const std::string after = repeated("a", 80) + ">";
  EXPECT_EQ(snippetOf(before + "harbour" + after, "harbour"),
            "…" + repeated("b", 80) + "harbour" + repeated("a", 80) + "…");
  EXPECT_EQ(snippetOf(before.substr(0, 80) + "harbour" + after.substr(1), "harbour"),
            "…" + before.substr(0, 80) + "harbour" + after.substr(1) + "…");
}

TEST(Snippet, EndsWhereTheBodyEnds) {
  EXPECT_EQ(snippetOf("harbour" + repeated("a", 100), "harbour"), "…harbour" + repeated("a", 80) + "…");
  EXPECT_EQ(snippetOf("x harbour" + repeated("a", 100), "harbour"), "…x harbour" + repeated("a", 80) + "…");
  EXPECT_EQ(snippetOf(repeated("b", 100) + "harbour", "harbour"), "…" + repeated("b", 80) + "harbour…");
  EXPECT_EQ(snippetOf(repeated("b", 100) + "harbour x", "harbour"), "…" + repeated("b", 80) + "harbour x…");
}

TEST(Snippet, IsAroundTheFirstMatch) {
  EXPECT_EQ(snippetOf("one " + repeated("-", 200) + " one", "one"), "…one " + repeated("-", 79) + "…");
}

TEST(Snippet, HoldsTheWholeOfALongMatch) {
  const std::string match = repeated("harbour ", 50);
  EXPECT_EQ(snippetOf(repeated("b", 100) + match + repeated("a", 100), match),
            "…" + repeated("b", 80) + match + repeated("a", 80) + "…");
}

TEST(Snippet, ShowsTheBodysOwnSpelling) {
  EXPECT_EQ(snippetOf("Die Straße", "STRASSE"), "…Die Straße…");
  EXPECT_EQ(snippetOf("ein CAFE\u0301", "café"), "…ein CAFE\u0301…");
}

TEST(Snippet, IsOneLine) {
  EXPECT_EQ(snippetOf("one\ntwo\n\nthree", "two"), "…one two  three…");
  EXPECT_EQ(snippetOf("one\ntwo", "one\ntwo"), "…one two…");
}

TEST(Snippet, HasABlankForEveryLineFeedAlsoAfterACarriageReturn) {
  EXPECT_EQ(snippetOf("one\r\ntwo\rthree\n\r four", "two"), "…one\r two\rthree \r four…");
}

TEST(Snippet, ChangesNothingElse) {
  EXPECT_EQ(snippetOf("a\tb  c\u2028d\u0085e\vf \u00A0 harbour", "harbour"),
            "…a\tb  c\u2028d\u0085e\vf \u00A0 harbour…");
}

TEST(Snippet, IsNotTrimmedAtItsEnds) {
  EXPECT_EQ(snippetOf("x" + repeated(" ", 90) + "harbour" + repeated("\n", 90) + "x", "harbour"),
            "…" + repeated(" ", 80) + "harbour" + repeated(" ", 80) + "…");
}

TEST(Snippet, CountsUserPerceivedCharacters) {
  for (const std::string& character :
       {"é"s, "e\u0301"s, "👍🏽"s, family, "नि"s, "🇩🇪"s, "각"s, "\r\n"s, "a\u0301\u0323\u0327"s}) {
    const std::string shown = character == "\r\n" ? "\r " : character;
    EXPECT_EQ(
        snippetOf("x" + repeated(character, 100) + "harbour" + repeated(character, 100) + "x", "harbour"),
        "…" + repeated(shown, 80) + "harbour" + repeated(shown, 80) + "…")
        << character;
  }
}

TEST(Snippet, CountsFromTheStartOfTheCharacterInWhichAMatchBeginsOrEnds) {
  const std::string body = repeated("b", 100) + family + repeated("a", 100);
  EXPECT_EQ(snippetOf(body, "👧"), "…" + repeated("b", 80) + family + repeated("a", 80) + "…")
      << "begins inside the family and ends with it";
  EXPECT_EQ(snippetOf(body, "👩"), "…" + repeated("b", 80) + family + repeated("a", 79) + "…")
      << "begins with the family and ends inside it";
}

TEST(Snippet, OfAMatchThatIsALineFeedAfterACarriageReturn) {
  EXPECT_EQ(snippetOf(repeated("b", 100) + "\r\n" + repeated("a", 100), "\n"),
            "…" + repeated("b", 80) + "\r " + repeated("a", 80) + "…");
  EXPECT_EQ(snippetOf(repeated("b", 100) + "\r\n" + repeated("a", 100), "\r"),
            "…" + repeated("b", 80) + "\r " + repeated("a", 79) + "…");
}

TEST(Snippet, IsFoundInAVeryLongBody) {
  const std::string body = repeated("b", 3000000) + " harbour " + repeated("é", 1000000);
  EXPECT_EQ(snippetOf(body, "harbour"), "…" + repeated("b", 79) + " harbour " + repeated("é", 79) + "…");
}

}  // namespace
}  // namespace halvane
