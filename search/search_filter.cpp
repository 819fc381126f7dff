#include "search/search_filter.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <bit>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "search/byte_pairs.h"
#include "search/folding.h"
#include "search/letter_forms.h"
#include "text/processor.h"
#include "text/text.h"

namespace halvane {
namespace {

// How many of a thousand bytes have this value, roughly and over all languages: it only decides which of the
// safe places is looked for.
unsigned commonness(std::uint8_t byte) {
  constexpr std::array<std::uint8_t, 26> letters = {65, 12, 23, 33, 100, 18, 16, 50, 57, 1,  6, 33, 20,
                                                    57, 62, 15, 1,  50,  52, 75, 23, 8,  18, 2, 16, 1};
  if (byte == ' ') return 160;
  if (byte >= 0xC3) return byte == 0xC3 || byte == 0xE2 || byte >= 0xEE ? 20 : 200;
  if (byte >= 0x80) return 15;
  const unsigned letter = (byte | 0x20U) - 'a';
  if (letter >= letters.size()) return 8;
  return (byte & 0x20) != 0 ? letters[letter] : 3;
}

// Letters that like to stand together. A seam between two of them is found more often than each of them
// promises.
bool areOftenTogether(std::u32string_view letters) {
  constexpr std::u32string_view pairs =
      U"th he in er an re nd at on nt ha es st en ed to it ou ea hi is or ti as te et ng of al de se le sa "
      U"si ar "
      U"ve ra ld ur ch sc ei ie un ic qu ll ss ee ai me ne ro ma li la co om ca io el di";
  if (letters.size() != 2) return false;
  for (std::size_t i = 0; i < pairs.size(); i += 3) {
    if (pairs.substr(i, 2) == letters) return true;
  }
  return false;
}

unsigned commonness(const ByteSet& set) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < set.size; ++i) {
    const auto [bit, value] = set.pairs[i];
    sum += commonness(value) + (bit != 0 ? commonness(static_cast<std::uint8_t>(value ^ bit)) : 0);
  }
  return sum;
}

std::string utf8Of(char32_t character) {
  std::string text;
  appendCodePoint(text, character);
  return text;
}

// The bytes that may stand `index` places from the start of a form; nothing when they are too many, or when
// not every form is that long.
std::optional<ByteSet> bytesAt(const std::vector<char32_t>& forms, std::size_t index) {
  ByteSet set;
  if (forms.empty()) return std::nullopt;
  for (const char32_t form : forms) {
    const std::string bytes = utf8Of(form);
    if (index >= bytes.size() || !set.add(static_cast<std::uint8_t>(bytes[index]))) return std::nullopt;
  }
  return set;
}

std::optional<ByteSet> lastBytes(const std::vector<char32_t>& forms) {
  ByteSet set;
  if (forms.empty()) return std::nullopt;
  for (const char32_t form : forms) {
    if (!set.add(static_cast<std::uint8_t>(utf8Of(form).back()))) return std::nullopt;
  }
  return set;
}

// The letters of a query: starters with the marks or vowels that can't be parted from them.
class Letters {
 public:
  Letters(std::u32string_view units, bool turkic) : units_(units), turkic_(turkic) {
    for (std::size_t begin = 0, end = 0; begin < units.size(); begin = end) {
      end = begin + 1;
      while (end < units.size() && foldingOf(units[end]).continues) ++end;
      ends_.push_back(end);
    }
  }

  std::size_t count() const { return ends_.size(); }
  std::size_t begin(std::size_t index) const { return index == 0 ? 0 : ends_[index - 1]; }
  std::size_t end(std::size_t index) const { return ends_[index]; }
  // The units from one letter to another, both included.
  std::u32string_view units(std::size_t first, std::size_t last) const {
    return units_.substr(begin(first), end(last) - begin(first));
  }

  // The code points in which the letter at `index` may end, when the next one begins with another.
  std::vector<char32_t> lastForms(std::size_t index) {
    std::vector<char32_t> forms = known(index).last;
    if (index == 0) return forms;
    return with(formsOfPair(units_[begin(index) - 1], units_[begin(index)]).last, index, std::move(forms));
  }

  // Those in which it may begin, when the one before it ends with another.
  std::vector<char32_t> firstForms(std::size_t index) {
    std::vector<char32_t> forms = known(index).first;
    if (index + 1 == count()) return forms;
    return with(formsOfPair(units_[end(index) - 1], units_[end(index)]).first, index, std::move(forms));
  }

  // Whether one code point may be part of the letter at `index` and of the next one.
  bool shareCodePoint(std::size_t index) const {
    return index + 1 < count() && mayShareCodePoint(units_[end(index) - 1], units_[end(index)]);
  }

