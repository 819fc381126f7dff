#include "search/search_filter.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "search/commonness.h"
#include "search/query_letters.h"
#include "text/text.h"

namespace halvane {
namespace {

std::string utf8Of(char32_t character) {
  std::string text;
  appendCodePoint(text, character);
  return text;
}

// The bytes that may be `index` places from the start of a form; nothing when there are too many, or when a
// form is too short.
std::optional<ByteSet> bytesAt(const std::vector<char32_t>& forms, std::size_t index) {
  ByteSet set;
  if (forms.empty()) return std::nullopt;
  for (const char32_t form : forms) {
    const std::string bytes = utf8Of(form);
    if (index >= bytes.size() || !set.add(static_cast<std::uint8_t>(bytes[index]))) return std::nullopt;
  }
  return set;
}

// The same, for the bytes that may be `index` places before the last one.
std::optional<ByteSet> bytesFromEnd(const std::vector<char32_t>& forms, std::size_t index) {
  ByteSet set;
  if (forms.empty()) return std::nullopt;
  for (const char32_t form : forms) {
    const std::string bytes = utf8Of(form);
    if (index >= bytes.size() || !set.add(static_cast<std::uint8_t>(bytes[bytes.size() - 1 - index])))
      return std::nullopt;
  }
  return set;
}

// Of a query with more letters, we consider only the first ones: counting all seams would take more than
// linear time. The limit is high, because the one good seam may come late: "abab...abc" in a body of
// "abab...". A repeated seam is hardly ever better the second time, so each is considered once.
constexpr std::size_t maxConsidered = 16384;

// How often each seam, a letter and the next one, occurs among the letters that we consider.
using SeamCounts = std::map<std::u32string_view, unsigned>;

SeamCounts countSeams(const QueryLetters& letters) {
  SeamCounts counts;
  for (std::size_t i = 0; i < maxConsidered && i + 1 < letters.count(); ++i)
    ++counts[letters.units(i, i + 1)];
  return counts;
}

// How much more often the two letters occur side by side than their bytes suggest. A body may repeat pieces
// of the query. A seam that occurs twice in the query is then frequent in the body, and each place takes a
// long comparison. A seam that occurs once is better, however common it is elsewhere.
std::uint64_t attraction(std::u32string_view seam, const SeamCounts& counts) {
  return std::uint64_t{areOftenTogether(seam) ? 8U : 1U} * (counts.at(seam) > 1 ? 1000U : 1U);
}

// The best of the filters that were considered.
class Choice {
 public:
  void consider(const SearchFilter& filter, std::uint64_t common) {
    if (best_ && common >= leastCommon_) return;
    best_ = filter;
    leastCommon_ = common;
  }
  const std::optional<SearchFilter>& best() const { return best_; }

 private:
  std::optional<SearchFilter> best_;
  std::uint64_t leastCommon_ = 0;
};

// For the only letter of a query. Its last byte alone would rule out little: many letters of a script share
// it.
std::optional<SearchFilter> filterForLetter(QueryLetters& letters) {
  const std::vector<char32_t> forms = letters.lastForms(0);
  const std::optional<ByteSet> last = bytesFromEnd(forms, 0);
  if (!last) return std::nullopt;
  if (const auto before = bytesFromEnd(forms, 1)) return SearchFilter{*before, *last, 1, 2, letters.end(0)};
  return SearchFilter{*last, *last, 0, 1, letters.end(0)};
}

}  // namespace

std::optional<SearchFilter> SearchFilter::forQuery(std::u32string_view units, bool turkic) {
  QueryLetters letters(units, turkic);
  if (letters.count() == 1) return filterForLetter(letters);
  const SeamCounts counts = countSeams(letters);
  Choice choice;
  std::set<std::u32string_view> considered;
  for (std::size_t i = 0; i < maxConsidered && i < letters.count(); ++i) {
    const std::u32string_view seam = letters.units(i, std::min(i + 1, letters.count() - 1));
    if (considered.contains(seam) || letters.shareCodePoint(i)) continue;
    const std::optional<ByteSet> before = bytesFromEnd(letters.lastForms(i), 0);
    if (!before) continue;
    considered.insert(seam);
    SearchFilter filter{*before, *before, 0, 1, letters.end(i)};
    choice.consider(filter, std::uint64_t{1000} * commonness(*before));
    if (i + 1 == letters.count()) continue;
    const std::uint64_t times = attraction(seam, counts);
    const std::vector<char32_t> next = letters.firstForms(i + 1);
    for (filter.distance = 1; filter.distance <= U8_MAX_LENGTH; ++filter.distance) {
      const std::optional<ByteSet> after = bytesAt(next, filter.distance - 1);
      if (!after) continue;
      filter.second = *after;
      choice.consider(filter, times * commonness(*before) * commonness(*after));
    }
  }
  return choice.best();
}

}  // namespace halvane
