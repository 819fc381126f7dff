#include <cstddef>

#include "system/free_memory.h"

// Declared as in <malloc/malloc.h>, to let this file compile on every system.
struct _malloc_zone_t;
extern "C" std::size_t malloc_zone_pressure_relief(_malloc_zone_t* zone, std::size_t goal);

namespace halvane {

// A null zone means all zones, and a goal of 0 means as much as possible.
void giveBackFreeMemory() {
  malloc_zone_pressure_relief(nullptr, 0);
}

}  // namespace halvane
