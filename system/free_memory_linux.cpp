#include <malloc.h>

#include "system/free_memory.h"

namespace halvane {

void giveBackFreeMemory() {
  malloc_trim(0);
}

}  // namespace halvane
