#include "platform/search_filter.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <bit>
#include <map>
#include <string>
#include <vector>

#include "platform/byte_block.h"
#include "platform/folding.h"
#include "platform/letter_forms.h"
#include "platform/text.h"

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

unsigned commonness(const ByteSet& set) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < set.size(); ++i) sum += commonness(set.bytes()[i]);
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

  // The forms of a letter, empty where they are not known for certain in this place. Finding them takes time,
  // so of a query with very many letters only the first ones are known.
  const LetterForms& forms(std::size_t index) {
    static const LetterForms unknown;
    const std::u32string_view letter = units(index, index);
    const bool shared = (index > 0 && mayShareCodePoint(units_[begin(index) - 1], letter.front())) ||
                        (index + 1 < count() && mayShareCodePoint(letter.back(), units_[end(index)]));
    if (shared || (turkic_ && (letter.front() == U'i' || letter.front() == U'ı'))) return unknown;
    const auto known = known_.find(letter);
    if (known != known_.end()) return known->second;
    return known_.size() < mostKnown ? known_[letter] = formsOf(letter) : unknown;
  }

 private:
  static constexpr std::size_t mostKnown = 64;

  std::u32string_view units_;
  bool turkic_;
  std::vector<std::size_t> ends_;
  std::map<std::u32string_view, LetterForms> known_;
};

}  // namespace

bool ByteSet::add(std::uint8_t byte) {
  if (holds(byte)) return true;
  if (size_ == most) return false;
  std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(size_++), bytes_.end(), byte);
  return true;
}

bool ByteSet::holds(std::uint8_t byte) const {
  return size_ > 0 && std::find(bytes_.begin(), bytes_.end(), byte) != bytes_.end();
}

std::optional<SearchFilter> SearchFilter::forQuery(std::u32string_view units, bool turkic) {
  Letters letters(units, turkic);
  // A seam that comes again and again in the query may do so in the body, where it would tell least.
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
    const std::optional<ByteSet> here = lastBytes(letters.forms(i).last);
    if (!here) continue;
    SearchFilter filter;
    filter.unitsBefore_ = letters.end(i);
    filter.here_ = filter.there_ = *here;
    consider(filter, std::uint64_t{1000} * commonness(*here));
    if (i + 1 == letters.count()) continue;
    for (filter.distance_ = 1; filter.distance_ <= U8_MAX_LENGTH; ++filter.distance_) {
      const std::optional<ByteSet> there = bytesAt(letters.forms(i + 1).first, filter.distance_ - 1);
      if (!there) continue;
      filter.there_ = *there;
      consider(filter,
               std::uint64_t{occurrences[letters.units(i, i + 1)]} * commonness(*here) * commonness(*there));
    }
  }
  return best;
}

namespace {

// Whether a byte is one of two that differ in a single bit, as the capital and the small letter of most
// alphabets do: one comparison, once that bit is set.
struct OneOfTwo {
  ByteBlock bit;
  ByteBlock byte;

  explicit OneOfTwo(const ByteSet& set)
      : bit(ByteBlock::all(set.bytes()[0] ^ set.bytes()[1])),
        byte(ByteBlock::all(set.bytes()[0] | set.bytes()[1])) {}
  static bool fits(const ByteSet& set) {
    return set.size() <= 2 && std::popcount(static_cast<unsigned>(set.bytes()[0] ^ set.bytes()[1])) <= 1;
  }
  ByteBlock in(ByteBlock block) const { return (block | bit) == byte; }
};

struct OneOfFour {
  ByteBlock bytes[ByteSet::most];

  explicit OneOfFour(const ByteSet& set)
      : bytes{ByteBlock::all(set.bytes()[0]), ByteBlock::all(set.bytes()[1]), ByteBlock::all(set.bytes()[2]),
              ByteBlock::all(set.bytes()[3])} {}
  ByteBlock in(ByteBlock block) const {
    return (block == bytes[0]) | (block == bytes[1]) | (block == bytes[2]) | (block == bytes[3]);
  }
};

// The first place from `at` on, and before `end`, where a byte of the first kind stands `distance` places
// before one of the second. The body goes on for that distance behind `end`, and for a whole step from `at`.
template <typename Kind>
std::size_t firstPair(const char* body, std::size_t at, std::size_t end, std::size_t distance,
                      const Kind& here, const Kind& there) {
  constexpr std::size_t step = 4 * ByteBlock::size;
  const auto pairs = [&](std::size_t place) {
    return here.in(ByteBlock::load(body + place)) & there.in(ByteBlock::load(body + place + distance));
  };
  while (at < end) {
    // The last step looks at some places again, rather than beyond the end.
    const std::size_t place = std::min(at, end - step);
    const ByteBlock first = pairs(place);
    const ByteBlock second = pairs(place + ByteBlock::size);
    const ByteBlock third = pairs(place + 2 * ByteBlock::size);
    const ByteBlock fourth = pairs(place + 3 * ByteBlock::size);
    if (((first | second) | (third | fourth)).upperBits() != 0) {
      const std::uint64_t found = std::uint64_t{first.upperBits()} | std::uint64_t{second.upperBits()} << 16 |
                                  std::uint64_t{third.upperBits()} << 32 |
                                  std::uint64_t{fourth.upperBits()} << 48;
      const std::uint64_t unseen = found >> (at - place) << (at - place);
      if (unseen != 0) return place + static_cast<std::size_t>(std::countr_zero(unseen));
    }
    at = place + step;
  }
  return std::string_view::npos;
}

}  // namespace

std::size_t SearchFilter::next(std::string_view body, std::size_t from) const {
  if (body.size() < from + distance_) return std::string_view::npos;
  const std::size_t end = body.size() - distance_;
  if (end < 4 * ByteBlock::size) return nextByByte(body, from, end);
  if (OneOfTwo::fits(here_) && OneOfTwo::fits(there_)) {
    return firstPair(body.data(), from, end, distance_, OneOfTwo(here_), OneOfTwo(there_));
  }
  return firstPair(body.data(), from, end, distance_, OneOfFour(here_), OneOfFour(there_));
}

std::size_t SearchFilter::nextByByte(std::string_view body, std::size_t from, std::size_t end) const {
  for (std::size_t at = from; at < end; ++at) {
    const auto byteAt = [body](std::size_t index) { return static_cast<std::uint8_t>(body[index]); };
    if (here_.holds(byteAt(at)) && there_.holds(byteAt(at + distance_))) return at;
  }
  return std::string_view::npos;
}

}  // namespace halvane
