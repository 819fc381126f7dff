#pragma once

// The search that looks at every unit of a body: always right, and in linear time.

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "search/folded_query.h"
#include "search/text_match.h"

namespace halvane {

/// Looks for one query by the algorithm of Knuth, Morris and Pratt. The units of the body are folded as they
/// come.
class ExactSearch {
 public:
  /// For `query`. Each call of find takes the same query.
  explicit ExactSearch(const FoldedQuery& query);

  /// The first match in `body`, UTF-8, that begins at or after `from`, which must be the start of a segment;
  /// nothing when there is none.
  std::optional<TextMatch> find(const FoldedQuery& query, std::string_view body, std::size_t from) const;

 private:
  // For each number of units matched, with how many to go on when the next one differs
  std::vector<std::size_t> failure_;
};

}  // namespace halvane
