#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>

#include "system/read_ahead.h"

namespace halvane {
namespace {

// Nearly every entry is shorter. In a longer one, the system reads ahead by itself.
constexpr off_t beginning = 65536;

}  // namespace

// One system call both asks and reads. Some file systems and older kernels refuse it. Then, and
// once a file was not in memory, we only call read(2).
ssize_t ReadAhead::readFirst(int file, char* data, std::size_t size) {
  if (isToAsk()) {
    const iovec whole{data, size};
    constexpr off_t whereItIs = -1;
    const ssize_t count = preadv2(file, &whole, 1, whereItIs, RWF_NOWAIT);
    if (count >= 0) return count;
    asks_ = false;
    pays_ = errno == EAGAIN;
  }
  return ::read(file, data, size);
}

void ReadAhead::announce(const Descriptor& file) {
  posix_fadvise(file.number(), 0, beginning, POSIX_FADV_WILLNEED);
}

}  // namespace halvane
