#include "platform/utf8_blocks.h"

#include "platform/byte_block.h"
#include "platform/utf8_checker.h"
#include "platform/wide_blocks.h"

namespace halvane {

bool isUtf8InBlocks(std::string_view bytes) {
  return utf8::Checker<ByteBlock>::isUtf8(bytes);
}

bool canCheckInBlocks() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("ssse3") != 0;
#else
  return true;
#endif
}

bool hasWideBlocks() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

}  // namespace halvane
