#include "search/text_search.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "search/folding.h"
#include "search/search_filter.h"
#include "text/text.h"

namespace halvane {
namespace {

constexpr char32_t noUnit = 0xFFFFFFFF;  // what no text folds to

bool startsSegment(std::string_view text, std::size_t position) {
  return position == 0 || position == text.size() || !foldingOf(nextCodePoint(text, position)).continues;
}

// The start of a segment at which, or behind which, every match begins that has `units` units up to the byte
// at `place`.
std::size_t startOfWindow(std::string_view body, std::size_t place, std::size_t units) {
  const std::size_t reach = U8_MAX_LENGTH * units;  // a unit takes a code point at the most
  std::size_t start = place > reach ? startOfCodePoint(body, place - reach) : 0;
  while (!startsSegment(body, start)) start = startOfCodePoint(body, start - 1);
  return start;
}

// The start of a segment at or behind which every match ends that has `units` units behind the byte at
// `place`; nothing where that is so far away that it isn't worth looking at what lies between alone.
std::optional<std::size_t> endOfWindow(std::string_view body, std::size_t place, std::size_t units) {
  constexpr std::size_t longest = 4096;
  std::size_t end = std::min(place + 1 + U8_MAX_LENGTH * units, body.size());
  while (end < body.size() && U8_IS_TRAIL(body[end])) ++end;
  for (std::size_t next = end; !startsSegment(body, end); end = next) {
    if (end - place > longest) return std::nullopt;
    nextCodePoint(body, next);
  }
  return end - place > longest ? std::nullopt : std::optional(end);
}

}  // namespace

struct TextSearch::Query {
  LetterI letterI;
  std::u32string units;
  std::array<char32_t, 0x80> asciiUnits;  // what each ASCII character folds to
  // For each number of units matched, how many still are when the next one differs (Knuth, Morris and Pratt).
  std::vector<std::size_t> fallBack;
  std::optional<SearchFilter> filter;

