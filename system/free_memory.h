#pragma once

// How we test that there is enough memory, and give memory back after use.

#include <cstddef>

namespace halvane {

/// Throws std::bad_alloc when the system would not give this process another `size` bytes now.
void requireMemory(std::size_t size);

/// Gives freed memory, which the allocator would otherwise keep, back to the system.
void giveBackFreeMemory();

}  // namespace halvane
