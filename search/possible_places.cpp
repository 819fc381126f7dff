#include "search/possible_places.h"

#include <algorithm>
#include <bit>

#include "search/byte_pairs.h"
#include "text/processor.h"

namespace halvane {

std::size_t PossiblePlaces::next() {
  constexpr std::size_t step = bytePairStep;
  static const FindPairs findPairs = hasWideBlocks() ? findPairsInWideBlocks : findPairsInBlocks;
  const std::size_t distance = filter_.distance;
  if (body_.size() < step + distance) return nextByByte();
  const std::size_t end = body_.size() - distance;
  const std::size_t last = end - step;
  while (found_ == 0) {
    if (at_ >= end) return std::string_view::npos;
    const std::size_t begin = at_ = std::min(at_, last);  // the last step looks at some places again
    found_ = findPairs(body_.data(), at_, last, distance, filter_.first, filter_.second);
    if (found_ == 0) at_ = std::max(at_, begin + step);
  }
  const std::size_t place = at_ + static_cast<std::size_t>(std::countr_zero(found_));
  found_ &= found_ - 1;
  if (found_ == 0) at_ += step;
  return place + filter_.seam - 1;
}

// For a body that is shorter than a step.
std::size_t PossiblePlaces::nextByByte() {
  const auto byteAt = [this](std::size_t index) { return static_cast<std::uint8_t>(body_[index]); };
  for (; at_ + filter_.distance < body_.size(); ++at_) {
    if (!filter_.first.holds(byteAt(at_)) || !filter_.second.holds(byteAt(at_ + filter_.distance))) continue;
    return at_++ + filter_.seam - 1;
  }
  return std::string_view::npos;
}

}  // namespace halvane
