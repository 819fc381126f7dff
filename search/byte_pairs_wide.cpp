#include "search/byte_pairs.h"
#include "text/byte_block.h"

// Compiled for AVX2 where there may be one. So nothing in here may be called, nor be shared with another
// file, that a processor without it could come to.

namespace halvane {
namespace {

#if defined(__AVX2__)
using Widest = WideByteBlock;
#else
using Widest = ByteBlock;
#endif

}  // namespace

std::uint64_t findPairsInWideBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& here, const ByteSet& there) {
  return findPairsBy<Widest>(body, at, last, distance, here, there);
}

}  // namespace halvane
