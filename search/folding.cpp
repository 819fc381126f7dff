#include "search/folding.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <memory>

#include "text/icu.h"

namespace halvane {
namespace {

icu::UnicodeString decomposition(UChar32 character) {
  icu::UnicodeString mapping;
  return icuNfc().getDecomposition(character, mapping) ? mapping : icu::UnicodeString(character);
}

void append(Folding& folding, UChar32 unit) {
  folding.units.at(folding.count) = static_cast<char32_t>(unit);
  folding.combiningClasses.at(folding.count) = u_getCombiningClass(unit);
  ++folding.count;
}

Folding makeFolding(UChar32 character) {
  Folding folding{};
  folding.continues = u_hasBinaryProperty(character, UCHAR_GRAPHEME_EXTEND) ||
                      u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) ||
                      !icuNfc().hasBoundaryBefore(character);
  const icu::UnicodeString parts = decomposition(character);
  for (std::int32_t i = 0; i < parts.length(); i = parts.moveIndex32(i, 1)) {
    const UChar32 part = parts.char32At(i);
    icu::UnicodeString folded(part);
    if (part != iotaSubscript) folded.foldCase(U_FOLD_CASE_DEFAULT);
    for (std::int32_t j = 0; j < folded.length(); j = folded.moveIndex32(j, 1)) {
      const icu::UnicodeString units = decomposition(folded.char32At(j));
      for (std::int32_t k = 0; k < units.length(); k = units.moveIndex32(k, 1))
        append(folding, units.char32At(k));
    }
  }
  return folding;
}

}  // namespace

constinit std::array<const Folding*, 0x110000 / foldingPageSize> foldingPages{};

const Folding* makeFoldingPage(char32_t character) {
  auto page = std::make_unique<Folding[]>(foldingPageSize);
  const char32_t first = character - character % foldingPageSize;
  for (char32_t i = 0; i < foldingPageSize; ++i) page[i] = makeFolding(static_cast<UChar32>(first + i));
  return foldingPages[character / foldingPageSize] = page.release();
}

}  // namespace halvane
