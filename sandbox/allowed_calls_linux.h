#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>

#include <asm/ioctls.h>
#include <asm/termbits.h>
#include <array>
#include <cstdint>

// The system calls that the programs may make once they are in the sandbox. docs/security.md has the same
// list, and a test compares the two.

namespace halvane::sandbox {

/// Lets a system call through. If `mask` is 0, its arguments don't matter. Otherwise, the bits of one
/// argument that are set in `mask` must be those of `value`. Only the lower 32 bits of the argument count,
/// because the kernel looks at no more in the calls below. If a call has several rows, any of them lets it
/// through.
struct AllowedCall {
  std::uint32_t number;
  unsigned argument = 0;  ///< counted from 0
  std::uint32_t mask = 0;
  std::uint32_t value = 0;
};

/// `call`, if `argument` has only flags of `flags`.
constexpr AllowedCall withFlags(std::uint32_t call, unsigned argument, std::uint32_t flags) {
  return {call, argument, ~flags};
}

/// `call`, if `argument` is `command`.
constexpr AllowedCall withCommand(std::uint32_t call, unsigned argument, std::uint32_t command) {
  return {call, argument, ~0U, command};
}

constexpr std::array allowedCalls = {
    // Reading files and folders
    withFlags(SYS_openat, 2, O_CLOEXEC | O_DIRECTORY | O_LARGEFILE | O_NOCTTY | O_NOFOLLOW | O_NONBLOCK),
    AllowedCall{SYS_close},
    AllowedCall{SYS_read},
    AllowedCall{SYS_preadv2},
    AllowedCall{SYS_fadvise64},
    AllowedCall{SYS_lseek},
    AllowedCall{SYS_getdents64},
    AllowedCall{SYS_fstat},
    AllowedCall{SYS_newfstatat},
#ifdef SYS_readlink
    AllowedCall{SYS_readlink},
#endif
    AllowedCall{SYS_readlinkat},
    AllowedCall{SYS_getcwd},
    AllowedCall{SYS_getuid},
    // The two streams
    AllowedCall{SYS_write},
    AllowedCall{SYS_writev},
#ifdef SYS_poll
    AllowedCall{SYS_poll},
#endif
    AllowedCall{SYS_ppoll},
    AllowedCall{SYS_restart_syscall},
    withCommand(SYS_ioctl, 1, TCGETS),
#ifdef TCGETS2
    withCommand(SYS_ioctl, 1, TCGETS2),
#endif
    // Memory, none of it to be run
    AllowedCall{SYS_brk},
    withFlags(SYS_mmap, 2, PROT_READ | PROT_WRITE),
    withFlags(SYS_mprotect, 2, PROT_READ | PROT_WRITE),
    AllowedCall{SYS_mremap},
    AllowedCall{SYS_munmap},
    withCommand(SYS_madvise, 2, MADV_DONTNEED),
    // The process itself
    AllowedCall{SYS_clock_gettime},
    AllowedCall{SYS_gettimeofday},
    AllowedCall{SYS_getrandom},
    AllowedCall{SYS_futex},
    AllowedCall{SYS_rt_sigaction},
    AllowedCall{SYS_rt_sigprocmask},
    AllowedCall{SYS_rt_sigreturn},
    AllowedCall{SYS_exit_group},
#ifdef HALVANE_SANITIZED
    // What AddressSanitizer and UndefinedBehaviorSanitizer need, in builds that nobody installs
    AllowedCall{SYS_getpid},
    AllowedCall{SYS_gettid},
    AllowedCall{SYS_madvise},
    AllowedCall{SYS_pipe2},
    AllowedCall{SYS_sched_yield},
    AllowedCall{SYS_sigaltstack},
#ifdef SYS_open
    withFlags(SYS_open, 1, O_CLOEXEC),
#endif
#endif
};

/// Calls for which the filter answers that they don't exist. A filter can't see their arguments, and the C
/// library has another way for kernels without them.
constexpr std::array<std::uint32_t, 2> hiddenCalls = {SYS_openat2, SYS_clone3};

}  // namespace halvane::sandbox
