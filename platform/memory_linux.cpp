#include <malloc.h>

#include "platform/memory.h"

namespace halvane {

void giveBackFreeMemory() { malloc_trim(0); }

}  // namespace halvane
