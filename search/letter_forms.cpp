#include "search/letter_forms.h"

#include <unicode/uniset.h>
#include <unicode/uset.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <utility>

#include "search/folding.h"
#include "text/icu.h"

namespace halvane {
namespace {

// Code points that decompose to another one and are not case variants of it.
constexpr std::array<std::pair<char32_t, char32_t>, 9> secondNames = {{
    {0x0374, 0x02B9},
    {0x037E, 0x003B},
    {0x0387, 0x00B7},
    {0x1FEF, 0x0060},
    {0x1FFD, 0x00B4},
    {0x2000, 0x2002},
    {0x2001, 0x2003},
    {0x2329, 0x3008},
    {0x232A, 0x3009},
}};

// The blocks with Chinese characters that decompose to another one.
constexpr std::array<std::pair<char32_t, char32_t>, 2> ideographBlocks = {
    {{0xF900, 0xFAFF}, {0x2F800, 0x2FA1F}}};
constexpr char32_t firstIdeograph = 0x3400;

void addSecondNames(char32_t unit, std::vector<char32_t>& forms) {
  for (const auto& [second, name] : secondNames) {
    if (name == unit) forms.push_back(second);
  }
  if (unit < firstIdeograph) return;
  for (const auto& [first, last] : ideographBlocks) {
    for (char32_t character = first; character <= last; ++character) {
      icu::UnicodeString mapping;
      const bool mapped = icuNfc().getRawDecomposition(static_cast<UChar32>(character), mapping);
      if (mapped && static_cast<char32_t>(mapping.char32At(0)) == unit) forms.push_back(character);
    }
  }
}

void addCaseVariants(std::vector<char32_t>& forms) {
  icu::UnicodeSet variants;
  for (const char32_t form : forms) variants.add(static_cast<UChar32>(form));
  variants.closeOver(USET_CASE_INSENSITIVE);
  if (variants.isBogus()) throw std::bad_alloc();
  for (std::int32_t i = 0; i < variants.size(); ++i) {
    const UChar32 variant = variants.charAt(i);
    if (variant >= 0) forms.push_back(static_cast<char32_t>(variant));
  }
}

// Keeps each form once, and only those that begin as the letter does.
void keepFormsOf(char32_t unit, std::vector<char32_t>& forms) {
  std::sort(forms.begin(), forms.end());
  forms.erase(std::unique(forms.begin(), forms.end()), forms.end());
  std::erase_if(forms, [unit](char32_t form) { return foldingOf(form).units[0] != unit; });
}

// All that fold to the one unit.
std::vector<char32_t> plainForms(char32_t unit) {
  std::vector<char32_t> forms = {unit};
  addCaseVariants(forms);
  addSecondNames(unit, forms);
  std::erase_if(forms, [](char32_t form) { return foldingOf(form).count != 1; });
  keepFormsOf(unit, forms);
  return forms;
}

// Marks that decompose to another mark or to several.
constexpr std::array<char32_t, 7> composedMarks = {0x0340, 0x0341, 0x0343, 0x0344, 0x0F73, 0x0F75, 0x0F81};

bool standsForOneOf(std::u32string_view marks, char32_t composedMark) {
  const Folding& folding = foldingOf(composedMark);
  return std::any_of(folding.units.begin(), folding.units.begin() + folding.count,
                     [marks](char32_t unit) { return marks.find(unit) != std::u32string_view::npos; });
}

// An ASCII letter with marks: it begins alone or composed with any of them, and ends with one of them or
// composed with it. Any mark may be the last, because marks may be written in more than one order.
LetterForms markedForms(char32_t unit, std::u32string_view marks) {
  const std::vector<char32_t> bare = plainForms(unit);
  std::vector<char32_t> composed;
  for (std::size_t i = 0; i < bare.size() + composed.size(); ++i) {
    const char32_t form = i < bare.size() ? bare[i] : composed[i - bare.size()];
    for (const char32_t mark : marks) {
      const UChar32 both = icuNfc().composePair(static_cast<UChar32>(form), static_cast<UChar32>(mark));
      if (both < 0) continue;
      const auto known = std::find(composed.begin(), composed.end(), static_cast<char32_t>(both));
      if (known == composed.end()) composed.push_back(static_cast<char32_t>(both));
    }
  }
  addCaseVariants(composed);
  keepFormsOf(unit, composed);

  LetterForms forms{bare, composed};
  forms.first.insert(forms.first.end(), composed.begin(), composed.end());
  forms.last.insert(forms.last.end(), marks.begin(), marks.end());
  for (const char32_t mark : composedMarks) {
    if (standsForOneOf(marks, mark)) forms.last.push_back(mark);
  }
  return forms;
}

// A Korean syllable: as one code point, or its consonant, vowel and second consonant one by one (Unicode,
// section 3.12). Empty for old syllables, which are always written apart.
LetterForms syllableForms(std::u32string_view parts) {
  constexpr char32_t leads = 0x1100, vowels = 0x1161, trails = 0x11A7, syllables = 0xAC00;
  const char32_t lead = parts[0] - leads;
  const char32_t vowel = parts[1] - vowels;
  const char32_t trail = parts.size() == 3 ? parts[2] - trails : 0;
  if (lead > 18 || vowel > 20 || trail > 27) return {};
  const char32_t open = syllables + (lead * 21 + vowel) * 28;
  LetterForms forms{{parts[0], open}, {open + trail, parts.back()}};
  if (trail != 0) forms.first.push_back(open + trail);
  return forms;
}

// Characters that fold to several letters, without those whose last one is an iota.
struct LettersInOne {
  char32_t character;
  std::u32string_view letters;
};
constexpr std::array<LettersInOne, 17> lettersInOne = {{
    {0x00DF, U"ss"},
    {0x1E9E, U"ss"},
    {0x0149, U"\u02BCn"},
    {0x1E9A, U"a\u02BE"},
    {0xFB00, U"ff"},
    {0xFB01, U"fi"},
    {0xFB02, U"fl"},
    {0xFB03, U"ffi"},
    {0xFB04, U"ffl"},
    {0xFB05, U"st"},
    {0xFB06, U"st"},
    {0x0587, U"\u0565\u0582"},
    {0xFB13, U"\u0574\u0576"},
    {0xFB14, U"\u0574\u0565"},
    {0xFB15, U"\u0574\u056B"},
    {0xFB16, U"\u057E\u0576"},
    {0xFB17, U"\u0574\u056D"},
}};

bool isMark(char32_t unit) {
  return foldingOf(unit).combiningClasses[0] != 0;
}

}  // namespace

LetterForms formsOf(std::u32string_view letter) {
  const char32_t unit = letter[0];
  const std::u32string_view rest = letter.substr(1);
  if (foldingOf(unit).continues || unit == iota) return {};
  if (rest.empty()) {
    const std::vector<char32_t> forms = plainForms(unit);
    return {forms, forms};
  }
  if (unit < 0x80 && std::all_of(rest.begin(), rest.end(), isMark)) return markedForms(unit, rest);
  return rest.size() <= 2 ? syllableForms(letter) : LetterForms();
}

bool mayShareCodePoint(char32_t left, char32_t right) {
  const std::array pair = {left, right};
  return right == iota || std::any_of(lettersInOne.begin(), lettersInOne.end(), [&](const auto& one) {
           return one.letters.find(std::u32string_view(pair.data(), pair.size())) !=
                  std::u32string_view::npos;
         });
}

LetterForms formsOfPair(char32_t left, char32_t right) {
  const std::array pair = {left, right};
  const std::u32string_view text(pair.data(), pair.size());
  LetterForms forms;
  for (const LettersInOne& one : lettersInOne) {
    if (one.letters.starts_with(text)) forms.first.push_back(one.character);
    if (one.letters.ends_with(text)) forms.last.push_back(one.character);
  }
  return forms;
}

}  // namespace halvane
