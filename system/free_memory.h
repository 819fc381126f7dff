#pragma once

// How memory is asked for ahead of need, and given back after use.

#include <cstddef>

namespace halvane {

/// Throws std::bad_alloc when the system would not give this process `size` bytes more at this moment.
void requireMemory(std::size_t size);

/// Hands memory that was freed back to the system, which the allocator would otherwise keep.
void giveBackFreeMemory();

}  // namespace halvane
