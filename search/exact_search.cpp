#include "search/exact_search.h"

#include <utility>

#include "text/text.h"

namespace halvane {
namespace {

constexpr std::size_t insideSegment = std::string_view::npos;

// How much of the query has been matched by the last units of the body, and where they begin.
class Progress {
 public:
  Progress(const FoldedQuery& query, const std::vector<std::size_t>& failure)
      : units_(query.units.data()),
        failure_(failure.data()),
        count_(query.count()),
        origins_(count_, insideSegment) {}

  // Takes the next unit: the first one of the segment at `origin`, or one further inside it. The query's
  // units end with one that no text has, so when all are matched, the next one differs.
  void take(char32_t unit, std::size_t origin) {
    while (units_[matched_] != unit && matched_ > 0) matched_ = failure_[matched_];
    if (units_[matched_] == unit) ++matched_;
    origins_[oldest_] = origin;
    if (++oldest_ == count_) oldest_ = 0;
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
  const char32_t* units_;
  const std::size_t* failure_;
  std::size_t count_;
  std::vector<std::size_t> origins_;  // where the last units begin, as many as the query has, in a ring
  std::size_t oldest_ = 0;            // of them
  std::size_t matched_ = 0;
};

}  // namespace

ExactSearch::ExactSearch(const FoldedQuery& query) : failure_(2, 0) {
  for (std::size_t i = 1; i < query.count(); ++i) {
    std::size_t shorter = failure_[i];
    while (shorter > 0 && query.units[shorter] != query.units[i]) shorter = failure_[shorter];
    failure_.push_back(query.units[shorter] == query.units[i] ? shorter + 1 : 0);
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
      progress.take(query.asciiUnits[static_cast<unsigned char>(body[at++])], origin);
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