 private:
  static constexpr std::size_t mostKnown = 64;

  // The letter's forms where it shares no code point; empty where they are not known for certain. Finding
  // them takes time, so of a query with very many letters only the first ones are known.
  const LetterForms& known(std::size_t index) {
    static const LetterForms unknown;
    const std::u32string_view letter = units(index, index);
    const bool hasSubscript = index + 1 < count() && units_[end(index)] == iota;
    if (hasSubscript || (turkic_ && (letter.front() == U'i' || letter.front() == U'ı'))) return unknown;
    const auto found = known_.find(letter);
    if (found != known_.end()) return found->second;
    return known_.size() < mostKnown ? known_[letter] = formsOf(letter) : unknown;
  }

  // `forms` and those that the letter has together with a neighbour; none where marks come between.
  std::vector<char32_t> with(const std::vector<char32_t>& shared, std::size_t index,
                             std::vector<char32_t> forms) const {
    if (shared.empty() || forms.empty()) return forms;
    if (end(index) - begin(index) > 1) return {};
    forms.insert(forms.end(), shared.begin(), shared.end());
    return forms;
  }

  std::u32string_view units_;
  bool turkic_;
  std::vector<std::size_t> ends_;
  std::map<std::u32string_view, LetterForms> known_;
};

}  // namespace

std::optional<SearchFilter> SearchFilter::forQuery(std::u32string_view units, bool turkic) {
  Letters letters(units, turkic);
  // A seam that comes twice in the query comes thick in a body made of the query's own pieces, and then each
  // place costs a long comparison. One that comes once is better, however common it is elsewhere.
  std::map<std::u32string_view, unsigned> occurrences;
  for (std::size_t i = 0; i + 1 < letters.count(); ++i) ++occurrences[letters.units(i, i + 1)];

  std::optional<SearchFilter> best;
  std::uint64_t leastCommon = 0;
  const auto consider = [&](const SearchFilter& filter, std::uint64_t common) {
    if (best && common >= leastCommon) return;
    best = filter;
    leastCommon = common;
  };
  for (std::size_t i = 0; i < letters.count(); ++i) {
    if (letters.shareCodePoint(i)) continue;
    const std::optional<ByteSet> here = lastBytes(letters.lastForms(i));
    if (!here) continue;
    SearchFilter filter;
    filter.unitsBefore_ = letters.end(i);
    filter.here_ = filter.there_ = *here;
    consider(filter, std::uint64_t{1000} * commonness(*here));
    if (i + 1 == letters.count()) continue;
    const std::u32string_view seam = letters.units(i, i + 1);
    const std::uint64_t times =
        std::uint64_t{areOftenTogether(seam) ? 8U : 1U} * (occurrences[seam] > 1 ? 1000U : 1U);
    const std::vector<char32_t> next = letters.firstForms(i + 1);
    for (filter.distance_ = 1; filter.distance_ <= U8_MAX_LENGTH; ++filter.distance_) {
      const std::optional<ByteSet> there = bytesAt(next, filter.distance_ - 1);
      if (!there) continue;
      filter.there_ = *there;
      consider(filter, times * commonness(*here) * commonness(*there));
    }
  }
  return best;
}

std::size_t SearchFilter::Places::next() {
  constexpr std::size_t step = bytePairStep;
  static const FindPairs findPairs = hasWideBlocks() ? findPairsInWideBlocks : findPairsInBlocks;
  const std::size_t distance = filter_.distance_;
  if (body_.size() < step + distance) return nextByByte();
  const std::size_t end = body_.size() - distance;
  const std::size_t last = end - step;
  while (found_ == 0) {
    if (at_ >= end) return std::string_view::npos;
    const std::size_t unseen = at_;
    const std::size_t begin = at_ = std::min(at_, last);  // the last step looks at some places again
    found_ = findPairs(body_.data(), at_, last, distance, filter_.here_, filter_.there_);
    if (at_ == begin) found_ = found_ >> (unseen - begin) << (unseen - begin);
    if (found_ == 0) at_ = std::max(at_, begin + step);
  }
  const std::size_t place = at_ + static_cast<std::size_t>(std::countr_zero(found_));
  found_ &= found_ - 1;
  if (found_ == 0) at_ += step;
  return place;
}

// For a body that is shorter than a step.
std::size_t SearchFilter::Places::nextByByte() {
  const auto byteAt = [this](std::size_t index) { return static_cast<std::uint8_t>(body_[index]); };
  for (; at_ + filter_.distance_ < body_.size(); ++at_) {
    if (!filter_.here_.holds(byteAt(at_)) || !filter_.there_.holds(byteAt(at_ + filter_.distance_))) continue;
    return at_++;
  }
  return std::string_view::npos;
}

}  // namespace halvane
