#include "search/exact_search.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "text/text.h"

namespace halvane {
namespace {

constexpr std::size_t insideSegment = std::string_view::npos;

// The end of the ASCII characters from `begin` on that are whole segments. There must be one.
std::size_t endOfAsciiSegments(std::string_view body, std::size_t begin) {
  std::size_t end = begin;
  std::uint64_t eightBytes = 0;
  for (; body.size() - end >= sizeof(eightBytes); end += sizeof(eightBytes)) {
    std::memcpy(&eightBytes, body.data() + end, sizeof(eightBytes));
    if ((eightBytes & 0x8080808080808080) != 0) break;
  }
  while (end < body.size() && isAscii(body[end])) ++end;
  return end == body.size() ? end : end - 1;
}

// How much of the query has been matched by the last units of the body, and where they begin.
class Progress {
 public:
  Progress(const FoldedQuery& query, const std::vector<std::size_t>& failure)
      : units_(query.units.data()),
        failure_(failure.data()),
        count_(query.count()),
        origins_(count_, insideSegment) {}

  // Takes the next unit: the first one of the segment at `origin`, or one further inside it.
  void take(char32_t unit, std::size_t origin) {
    matched_ = matchedAfter(matched_, unit);
    note(origin);
  }

  // Takes the ASCII characters of `body` from `at` on that are whole segments, at least one, until the query
  // is matched. Moves `at` past them. Only the origins of the last ones are still needed then.
  void takeAscii(const FoldedQuery& query, std::string_view body, std::size_t& at) {
    const std::size_t begin = at;
    const std::size_t endOfAll = endOfAsciiSegments(body, begin);
    std::size_t end = begin;
    std::size_t matched = matched_;  // copied, to stay in a register
    const auto& units = query.asciiUnits;
    do {
      matched = matchedAfter(matched, units[static_cast<unsigned char>(body[end++])]);
    } while (matched < count_ && end < endOfAll);
    matched_ = matched;
    at = end;
    for (std::size_t origin = std::max(begin, end - std::min(end, count_)); origin < end; ++origin)
      note(origin);
  }

  // Takes the units of `folding`, which belongs to a whole segment of one code point at `origin`.
  void take(const Folding& folding, std::size_t origin) {
    take(foldedMark(folding.units[0]), origin);
    for (std::size_t i = 1; i < folding.count; ++i) take(foldedMark(folding.units[i]), insideSegment);
  }

  void take(const std::vector<SegmentFolder::Unit>& segment, std::size_t origin) {
    for (const SegmentFolder::Unit& unit : segment)
      take(unit.character, std::exchange(origin, insideSegment));
  }

  // Takes a segment that is too long to be part of a match.
  void passOver() { matched_ = 0; }

  // Whether the whole query is matched, from the start of a segment on.
  bool isMatch() const { return matched_ == count_ && origins_[oldest_] != insideSegment; }
  std::size_t beginOfMatch() const { return origins_[oldest_]; }

 private:
  // How many units are matched after `matched` of them and then `unit`. The query's units end with one that
  // no text has, so when all are matched, the next one differs.
  std::size_t matchedAfter(std::size_t matched, char32_t unit) const {
    if (units_[matched] == unit) [[likely]]
      return matched + 1;
    while (matched > 0) {
      matched = failure_[matched];
      if (units_[matched] == unit) return matched + 1;
    }
    return 0;
  }

  void note(std::size_t origin) {
    origins_[oldest_] = origin;
    if (++oldest_ == count_) oldest_ = 0;
  }

  const char32_t* units_;
  const std::size_t* failure_;
  std::size_t count_;
  std::vector<std::size_t> origins_;  // where the last units begin, as many as the query has, in a ring
  std::size_t oldest_ = 0;            // of them
  std::size_t matched_ = 0;
};

}  // namespace

// Where a unit differs, it differs again after fewer matched units if the same unit is expected there. So we
// go on to fewer still. Otherwise, the b in "aaab" would take as many steps as there are letters before it.
ExactSearch::ExactSearch(const FoldedQuery& query) : failure_(2, 0) {
  std::size_t longest = 0;  // the length of the longest end of the first `i` units with which they also begin
  for (std::size_t i = 1; i < query.count(); ++i) {
    const char32_t unit = query.units[i];
    failure_[i] = query.units[longest] == unit ? failure_[longest] : longest;
    while (longest > 0 && query.units[longest] != unit) longest = failure_[longest];
    if (query.units[longest] == unit) ++longest;
    failure_.push_back(longest);
  }
}

std::optional<TextMatch> ExactSearch::find(const FoldedQuery& query, std::string_view body,
                                           std::size_t from) const {
  Progress progress(query, failure_);
  SegmentFolder folder(query.letterI);
  for (std::size_t at = from; at < body.size();) {
    const std::size_t origin = at;
    std::size_t next = at;
    if (isAsciiSegment(body, at)) {
      progress.takeAscii(query, body, at);
    } else if (const Folding& folding = foldingAlone(nextCodePoint(body, next), query.letterI);
               startsSegment(body, next)) {
      progress.take(folding, origin);
      at = next;
    } else if (const auto* segment = folder.fold(body, at, query.count())) {
      progress.take(*segment, origin);
    } else {
      progress.passOver();
    }
    if (progress.isMatch()) return TextMatch{progress.beginOfMatch(), at};
  }
  return std::nullopt;
}

}  // namespace halvane
