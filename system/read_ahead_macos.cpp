#include <fcntl.h>
#include <unistd.h>

#include <chrono>

#include "system/read_ahead.h"

namespace halvane {
namespace {

// Nearly every entry is shorter. In a longer one, the system reads ahead by itself.
constexpr int beginning = 65536;

// Copying from memory takes a few microseconds. No disk is so fast.
constexpr std::chrono::microseconds fromMemory(50);

}  // namespace

// This system can't be asked whether a file is in memory, but the clock can. If something else delays a read,
// we announce files without need, which costs one system call for each file.
ssize_t ReadAhead::readFirst(int file, char* data, std::size_t size) {
  if (!isToAsk()) return ::read(file, data, size);
  const auto start = std::chrono::steady_clock::now();
  const ssize_t count = ::read(file, data, size);
  pays_ = std::chrono::steady_clock::now() - start > fromMemory;
  asks_ = !pays_;
  return count;
}

// Only Darwin's headers declare this advice. Without it, reading only takes longer.
void ReadAhead::announce(const Descriptor& file) {
#ifdef F_RDADVISE
  radvisory advice{0, beginning};
  fcntl(file.number(), F_RDADVISE, &advice);
#endif
}

}  // namespace halvane
