#include "search/segments.h"

#include <algorithm>
#include <string>

#include "search/folding.h"
#include "text/text.h"

namespace halvane {
namespace {

bool holdsCapitalI(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = nextCodePoint(text, at);
    if (character == U'I' || character == U'İ') return true;
  }
  return false;
}

// Pairs I with ı and İ with i. Composes the text first, because an İ may be written as an I with a dot above.
std::string smallTurkicI(std::string_view text) {
  const std::string composed = precomposed(text);
  std::string small;
  for (std::size_t at = 0; at < composed.size();) {
    const char32_t character = nextCodePoint(composed, at);
    appendCodePoint(small, character == U'I' ? U'ı' : character == U'İ' ? U'i' : character);
  }
  return small;
}

}  // namespace

const std::vector<SegmentFolder::Unit>* SegmentFolder::fold(std::string_view text, std::size_t& position,
                                                            std::size_t maxUnits) {
  const bool turkic = letterI_ == LetterI::dottedAndDotless;
  // One more for the dot of an İ, which is removed later.
  const std::size_t maxKept = turkic && maxUnits < SIZE_MAX ? maxUnits + 1 : maxUnits;
  const std::size_t begin = position;
  units_.clear();
  append(text, position);
  while (position < text.size()) {
    std::size_t next = position;
    if (!foldingOf(nextCodePoint(text, next)).continues) break;
    if (units_.size() > maxKept) {
      position = next;
    } else {
      append(text, position);
    }
  }
  if (units_.size() > maxKept) return nullptr;
  const std::string_view segment = text.substr(begin, position - begin);
  if (turkic && holdsCapitalI(segment)) {
    units_.clear();
    const std::string small = smallTurkicI(segment);
    for (std::size_t at = 0; at < small.size();) append(small, at);
  }
  if (units_.size() > maxUnits) return nullptr;
  orderMarks();
  return &units_;
}

void SegmentFolder::append(std::string_view text, std::size_t& position) {
  const Folding& folding = foldingOf(nextCodePoint(text, position));
  for (std::size_t i = 0; i < folding.count; ++i) {
    units_.push_back({folding.units[i], folding.combiningClasses[i]});
  }
}

// Sorts each run of marks stably by class. Only then may the iota subscript become a letter.
void SegmentFolder::orderMarks() {
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

}  // namespace halvane
