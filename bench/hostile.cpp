#include "bench/hostile.h"

#include "bench/random.h"

namespace halvane {
namespace {

constexpr std::size_t bigBody = 10'000'000;
constexpr std::size_t longQuery = 4000;

// `part` again and again, whole, up to `size` bytes.
std::string repeated(std::string_view part, std::size_t size) {
  std::string text;
  text.reserve(size);
  while (text.size() + part.size() <= size) text += part;
  return text;
}

std::string thousandLetters() {
  Random random(1);
  std::string text;
  while (text.size() < 1000) text += static_cast<char>('a' + random.below(26));
  return text;
}

std::vector<std::string> periodicBodies() {
  return {repeated(thousandLetters(), bigBody)};
}

std::vector<HostileQuery> periodicQueries() {
  const std::string period = repeated(thousandLetters(), longQuery);
  std::string changed = period;
  changed[longQuery / 2] = '#';
  return {{"last letter differs", period + "#"},
          {"middle letter differs", changed},
          {"first differs", "#" + period}};
}

std::vector<std::string> ababBodies() {
  return std::vector<std::string>(10, repeated("ab", bigBody / 10));
}

std::vector<HostileQuery> ababQueries() {
  const std::string abab = repeated("ab", longQuery);
  return {{"abab...c", abab + "c"}, {"cabab...", "c" + abab}, {"ab...cab...", abab + "c" + abab}};
}

std::vector<std::string> oneLetterBodies() {
  return {repeated("a", bigBody), repeated("ж", bigBody)};
}

std::vector<HostileQuery> oneLetterQueries() {
  return {{"a...ab", repeated("a", longQuery) + "b"},
          {"ba...a", "b" + repeated("a", longQuery)},
          {"Cyrillic Zh...Zhb", repeated("Ж", longQuery) + "б"},
          {"aab", "aab"}};
}

// Acute alone, and acute and dot below in turns: their classes differ, so each pair must change places.
std::vector<std::string> markBodies() {
  return {"e" + repeated("\u0301", bigBody), "e" + repeated("\u0301\u0323", bigBody)};
}

std::vector<HostileQuery> markQueries() {
  return {{"e", "e"},
          {"e acute", "é"},
          {"two marks", "\u0323\u0301"},
          {"a letter and 2,000 marks", "e" + repeated("\u0323\u0301", longQuery) + "x"}};
}

// Each folds into more than one letter, into a letter of another length, or differs by language.
struct AwkwardLetter {
  std::string_view name;
  std::string_view letter;
};

constexpr AwkwardLetter awkwardLetters[] = {
    {"sharp s", "ß"},          {"n with an apostrophe", "ŉ"}, {"dotted I", "İ"},
    {"Kelvin sign", "\u212A"}, {"iota with two marks", "ΐ"},  {"ffi as one letter", "ﬃ"}};

std::vector<std::string> foldingBodies() {
  std::vector<std::string> bodies;
  for (const AwkwardLetter& awkward : awkwardLetters) bodies.push_back(repeated(awkward.letter, bigBody / 5));
  return bodies;
}

std::vector<HostileQuery> foldingQueries() {
  std::vector<HostileQuery> queries = {{"s...st", repeated("s", longQuery) + "t"},
                                       {"k...kc", repeated("k", longQuery) + "c"},
                                       {"ffi...x", repeated("ffi", longQuery) + "x"},
                                       {"iota, s, k, c", "ιskc"}};
  for (const AwkwardLetter& awkward : awkwardLetters) {
    queries.push_back({awkward.name, repeated(awkward.letter, longQuery) + "x"});
  }
  return queries;
}

const HostileJournal journals[] = {{"periodic", periodicBodies, periodicQueries},
                                   {"abab", ababBodies, ababQueries},
                                   {"one-letter", oneLetterBodies, oneLetterQueries},
                                   {"marks", markBodies, markQueries},
                                   {"foldings", foldingBodies, foldingQueries}};

}  // namespace

const std::span<const HostileJournal> hostileJournals = journals;

}  // namespace halvane
