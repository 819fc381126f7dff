#include "platform/utf8_blocks.h"

#include "platform/byte_block.h"
#include "platform/utf8_checker.h"

namespace halvane {

bool isUtf8InBlocks(std::string_view bytes) {
  return utf8::Checker<ByteBlock>::isUtf8(bytes);
}

}  // namespace halvane
