#include "search/folding.h"

#include <gtest/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>

namespace halvane {
namespace {

icu::UnicodeString unfolded(char32_t character) {
  const Folding& folding = foldingOf(character);
  icu::UnicodeString text;
  for (std::size_t i = 0; i < folding.count; ++i) text += static_cast<UChar32>(foldedMark(folding.units[i]));
  return text;
}

TEST(Folding, OfEveryCodePointIsWhatIcuMakesOfItInFull) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2& nfd = *icu::Normalizer2::getNFDInstance(status);
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    icu::UnicodeString folded = nfd.normalize(icu::UnicodeString(static_cast<UChar32>(character)), status);
    folded = nfd.normalize(folded.foldCase(U_FOLD_CASE_DEFAULT), status);
    ASSERT_TRUE(U_SUCCESS(status));
    ASSERT_EQ(unfolded(character), folded) << static_cast<std::uint32_t>(character);
  }
}

TEST(Folding, EachUnitCarriesItsCombiningClass) {
  for (const char32_t character : {U'é', U'ΐ', U'\u0345', U'\u0344', U'ᾳ', U'\u0F73', U'क', U'👍'}) {
    const Folding& folding = foldingOf(character);
    for (std::size_t i = 0; i < folding.count; ++i) {
      EXPECT_EQ(folding.combiningClasses[i], u_getCombiningClass(static_cast<UChar32>(folding.units[i])));
    }
  }
}

TEST(Folding, AnIotaSubscriptStaysAMarkUntilMarksAreInOrder) {
  ASSERT_EQ(foldingOf(0x0345).count, 1);
  EXPECT_EQ(foldingOf(0x0345).units[0], U'\u0345');
  EXPECT_EQ(foldedMark(0x0345), U'ι');
  EXPECT_EQ(foldedMark(U'\u0301'), U'\u0301');
}

TEST(Folding, AMarkASkinToneAndAVowelOfASyllableContinueWhatPrecedesThem) {
  for (const char32_t character : {U'\u0301', U'\u093C', U'\u094D', U'\uFE0F', U'\u200C', U'🏽', U'\u1161',
                                   U'\u11A8', U'\u20E3', U'\u09BE'}) {
    EXPECT_TRUE(foldingOf(character).continues) << static_cast<std::uint32_t>(character);
  }
  for (const char32_t character :
       {U'a', U'é', U'\n', U'\0', U'\u200D', U'\u093F', U'न', U'👧', U'\u1100', U'가', U'🇪'}) {
    EXPECT_FALSE(foldingOf(character).continues) << static_cast<std::uint32_t>(character);
  }
}

}  // namespace
}  // namespace halvane
