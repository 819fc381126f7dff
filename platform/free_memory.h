#pragma once

namespace halvane {

/// Hands memory that was freed back to the system, which the allocator would otherwise keep.
void giveBackFreeMemory();

}  // namespace halvane
