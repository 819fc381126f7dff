#include <fcntl.h>
#include <linux/landlock.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "system/sandbox.h"

namespace halvane::sandbox {
namespace {

// What the kernel's header has grown since the oldest system that we build on.
struct Ruleset {
  std::uint64_t files;
  std::uint64_t network;
  std::uint64_t scopes;
};
constexpr std::uint64_t truncateFile = 1ULL << 14;
constexpr std::uint64_t useDeviceControls = 1ULL << 15;
constexpr std::uint64_t bindOrConnectTcp = 1ULL << 0 | 1ULL << 1;
constexpr std::uint64_t reachOutsideSocketsAndProcesses = 1ULL << 0 | 1ULL << 1;

constexpr std::uint64_t changeFiles =
    LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
    LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
    LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
    LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

// Refused whatever their arguments are. Allow-lists break at the next update of the C library, so this is a
// list of what reading and answering will never need, beyond what Landlock refuses already.
constexpr std::array refused = {
    // Sockets of every family: without one there is nothing to bind, connect or send to.
    SCMP_SYS(socket), SCMP_SYS(socketpair),
    // Other programs and processes.
    SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork), SCMP_SYS(vfork), SCMP_SYS(clone), SCMP_SYS(ptrace),
    SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev), SCMP_SYS(pidfd_open), SCMP_SYS(rt_sigqueueinfo),
    SCMP_SYS(rt_tgsigqueueinfo), SCMP_SYS(tkill),
    // What Landlock does not know of a file, its attributes, or makes every opening pay for, its length.
    SCMP_SYS(truncate), SCMP_SYS(chmod), SCMP_SYS(fchmod), SCMP_SYS(fchmodat), SCMP_SYS(chown),
    SCMP_SYS(fchown), SCMP_SYS(lchown), SCMP_SYS(fchownat), SCMP_SYS(utime), SCMP_SYS(utimes),
    SCMP_SYS(utimensat), SCMP_SYS(futimesat), SCMP_SYS(setxattr), SCMP_SYS(lsetxattr), SCMP_SYS(fsetxattr),
    SCMP_SYS(removexattr), SCMP_SYS(lremovexattr), SCMP_SYS(fremovexattr),
    // The system as a whole.
    SCMP_SYS(mount), SCMP_SYS(umount2), SCMP_SYS(move_mount), SCMP_SYS(pivot_root), SCMP_SYS(chroot),
    SCMP_SYS(unshare), SCMP_SYS(setns), SCMP_SYS(keyctl), SCMP_SYS(add_key), SCMP_SYS(request_key),
    SCMP_SYS(bpf), SCMP_SYS(perf_event_open), SCMP_SYS(io_uring_setup), SCMP_SYS(io_uring_enter),
    SCMP_SYS(io_uring_register)};

// What Landlock refuses, for kernels that come without it: each call in the filter takes time at the start.
constexpr std::array refusedWithoutLandlock = {
    SCMP_SYS(creat),     SCMP_SYS(unlink),  SCMP_SYS(unlinkat), SCMP_SYS(rename),  SCMP_SYS(renameat),
    SCMP_SYS(renameat2), SCMP_SYS(link),    SCMP_SYS(linkat),   SCMP_SYS(symlink), SCMP_SYS(symlinkat),
    SCMP_SYS(mkdir),     SCMP_SYS(mkdirat), SCMP_SYS(rmdir),    SCMP_SYS(mknod),   SCMP_SYS(mknodat)};

using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;

void refuse(const Filter& filter, int call) {
  seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(EPERM), call, 0);
}

void refuseWhere(const Filter& filter, int call, const scmp_arg_cmp& argument) {
  seccomp_rule_add_array(filter.get(), SCMP_ACT_ERRNO(EPERM), call, 1, &argument);
}

// Opening stays allowed for reading. openat2 hides its flags from a filter, and a new C library takes another
// way when a kernel doesn't have it, or clone3.
void refuseOpeningForWriting(const Filter& filter) {
  constexpr std::array<unsigned, 4> writing = {O_WRONLY, O_RDWR, O_CREAT, O_TRUNC};
  for (const unsigned flag : writing) {
    refuseWhere(filter, SCMP_SYS(open), {1, SCMP_CMP_MASKED_EQ, flag, flag});
    refuseWhere(filter, SCMP_SYS(openat), {2, SCMP_CMP_MASKED_EQ, flag, flag});
  }
  seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(openat2), 0);
  seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0);
}

// Whether the kernel has taken the filter.
bool refuseSystemCalls(bool landlocked) {
  const Filter filter(seccomp_init(SCMP_ACT_ALLOW), &seccomp_release);
  if (!filter) return false;
  constexpr std::uint32_t binarySearch = 2;
  seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_OPTIMIZE, binarySearch);
  // A call by the rules of another processor, which the filter can't look into
  seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ERRNO(EPERM));
  for (const int call : refused) refuse(filter, call);
  if (!landlocked) {
    for (const int call : refusedWithoutLandlock) refuse(filter, call);
  }
  refuseOpeningForWriting(filter);
  const auto self = static_cast<std::uint64_t>(getpid());
  refuseWhere(filter, SCMP_SYS(kill), {0, SCMP_CMP_NE, self, 0});
  refuseWhere(filter, SCMP_SYS(tgkill), {0, SCMP_CMP_NE, self, 0});
  refuseWhere(filter, SCMP_SYS(ioctl), {1, SCMP_CMP_EQ, TIOCSTI, 0});
  return seccomp_load(filter.get()) == 0;
}

// Landlock: rights that a ruleset handles and grants to no folder are gone everywhere. Reading is not
// handled, so it stays as it was. Each version of the interface knows more rights, and refuses those that it
// doesn't know.
//
// The right to cut files short is taken only where the filter isn't there to refuse it: with that one in the
// ruleset the kernel walks from every file that is opened, be it only to read, up to the root of the file
// system, and a search of many small files takes a third longer.
void giveUpChangingFiles(long version, bool filtered) {
  Ruleset ruleset{changeFiles, 0, 0};
  if (version >= 2) ruleset.files |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= 3 && !filtered) ruleset.files |= truncateFile;
  if (version >= 4) ruleset.network = bindOrConnectTcp;
  if (version >= 5) ruleset.files |= useDeviceControls;
  if (version >= 6) ruleset.scopes = reachOutsideSocketsAndProcesses;
  const std::size_t size = version >= 6   ? sizeof ruleset
                           : version >= 4 ? offsetof(Ruleset, scopes)
                                          : offsetof(Ruleset, network);
  const long descriptor = syscall(SYS_landlock_create_ruleset, &ruleset, size, 0);
  if (descriptor < 0) return;
  syscall(SYS_landlock_restrict_self, descriptor, 0);
  close(static_cast<int>(descriptor));
}

}  // namespace

void enterReadOnly() {
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const long landlock = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  const bool filtered = refuseSystemCalls(landlock >= 1);
  if (landlock >= 1) giveUpChangingFiles(landlock, filtered);
}

}  // namespace halvane::sandbox
