#include "text/utf8_blocks.h"

#include "text/byte_block.h"
#include "text/utf8_checker.h"

namespace halvane {

bool isUtf8InBlocks(std::string_view bytes) {
  return utf8::Checker<ByteBlock>::isUtf8(bytes);
}

}  // namespace halvane
