#include "search/folded_query.h"

#include <cstdint>

namespace halvane {

FoldedQuery::FoldedQuery(std::string_view query, LetterI i) : letterI(i), asciiUnits() {
  SegmentFolder folder(letterI);
  for (std::size_t at = 0; at < query.size();) {
    for (const SegmentFolder::Unit& unit : *folder.fold(query, at, SIZE_MAX)) units += unit.character;
  }
  units += noUnit;
  for (char32_t character = 0; character < asciiUnits.size(); ++character) {
    asciiUnits[character] = foldingAlone(character, letterI).units[0];
  }
}

}  // namespace halvane
