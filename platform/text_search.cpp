#include "platform/text_search.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/folding.h"
#include "platform/search_filter.h"
#include "platform/text.h"

namespace halvane {
namespace {

constexpr char32_t capitalI = U'I';
constexpr char32_t capitalDottedI = U'\u0130';
constexpr char32_t dotlessI = U'\u0131';

std::size_t startOfCodePoint(std::string_view text, std::size_t position) {
  while (position > 0 && U8_IS_TRAIL(text[position])) --position;
  return position;
}

// The start of a segment at which, or behind which, every match begins that has `units` units up to the byte at
// `place`.
std::size_t startOfWindow(std::string_view body, std::size_t place, std::size_t units) {
  const std::size_t reach = U8_MAX_LENGTH * units;  // a unit takes a code point at the most
  std::size_t start = place > reach ? startOfCodePoint(body, place - reach) : 0;
  for (std::size_t next = start; start > 0 && foldingOf(nextCodePoint(body, next)).continues; next = start) {
    start = startOfCodePoint(body, start - 1);
  }
  return start;
}

// Whether `text` holds an I or İ that smallTurkicI might change.
bool holdsCapitalI(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = nextCodePoint(text, at);
    if (character == capitalI || character == capitalDottedI) return true;
  }
  return false;
}

// Pairs I with ı and İ with i, each with its dot or without it as one letter: İ may come in two pieces.
std::string smallTurkicI(std::string_view text) {
  const std::string composed = precomposed(text);
  std::string small;
  for (std::size_t at = 0; at < composed.size();) {
    const char32_t character = nextCodePoint(composed, at);
    appendCodePoint(small, character == capitalI ? dotlessI : character == capitalDottedI ? U'i' : character);
  }
  return small;
}

// Folds text segment by segment. A segment is a code point with those behind it that can't be parted from it:
// a match begins and ends only between segments, and marks are put into their order only within one.
class SegmentFolder {
 public:
  struct Unit {
    char32_t character;
    std::uint8_t combiningClass;
  };

  explicit SegmentFolder(LetterI letterI) : letterI_(letterI) {}

  // Folds the segment of `text` that begins at `position`, which moves behind it. A segment that becomes longer
  // than `most` units comes out as nothing. The units are valid until the next call.
  const std::vector<Unit>* fold(std::string_view text, std::size_t& position, std::size_t most) {
    const bool turkic = letterI_ == LetterI::dottedAndDotless;
    const std::size_t enough = turkic && most < SIZE_MAX ? most + 1 : most;  // the dot of an İ goes away again
    const std::size_t begin = position;
    units_.clear();
    append(text, position);
    while (position < text.size()) {
      std::size_t next = position;
      if (!foldingOf(nextCodePoint(text, next)).continues) break;
      if (units_.size() > enough) {
        position = next;
      } else {
        append(text, position);
      }
    }
    if (units_.size() > enough) return nullptr;
    const std::string_view segment = text.substr(begin, position - begin);
    if (turkic && holdsCapitalI(segment)) {
      units_.clear();
      const std::string small = smallTurkicI(segment);
      for (std::size_t at = 0; at < small.size();) append(small, at);
      if (units_.size() > most) return nullptr;
    }
    if (units_.size() > 1 || units_.front().combiningClass != 0) orderMarks();
    return &units_;
  }

 private:
  void append(std::string_view text, std::size_t& position) {
    const Folding& folding = foldingOf(nextCodePoint(text, position));
    for (std::size_t i = 0; i < folding.count; ++i) {
      units_.push_back({folding.units[i], folding.combiningClasses[i]});
    }
  }

  // Each run of marks, stably by class; only then may the iota subscript become a letter.
  void orderMarks() {
    const auto isLetter = [](const Unit& unit) { return unit.combiningClass == 0; };
    for (auto begin = units_.begin(); begin != units_.end();) {
      const auto end = std::find_if(begin, units_.end(), isLetter);
      std::stable_sort(begin, end, [](const Unit& left, const Unit& right) {
        return left.combiningClass < right.combiningClass;
      });
      begin = std::find_if_not(end, units_.end(), isLetter);
    }
    for (Unit& unit : units_) unit.character = foldedMark(unit.character);
  }

  LetterI letterI_;
  std::vector<Unit> units_;
};

}  // namespace

struct TextSearch::Query {
  LetterI letterI;
  std::u32string units;
  // For each number of units matched, how many still are when the next one differs (Knuth, Morris and Pratt).
  std::vector<std::size_t> fallBack;
  std::optional<SearchFilter> filter;

  std::size_t advance(std::size_t matched, char32_t unit) const {
    if (matched == units.size()) matched = fallBack[matched];
    while (matched > 0 && units[matched] != unit) matched = fallBack[matched];
    return units[matched] == unit ? matched + 1 : 0;
  }