  void makeFallBack();
  bool mayMatchAt(std::string_view body, std::size_t place, std::size_t& steps) const;
  bool mayContinueAt(std::string_view body, std::size_t at, std::size_t& steps) const;
  bool mayEndAt(std::string_view body, std::size_t at, std::size_t& steps) const;
  std::optional<TextMatch> find(std::string_view body, std::size_t from) const;
};

TextSearch::TextSearch(std::string_view query, LetterI letterI) : query_(std::make_unique<Query>()) {
  query_->letterI = letterI;
  SegmentFolder folder(letterI);
  for (std::size_t at = 0; at < query.size();) {
    for (const SegmentFolder::Unit& unit : *folder.fold(query, at, SIZE_MAX)) query_->units += unit.character;
  }
  for (char32_t character = 0; character < 0x80; ++character) {
    query_->asciiUnits[character] = foldingAlone(character, letterI).units[0];
  }
  query_->filter = SearchFilter::forQuery(query_->units, letterI == LetterI::dottedAndDotless);
  query_->units += noUnit;
  query_->makeFallBack();
}

TextSearch::~TextSearch() = default;
TextSearch::TextSearch(TextSearch&&) noexcept = default;
TextSearch& TextSearch::operator=(TextSearch&&) noexcept = default;

void TextSearch::Query::makeFallBack() {
  fallBack.assign(2, 0);
  for (std::size_t i = 1; i + 1 < units.size(); ++i) {
    std::size_t shorter = fallBack[i];
    while (shorter > 0 && units[shorter] != units[i]) shorter = fallBack[shorter];
    fallBack.push_back(units[shorter] == units[i] ? shorter + 1 : 0);
  }
}

// Whether a match may have its seam (see SearchFilter) behind the byte at `place`. Compares what stands
// around it as far as each code point is a segment of its own; `steps` counts the comparisons.
bool TextSearch::Query::mayMatchAt(std::string_view body, std::size_t place, std::size_t& steps) const {
  return mayContinueAt(body, place + 1, steps) && mayEndAt(body, place + 1, steps);
}

// The part behind the seam.
bool TextSearch::Query::mayContinueAt(std::string_view body, std::size_t at, std::size_t& steps) const {
  for (std::size_t wanted = filter->unitsBefore(); units[wanted] != noUnit;) {
    if (at == body.size()) return false;
    if (isAscii(body[at]) && (at + 1 == body.size() || isAscii(body[at + 1]))) {
      if (asciiUnits[static_cast<unsigned char>(body[at++])] != units[wanted++]) return false;
      ++steps;
      continue;
    }
    const Folding& folding = foldingAlone(nextCodePoint(body, at), letterI);
    if (!startsSegment(body, at)) return true;
    for (std::size_t i = 0; i < folding.count; ++i, ++wanted, ++steps) {
      if (foldedMark(folding.units[i]) != units[wanted]) return false;
    }
  }
  return true;
}

// The part in front of the seam, which is at `at`.
bool TextSearch::Query::mayEndAt(std::string_view body, std::size_t at, std::size_t& steps) const {
  for (std::size_t wanted = filter->unitsBefore(); wanted > 0;) {
    if (at == 0) return false;
    if (!startsSegment(body, at)) return true;
    at = startOfCodePoint(body, at - 1);
    std::size_t next = at;
    const Folding& folding = foldingAlone(nextCodePoint(body, next), letterI);
    if (folding.continues) return true;
    for (std::size_t i = folding.count; i > 0; --i, --wanted, ++steps) {
      if (wanted == 0 || foldedMark(folding.units[i - 1]) != units[wanted - 1]) return false;
    }
  }
  return true;
}

// The first match that begins at or after `from`, which must be the start of a segment: the exact search.
std::optional<TextMatch> TextSearch::Query::find(std::string_view body, std::size_t from) const {
  constexpr std::size_t insideSegment = std::string_view::npos;
  const std::size_t count = units.size() - 1;
  std::vector<std::size_t> origins(count, insideSegment);  // where the last units begin, as many as there are
  std::size_t oldest = 0;                                  // of them
  std::size_t matched = 0;

  // Takes the next unit of the body: the first one of the segment at `origin`, or one further inside it.
  // Behind the query's units stands one that no text has, so where all are matched the next one differs.
  const auto add = [&matched, &oldest, count, wanted = units.data(), back = fallBack.data(),
                    ring = origins.data()](char32_t unit, std::size_t origin) {
    while (wanted[matched] != unit && matched > 0) matched = back[matched];
    if (wanted[matched] == unit) ++matched;
    ring[oldest] = origin;
    if (++oldest == count) oldest = 0;
  };

  SegmentFolder folder(letterI);
  for (std::size_t at = from; at < body.size();) {
    std::size_t origin = at;
    std::size_t next = at;
    if (isAscii(body[at]) && (at + 1 == body.size() || isAscii(body[at + 1]))) {
      add(asciiUnits[static_cast<unsigned char>(body[at++])], origin);
    } else if (const Folding& folding = foldingAlone(nextCodePoint(body, next), letterI);
               startsSegment(body, next)) {
      // One code point is the whole segment, as nearly always: its folding is all that there is to it.
      add(foldedMark(folding.units[0]), origin);
      for (std::size_t i = 1; i < folding.count; ++i) add(foldedMark(folding.units[i]), insideSegment);
      at = next;
    } else if (const std::vector<SegmentFolder::Unit>* segment = folder.fold(body, at, count)) {
      for (const SegmentFolder::Unit& unit : *segment)
        add(unit.character, std::exchange(origin, insideSegment));
    } else {
      matched = 0;  // too long to be part of a match
    }
    if (matched == count && origins[oldest] != insideSegment) return TextMatch{origins[oldest], at};
  }
  return std::nullopt;
}

std::optional<TextMatch> TextSearch::find(std::string_view body) const {
  const Query& query = *query_;
  const std::size_t wanted = query.units.size() - 1;
  if (wanted > body.size() + body.size() / 2) return std::nullopt;  // two bytes become at most three units
  if (!query.filter) return query.find(body, 0);

  // Where the query is made of the same few letters as the body, nearly every place is possible and comparing
  // them one by one would never end. The exact search, which takes linear time, takes over in good time.
  const std::size_t enough = body.size() / 16;
  const std::size_t before = query.filter->unitsBefore();
  std::size_t steps = 0;
  SearchFilter::Places places(*query.filter, body);
  for (std::size_t place = places.next(); place != std::string_view::npos; place = places.next()) {
    if (steps > enough) return query.find(body, startOfWindow(body, place, before));
    if (!query.mayMatchAt(body, place, ++steps)) continue;
    const std::size_t begin = startOfWindow(body, place, before);
    const std::optional<std::size_t> end = endOfWindow(body, place, wanted - before);
    if (!end) return query.find(body, begin);
    if (const auto match = query.find(body.substr(0, *end), begin)) return match;
    steps += wanted + *end - begin;
  }
  return std::nullopt;
}

}  // namespace halvane
