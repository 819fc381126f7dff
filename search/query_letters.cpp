#include "search/query_letters.h"

#include <utility>

#include "search/folding.h"

namespace halvane {
namespace {

constexpr std::size_t maxKnown = 64;

}  // namespace

QueryLetters::QueryLetters(std::u32string_view units, bool turkic) : units_(units), turkic_(turkic) {
  for (std::size_t begin = 0, end = 0; begin < units.size(); begin = end) {
    end = begin + 1;
    while (end < units.size() && foldingOf(units[end]).continues) ++end;
    ends_.push_back(end);
  }
}

std::vector<char32_t> QueryLetters::lastForms(std::size_t index) {
  std::vector<char32_t> forms = known(index).last;
  if (index == 0 || forms.empty()) return forms;
  return withShared(formsOfPair(units_[begin(index) - 1], units_[begin(index)]).last, index,
                    std::move(forms));
}

std::vector<char32_t> QueryLetters::firstForms(std::size_t index) {
  std::vector<char32_t> forms = known(index).first;
  if (index + 1 == count() || forms.empty()) return forms;
  return withShared(formsOfPair(units_[end(index) - 1], units_[end(index)]).first, index, std::move(forms));
}

bool QueryLetters::shareCodePoint(std::size_t index) const {
  return index + 1 < count() && mayShareCodePoint(units_[end(index) - 1], units_[end(index)]);
}

// The letter's forms if it shares no code point with a neighbour; empty when they are not known for certain.
// Finding them takes time, so we find them only for the first different letters of a query.
const LetterForms& QueryLetters::known(std::size_t index) {
  static const LetterForms unknown;
  const std::u32string_view letter = units(index, index);
  const bool hasSubscript = index + 1 < count() && units_[end(index)] == iota;
  if (hasSubscript || (turkic_ && (letter.front() == U'i' || letter.front() == U'ı'))) return unknown;
  const auto found = known_.find(letter);
  if (found != known_.end()) return found->second;
  return known_.size() < maxKnown ? known_[letter] = formsOf(letter) : unknown;
}

// `forms` and the code points that the letter shares with a neighbour; none when marks are between the two.
std::vector<char32_t> QueryLetters::withShared(const std::vector<char32_t>& shared, std::size_t index,
                                               std::vector<char32_t> forms) const {
  if (shared.empty()) return forms;
  if (end(index) - begin(index) > 1) return {};
  for (const char32_t form : shared) forms.push_back(form);
  return forms;
}

}  // namespace halvane