  // The unit that `character` folds to when that is all there is to it: one letter, and not one whose folding
  // depends on what stands around it. 0 otherwise.
  char32_t plainUnit(char32_t character) const {
    const Folding& folding = foldingOf(character);
    const bool plain = folding.count == 1 && !folding.continues && folding.combiningClasses[0] == 0;
    const bool dependent = letterI == LetterI::dottedAndDotless && character == capitalI;
    return plain && !dependent ? folding.units[0] : 0;
  }

  bool mayMatchAt(std::string_view body, std::size_t place, std::size_t& steps) const;
  std::optional<TextMatch> find(std::string_view body, std::size_t from) const;
};

TextSearch::TextSearch(std::string_view query, LetterI letterI) : query_(std::make_unique<Query>()) {
  query_->letterI = letterI;
  SegmentFolder folder(letterI);
  for (std::size_t at = 0; at < query.size();) {
    for (const SegmentFolder::Unit& unit : *folder.fold(query, at, SIZE_MAX)) query_->units += unit.character;
  }
  query_->fallBack.assign(2, 0);
  for (std::size_t i = 1; i < query_->units.size(); ++i) {
    query_->fallBack.push_back(query_->advance(query_->fallBack[i], query_->units[i]));
  }
  query_->filter = SearchFilter::forQuery(query_->units, letterI == LetterI::dottedAndDotless);
}

TextSearch::~TextSearch() = default;
TextSearch::TextSearch(TextSearch&&) noexcept = default;
TextSearch& TextSearch::operator=(TextSearch&&) noexcept = default;

// Whether a match may have its seam (see SearchFilter) behind the byte at `place`: compares the letters around
// it as far as they are plain ones on both sides, adding to `steps` how many it looked at.
bool TextSearch::Query::mayMatchAt(std::string_view body, std::size_t place, std::size_t& steps) const {
  std::size_t wanted = filter->unitsBefore();
  for (std::size_t at = place + 1; wanted < units.size(); ++wanted, ++steps) {
    if (at == body.size()) return false;
    const char32_t unit = plainUnit(nextCodePoint(body, at));
    if (unit == 0) break;
    if (unit != units[wanted]) return false;
  }
  wanted = filter->unitsBefore();
  for (std::size_t at = place + 1; wanted > 0; --wanted, ++steps) {
    if (at == 0) return false;
    at = startOfCodePoint(body, at - 1);
    std::size_t next = at;
    const char32_t unit = plainUnit(nextCodePoint(body, next));
    if (unit == 0) break;
    if (unit != units[wanted - 1]) return false;
  }
  return true;
}

// The first match that begins at or after `from`, which must be the start of a segment: the exact comparison.
std::optional<TextMatch> TextSearch::Query::find(std::string_view body, std::size_t from) const {
  constexpr std::size_t insideSegment = std::string_view::npos;
  const std::size_t wanted = units.size();
  std::vector<std::size_t> origins(wanted, insideSegment);  // where the last `wanted` units begin in the body
  std::size_t slot = 0;                                     // of the oldest of them
  std::size_t matched = 0;
  SegmentFolder folder(letterI);
  for (std::size_t at = from; at < body.size();) {
    std::size_t origin = at;
    const std::vector<SegmentFolder::Unit>* segment = folder.fold(body, at, wanted);
    if (segment == nullptr) {
      matched = 0;
      continue;
    }
    for (const SegmentFolder::Unit& unit : *segment) {
      matched = advance(matched, unit.character);
      origins[slot] = std::exchange(origin, insideSegment);
      slot = slot + 1 == wanted ? 0 : slot + 1;
    }
    if (matched == wanted && origins[slot] != insideSegment) return TextMatch{origins[slot], at};
  }
  return std::nullopt;
}

std::optional<TextMatch> TextSearch::find(std::string_view body) const {
  const Query& query = *query_;
  const std::size_t wanted = query.units.size();
  if (wanted > body.size() + body.size() / 2) return std::nullopt;  // two bytes become at most three units
  if (!query.filter) return query.find(body, 0);

  // A long query in a body made of its own pieces could be compared at every place. When comparing has cost as
  // much as the body is long, the exact search, which is linear, takes over.
  std::size_t steps = 0;
  for (std::size_t place = 0;; ++place) {
    place = query.filter->next(body, place);
    if (place == std::string_view::npos) return std::nullopt;
    if (steps > body.size() || query.mayMatchAt(body, place, steps)) {
      return query.find(body, startOfWindow(body, place, query.filter->unitsBefore()));
    }
  }
}

}  // namespace halvane
