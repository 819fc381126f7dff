#include "system/free_memory.h"

#include <sys/mman.h>

#include <new>

namespace halvane {

// Not through the allocator: the compiler may leave out an allocation that nobody uses.
void requireMemory(std::size_t size) {
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  munmap(memory, size);
}

}  // namespace halvane
