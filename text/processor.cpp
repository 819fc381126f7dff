#include "text/processor.h"

namespace halvane {

bool canShuffleBytes() {
#if defined(__x86_64__) && !defined(HALVANE_PLAIN_BLOCKS)
  return __builtin_cpu_supports("ssse3") != 0;
#else
  return true;
#endif
}

bool hasWideBlocks() {
#if defined(__x86_64__) && !defined(HALVANE_PLAIN_BLOCKS)
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

}  // namespace halvane
