#include "search/byte_pairs.h"

#include "search/byte_pair_finder.h"
#include "text/byte_block.h"

namespace halvane {

std::uint64_t findPairsInBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                const ByteSet& first, const ByteSet& second) {
  return BytePairFinder<ByteBlock>::find(body, at, last, distance, first, second);
}

}  // namespace halvane
