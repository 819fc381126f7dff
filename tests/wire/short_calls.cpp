#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

// A library for LD_PRELOAD: no read(2), preadv2(2) or write(2) of the process into which it is loaded moves
// more bytes at once than the environment's SHORT_CALLS says.

namespace {

std::size_t shortened(std::size_t count) {
  const char* most = std::getenv("SHORT_CALLS");
  return most == nullptr ? count : std::min(count, static_cast<std::size_t>(std::atol(most)));
}

}  // namespace

// They have names of their own here, and the C library's for the linker: its headers may define the same
// functions inline.
extern "C" {

ssize_t readShortly(int descriptor, void* buffer, std::size_t count) asm("read");
ssize_t writeShortly(int descriptor, const void* buffer, std::size_t count) asm("write");
ssize_t preadv2Shortly(int descriptor, const iovec* parts, int count, off_t offset, int flags) asm("preadv2");

ssize_t readShortly(int descriptor, void* buffer, std::size_t count) {
  return syscall(SYS_read, descriptor, buffer, shortened(count));
}

ssize_t writeShortly(int descriptor, const void* buffer, std::size_t count) {
  return syscall(SYS_write, descriptor, buffer, shortened(count));
}

// Fills no more than the first part.
ssize_t preadv2Shortly(int descriptor, const iovec* parts, int, off_t offset, int flags) {
  const iovec first{parts->iov_base, shortened(parts->iov_len)};
  return syscall(SYS_preadv2, descriptor, &first, 1, offset, 0, flags);
}

}  // extern "C"
