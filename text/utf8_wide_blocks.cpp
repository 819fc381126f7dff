#include "text/byte_block.h"
#include "text/utf8_blocks.h"
#include "text/utf8_checker.h"

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

bool isUtf8InWideBlocks(std::string_view bytes) {
  return utf8::Checker<Widest>::isUtf8(bytes);
}

}  // namespace halvane
