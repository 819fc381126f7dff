#pragma once

#include <span>
#include <string_view>

namespace halvane {

/// A word that stands in a known share of the entries, and how it is asked for: often in another letter case.
struct Marker {
  std::string_view written;
  std::string_view asked;
};

/// What the entries of one language are made of. All texts are UTF-8, accents composed.
struct Language {
  std::string_view name;
  std::string_view code;   // as it stands in the front matter
  std::string_view words;  // between blanks or line feeds, frequent ones first; no marker among them
  bool spaced;             // whether blanks stand between words
  bool decomposed;         // whether accents are written as marks of their own
  std::string_view fullStop;
  Marker rare;              // in one entry of a thousand
  Marker common;            // in three entries of ten
  std::string_view absent;  // in none
};

/// English; its markers stand in the entries of every other language too, so that there is something to find
/// for a query in plain ASCII.
extern const Language english;

/// German, French, Greek, Turkish, Russian, Hindi, and English full of emoji.
extern const std::span<const Language> mixedLanguages;

/// Chinese and Japanese.
extern const std::span<const Language> cjkLanguages;

}  // namespace halvane
