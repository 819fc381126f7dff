#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "search/text_search.h"

namespace halvane {

/// The judge of TextSearch: the same search in the plainest and slowest way. It cuts the body wherever a
/// match may begin or end, folds every piece with ICU's functions, and compares the text between any two cuts
/// with the folded query.
std::optional<TextMatch> plainSearch(std::string_view query, std::string_view body, LetterI letterI);

/// "[begin, end)", or "nothing".
std::string shown(const std::optional<TextMatch>& match);

}  // namespace halvane
