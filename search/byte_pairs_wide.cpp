#include "search/byte_pair_finder.h"
#include "search/byte_pairs.h"
#include "text/byte_block.h"

// Compiled for AVX2 on x86-64.

namespace halvane {

std::uint64_t findPairsInWideBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& first, const ByteSet& second) {
  return BytePairFinder<ByteBlock>::find(body, at, last, distance, first, second);
}

}  // namespace halvane
