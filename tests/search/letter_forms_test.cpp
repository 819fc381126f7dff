#include "search/letter_forms.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "search/folding.h"

// The fast search looks for these forms. If one is missing, an entry is never found. So each statement here
// is checked for every code point.

namespace halvane {
namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;

std::u32string unitsOf(const Folding& folding) {
  return {folding.units.begin(), folding.units.begin() + folding.count};
}

bool isMark(char32_t unit) {
  return u_getCombiningClass(static_cast<UChar32>(unit)) != 0;
}

bool holds(const std::vector<char32_t>& forms, char32_t form) {
  return std::find(forms.begin(), forms.end(), form) != forms.end();
}

template <typename Check>
void forEachChangedCodePoint(Check check) {
  for (char32_t character = 0; character <= lastCodePoint; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    const Folding& folding = foldingOf(character);
    if (unitsOf(folding) != std::u32string(1, character)) check(character, folding);
  }
}

TEST(LetterForms, HoldEveryCodePointThatFoldsToThePlainLetter) {
  forEachChangedCodePoint([](char32_t character, const Folding& folding) {
    if (folding.count != 1 || folding.continues) return;
    const LetterForms forms = formsOf(unitsOf(folding));
    if (forms.first.empty()) return;
    EXPECT_TRUE(holds(forms.first, character) && holds(forms.last, character))
        << std::hex << static_cast<std::uint32_t>(character);
  });
}

TEST(LetterForms, HoldEveryCodePointThatFoldsToAnAsciiLetterWithMarks) {
  int composed = 0;
  forEachChangedCodePoint([&](char32_t character, const Folding& folding) {
    const std::u32string units = unitsOf(folding);
    if (units[0] >= 0x80 || units.size() < 2 || !std::all_of(units.begin() + 1, units.end(), isMark)) return;
    ++composed;
    const LetterForms forms = formsOf(units);
    EXPECT_TRUE(holds(forms.first, character) && holds(forms.last, character) &&
                holds(forms.last, units.back()))
        << std::hex << static_cast<std::uint32_t>(character);
  });
  EXPECT_GT(composed, 400);
}

TEST(LetterForms, HoldAComposedLetterThatLacksTheLastMarks) {
  const LetterForms forms = formsOf(U"e\u0302\u0301");  // ế, also as ê and an acute accent
  for (const char32_t form : {U'e', U'E', U'ê', U'Ê', U'ế', U'Ế'}) {
    EXPECT_TRUE(holds(forms.first, form)) << static_cast<std::uint32_t>(form);
  }
  EXPECT_TRUE(holds(forms.last, U'\u0301'));
}

TEST(LetterForms, HoldEveryMarkThatIsOthersUnderASecondName) {
  int held = 0;
  forEachChangedCodePoint([&](char32_t character, const Folding& folding) {
    const std::u32string marks = unitsOf(folding);
    if (!std::all_of(marks.begin(), marks.end(), isMark) || folding.units[0] == 0x0345) return;
    ++held;
    EXPECT_TRUE(holds(formsOf(U"a" + marks).last, character))
        << std::hex << static_cast<std::uint32_t>(character);
  });
  EXPECT_EQ(held, 7);
}

TEST(LetterForms, HoldEveryKoreanSyllableWholeAndInParts) {
  for (char32_t syllable = 0xAC00; syllable <= 0xD7A3; ++syllable) {
    const std::u32string parts = unitsOf(foldingOf(syllable));
    const LetterForms forms = formsOf(parts);
    ASSERT_TRUE(holds(forms.first, syllable) && holds(forms.first, parts.front()) &&
                holds(forms.last, syllable) && holds(forms.last, parts.back()))
        << std::hex << static_cast<std::uint32_t>(syllable);
    const char32_t open = syllable - (syllable - 0xAC00) % 28;
    ASSERT_TRUE(holds(forms.first, open));
  }
}

TEST(LetterForms, AreUnknownWhereALetterMayComeFromElsewhere) {
  EXPECT_TRUE(formsOf(U"\u03B9").first.empty()) << "iota, which the iota subscript turns into";
  EXPECT_TRUE(formsOf(U"\u0301").first.empty()) << "a mark without its letter";
  EXPECT_TRUE(formsOf(U"\u0915\u093C").first.empty()) << "a letter that is never composed";
  EXPECT_TRUE(formsOf(U"\u1113\u1161").first.empty()) << "an old Korean syllable";
}

TEST(SharedCodePoints, AreAllKnown) {
  int shared = 0;
  forEachChangedCodePoint([&](char32_t character, const Folding& folding) {
    for (std::size_t i = 0; i + 1 < folding.count; ++i) {
      if (foldingOf(folding.units[i + 1]).continues) continue;
      ++shared;
      EXPECT_TRUE(mayShareCodePoint(folding.units[i], foldedMark(folding.units[i + 1])))
          << std::hex << static_cast<std::uint32_t>(character);
    }
  });
  EXPECT_GT(shared, 10);
}

TEST(SharedCodePoints, AreFormsOfEachPairThatTheyBeginOrEndWith) {
  int held = 0;
  forEachChangedCodePoint([&](char32_t character, const Folding& folding) {
    const std::u32string units = unitsOf(folding);
    if (units.size() < 2 || foldedMark(units.back()) == U'\u03B9') return;
    if (std::any_of(units.begin() + 1, units.end(), [](char32_t unit) { return foldingOf(unit).continues; }))
      return;
    ++held;
    EXPECT_TRUE(holds(formsOfPair(units[0], units[1]).first, character) &&
                holds(formsOfPair(units[units.size() - 2], units.back()).last, character))
        << std::hex << static_cast<std::uint32_t>(character);
  });
  EXPECT_EQ(held, 17);
}

TEST(SharedCodePoints, AreNoneOfOrdinaryNeighbours) {
  EXPECT_FALSE(mayShareCodePoint(U'h', U'a'));
  EXPECT_FALSE(mayShareCodePoint(U's', U'a'));
}

}  // namespace
}  // namespace halvane
