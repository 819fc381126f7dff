#include "text/byte_block.h"
#include "text/utf8_blocks.h"
#include "text/utf8_checker.h"

// Compiled for AVX2 on x86-64.

namespace halvane {

bool isUtf8InWideBlocks(const char* bytes, std::size_t length) {
  return utf8::isUtf8By<ByteBlock>(bytes, length);
}

}  // namespace halvane
