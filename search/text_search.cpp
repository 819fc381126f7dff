#include "search/text_search.h"

#include <unicode/utf8.h>

#include <algorithm>

#include "search/exact_search.h"
#include "search/folded_query.h"
#include "search/folding.h"
#include "search/possible_places.h"
#include "search/search_filter.h"
#include "text/text.h"

namespace halvane {
namespace {

// The start of a segment at or after which every match begins that has `units` units up to the byte at
// `place`.
std::size_t startOfWindow(std::string_view body, std::size_t place, std::size_t units) {
  const std::size_t reach = U8_MAX_LENGTH * units;  // a unit takes at most one code point
  std::size_t start = place > reach ? startOfCodePoint(body, place - reach) : 0;
  while (!startsSegment(body, start)) start = startOfCodePoint(body, start - 1);
  return start;
}

// The start of a segment at or before which every match ends that has `units` units after the byte at
// `place`; the end of the body where the segment before would be very long.
std::size_t endOfWindow(std::string_view body, std::size_t place, std::size_t units) {
  constexpr std::size_t maxWindow = 4096;
  std::size_t end = std::min(place + 1 + U8_MAX_LENGTH * units, body.size());
  while (end < body.size() && U8_IS_TRAIL(body[end])) ++end;
  for (std::size_t next = end; !startsSegment(body, end); end = next) {
    if (end - place > maxWindow) return body.size();
    nextCodePoint(body, next);
  }
  return end;
}

// The start of the code point before `position`. In bytes that are not UTF-8, it may be the start of nothing.
std::size_t previousStart(std::string_view bytes, std::size_t position) {
  std::size_t start = position - 1;
  while (start > 0 && position - start < U8_MAX_LENGTH && U8_IS_TRAIL(bytes[start])) --start;
  return start;
}

// Like startsSegment, but for any bytes.
bool mayStartSegment(std::string_view bytes, std::size_t position) {
  return position == 0 || position == bytes.size() || !foldingOf(nextOfAnyBytes(bytes, position)).continues;
}

// If query and body consist of the same few letters, nearly every place is possible, and comparing at each of
// them would take too long. So after some comparisons, the exact search takes over. It takes linear time.
std::size_t mostComparisons(std::string_view body) {
  return body.size() / 16;
}

}  // namespace

struct TextSearch::Query {
  FoldedQuery folded;
  ExactSearch exact;
  std::optional<SearchFilter> filter;

  Query(std::string_view query, LetterI letterI);
  bool mayMatchAround(std::string_view body, std::size_t seam, std::size_t& comparisons) const;
  bool mayMatchAfter(std::string_view body, std::size_t seam, std::size_t& comparisons) const;
  bool mayMatchBefore(std::string_view body, std::size_t seam, std::size_t& comparisons) const;
  std::optional<TextMatch> findExactly(std::string_view body, std::size_t from) const;
};

TextSearch::Query::Query(std::string_view query, LetterI letterI)
    : folded(query, letterI),
      exact(folded),
      filter(SearchFilter::forQuery(std::u32string_view(folded.units).substr(0, folded.count()),
                                    letterI == LetterI::dottedAndDotless)) {}

TextSearch::TextSearch(std::string_view query, LetterI letterI)
    : query_(std::make_unique<Query>(query, letterI)) {}

TextSearch::~TextSearch() = default;
TextSearch::TextSearch(TextSearch&&) noexcept = default;

// Whether a match may have its seam (see SearchFilter) at `seam`. Compares the text around it as far as each
// code point is a whole segment, and counts the comparisons.
bool TextSearch::Query::mayMatchAround(std::string_view body, std::size_t seam,
                                       std::size_t& comparisons) const {
  return mayMatchAfter(body, seam, comparisons) && mayMatchBefore(body, seam, comparisons);
}

bool TextSearch::Query::mayMatchAfter(std::string_view body, std::size_t seam,
                                      std::size_t& comparisons) const {
  std::size_t at = seam;
  for (std::size_t matched = filter->unitsBefore; folded.units[matched] != noUnit;) {
    if (at == body.size()) return false;
    if (isAsciiSegment(body, at)) {
      const char32_t unit = folded.asciiUnits[static_cast<unsigned char>(body[at++])];
      if (unit != folded.units[matched++]) return false;
      ++comparisons;
      continue;
    }
    const Folding& folding = foldingAlone(nextOfAnyBytes(body, at), folded.letterI);
    if (!mayStartSegment(body, at)) return true;
    for (std::size_t i = 0; i < folding.count; ++i, ++matched, ++comparisons) {
      if (foldedMark(folding.units[i]) != folded.units[matched]) return false;
    }
  }
  return true;
}

bool TextSearch::Query::mayMatchBefore(std::string_view body, std::size_t seam,
                                       std::size_t& comparisons) const {
  std::size_t at = seam;
  for (std::size_t unmatched = filter->unitsBefore; unmatched > 0;) {
    if (at == 0) return false;
    if (!mayStartSegment(body, at)) return true;
    at = previousStart(body, at);
    std::size_t next = at;
    const Folding& folding = foldingAlone(nextOfAnyBytes(body, next), folded.letterI);
    if (folding.continues) return true;
    for (std::size_t i = folding.count; i > 0; --i, --unmatched, ++comparisons) {
      if (unmatched == 0 || foldedMark(folding.units[i - 1]) != folded.units[unmatched - 1]) return false;
    }
  }
  return true;
}

std::optional<TextMatch> TextSearch::Query::findExactly(std::string_view body, std::size_t from) const {
  return exact.find(folded, body, from);
}

std::optional<TextMatch> TextSearch::find(std::string_view body) const {
  const Query& query = *query_;
  if (!query.filter) return query.findExactly(body, 0);

  const std::size_t count = query.folded.count();
  const std::size_t before = query.filter->unitsBefore;
  std::size_t comparisons = 0;
  PossiblePlaces places(*query.filter, body);
  for (std::size_t place = places.next(); place != std::string_view::npos; place = places.next()) {
    if (comparisons > mostComparisons(body))
      return query.findExactly(body, startOfWindow(body, place, before));
    if (!query.mayMatchAround(body, place + 1, ++comparisons)) continue;
    const std::size_t begin = startOfWindow(body, place, before);
    const std::size_t end = endOfWindow(body, place, count - before);
    if (const auto match = query.findExactly(body.substr(0, end), begin)) return match;
    if (end == body.size()) return std::nullopt;  // no later place can match either
    comparisons += count + end - begin;
  }
  return std::nullopt;
}

bool TextSearch::mayBeWithin(std::string_view bytes) const {
  const Query& query = *query_;
  if (!query.filter) return true;
  std::size_t comparisons = 0;
  PossiblePlaces places(*query.filter, bytes);
  for (std::size_t place = places.next(); place != std::string_view::npos; place = places.next()) {
    if (comparisons > mostComparisons(bytes)) return true;
    if (query.mayMatchAround(bytes, place + 1, ++comparisons)) return true;
  }
  return false;
}

}  // namespace halvane
