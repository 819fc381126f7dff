#include "tests/sandbox/acts_linux.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/keyctl.h>
#include <linux/random.h>
#include <mqueue.h>
#include <netinet/in.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace halvane {
namespace {

long openAs(const Scene& scene, int flags) {
  return open(scene.path, flags | O_CLOEXEC, 0600);
}
long made(pid_t child) {
  if (child == 0) _exit(0);
  return child;
}
long got(const void* memory) {
  return memory == MAP_FAILED ? -1 : 0;
}
long readFrom(const std::string& path, const void* at = nullptr) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0 || lseek(file, static_cast<off_t>(reinterpret_cast<std::uintptr_t>(at)), SEEK_SET) < 0)
    return -1;
  char byte = 0;
  return read(file, &byte, 1);
}
using Reaching = int (*)(int, const sockaddr*, socklen_t);
long reachTcp(Reaching reach, in_port_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = port;
  const int mine = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  return mine < 0 ? -1 : reach(mine, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}
long readOther(const Scene& scene) {
  char mine = 0;
  static char theirs = 1;
  const iovec here{&mine, 1};
  const iovec there{&theirs, 1};
  return process_vm_readv(scene.other, &here, 1, &there, 1, 0);
}
long writeIntoOther(const Scene& scene) {
  static char same = 1;
  const iovec bytes{&same, 1};
  return process_vm_writev(scene.other, &bytes, 1, &bytes, 1, 0);
}
long reachAbstract(const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  name.copy(address.sun_path, sizeof address.sun_path);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
  const int mine = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  return mine < 0 ? -1 : connect(mine, reinterpret_cast<const sockaddr*>(&address), size);
}
long setSameName() {
  std::array<char, 65> name{};
  gethostname(name.data(), name.size());
  return syscall(SYS_sethostname, name.data(), strlen(name.data()));
}

// By number, where the C library that we build on doesn't know the call
constexpr long fchmodat2 = 452, setxattrat = 463, removexattrat = 466, fileGetattr = 468, fileSetattr = 469;

constexpr bool refused = true;
constexpr bool through = false;

const Act everyAct[] = {
    // Writing and creating
    {"OpenToWrite", refused, 1, [](const Scene& s) { return openAs(s, O_WRONLY); }},
    {"OpenToReadAndWrite", refused, 1, [](const Scene& s) { return openAs(s, O_RDWR); }},
    {"OpenToAppend", refused, 1, [](const Scene& s) { return openAs(s, O_WRONLY | O_APPEND); }},
#ifdef SYS_open
    {"OpenByTheOldCall", refused, 1, [](const Scene& s) { return syscall(SYS_open, s.path, O_WRONLY); }},
#endif
    {"OpenToCut", refused, 3, [](const Scene& s) { return openAs(s, O_RDONLY | O_TRUNC); }},
    {"OpenToCreate", refused, 1,
     [](const Scene& s) -> long { return open(s.fresh.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600); }},
    {"OpenWithoutAName", refused, 1,
     [](const Scene& s) -> long { return open(s.folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600); }},
    {"Creat", refused, 1, [](const Scene& s) -> long { return creat(s.fresh.c_str(), 0600); }},
    {"Truncate", refused, 3, [](const Scene& s) -> long { return truncate(s.path, 0); }},
    {"Mkdir", refused, 1, [](const Scene& s) -> long { return mkdir(s.fresh.c_str(), 0700); }},
    {"Mkfifo", refused, 1, [](const Scene& s) -> long { return mkfifo(s.fresh.c_str(), 0600); }},
    {"Mknod", refused, 1, [](const Scene& s) -> long { return mknod(s.fresh.c_str(), S_IFREG, 0); }},
    {"MakeASocket", refused, 1,
     [](const Scene& s) -> long { return mknod(s.fresh.c_str(), S_IFSOCK, 0); }},
    {"MakeACharacterDevice", refused, 1,
     [](const Scene& s) -> long { return mknod(s.fresh.c_str(), S_IFCHR, makedev(1, 3)); }},
    {"MakeABlockDevice", refused, 1,
     [](const Scene& s) -> long { return mknod(s.fresh.c_str(), S_IFBLK, makedev(7, 0)); }},
    {"Symlink", refused, 1, [](const Scene& s) -> long { return symlink("file", s.fresh.c_str()); }},
    {"Link", refused, 1, [](const Scene& s) -> long { return link(s.path, s.fresh.c_str()); }},
    {"MemoryFile", refused, never, [](const Scene&) { return syscall(SYS_memfd_create, "x", 0); }},

    // Removing and renaming
    {"Unlink", refused, 1, [](const Scene& s) -> long { return unlink(s.path); }},
    {"Rmdir", refused, 1, [](const Scene& s) -> long { return rmdir(s.subfolder.c_str()); }},
    {"Rename", refused, 1, [](const Scene& s) -> long { return rename(s.path, s.fresh.c_str()); }},
    {"MoveIntoAnotherFolder", refused, 1,
     [](const Scene& s) -> long { return rename(s.path, (s.subfolder + "/file").c_str()); }},
    {"Exchange", refused, 1,
     [](const Scene& s) {
       return syscall(SYS_renameat2, AT_FDCWD, s.path, AT_FDCWD, s.subfolder.c_str(), RENAME_EXCHANGE);
     }},

    // Modes, owners, times and attributes
    {"Chmod", refused, never, [](const Scene& s) -> long { return chmod(s.path, 0777); }},
    {"Fchmod", refused, never, [](const Scene& s) -> long { return fchmod(s.reading, 0777); }},
    {"Fchmodat2", refused, never,
     [](const Scene& s) { return syscall(fchmodat2, AT_FDCWD, s.path, 0777, 0); }},
    {"Chown", refused, never, [](const Scene& s) -> long { return chown(s.path, getuid(), getgid()); }},
    {"Lchown", refused, never, [](const Scene& s) -> long { return lchown(s.path, getuid(), getgid()); }},
    {"Fchown", refused, never, [](const Scene& s) -> long { return fchown(s.reading, getuid(), getgid()); }},
    {"Utimes", refused, never, [](const Scene& s) -> long { return utimes(s.path, nullptr); }},
    {"Utimensat", refused, never,
     [](const Scene& s) -> long { return utimensat(AT_FDCWD, s.path, nullptr, 0); }},
    {"Futimens", refused, never, [](const Scene& s) -> long { return futimens(s.reading, nullptr); }},
    {"Setxattr", refused, never,
     [](const Scene& s) -> long { return setxattr(s.path, "user.b", "b", 1, 0); }},
    {"Lsetxattr", refused, never,
     [](const Scene& s) -> long { return lsetxattr(s.path, "user.b", "b", 1, 0); }},
    {"Fsetxattr", refused, never,
     [](const Scene& s) -> long { return fsetxattr(s.reading, "user.b", "b", 1, 0); }},
    {"Setxattrat", refused, never,
     [](const Scene& s) {
       struct {
         std::uint64_t value;
         std::uint32_t size, flags;
       } const arguments{reinterpret_cast<std::uintptr_t>("b"), 1, 0};
       return syscall(setxattrat, AT_FDCWD, s.path, 0, "user.b", &arguments, sizeof arguments);
     }},
    {"Removexattr", refused, never, [](const Scene& s) -> long { return removexattr(s.path, "user.a"); }},
    {"Removexattrat", refused, never,
     [](const Scene& s) { return syscall(removexattrat, AT_FDCWD, s.path, 0, "user.a"); }},
    {"FileSetattr", refused, never,
     [](const Scene& s) {
       std::array<std::uint64_t, 3> attributes{};
       if (syscall(fileGetattr, AT_FDCWD, s.path, attributes.data(), sizeof attributes, 0) != 0) return -1L;
       return syscall(fileSetattr, AT_FDCWD, s.path, attributes.data(), sizeof attributes, 0);
     }},
    {"SetFlags", refused, never,
     [](const Scene& s) -> long {
       int flags = 0;
       ioctl(s.reading, FS_IOC_GETFLAGS, &flags);  // ext4 lets nobody take its own flags away
       flags |= FS_NODUMP_FL;
       return ioctl(s.reading, FS_IOC_SETFLAGS, &flags);
     }},

    // Other processes
    {"Kill", refused, 6, [](const Scene& s) -> long { return kill(s.other, SIGCONT); }},
    {"KillTheGroup", refused, never, [](const Scene&) -> long { return kill(0, SIGCONT); }},
    {"Tgkill", refused, 6, [](const Scene& s) { return syscall(SYS_tgkill, s.other, s.other, SIGCONT); }},
    {"Tkill", refused, 6, [](const Scene& s) { return syscall(SYS_tkill, s.other, SIGCONT); }},
    {"QueueASignal", refused, 6, [](const Scene& s) -> long { return sigqueue(s.other, SIGCONT, {}); }},
    {"SignalByHandleOfProc", refused, 6,
     [](const Scene& s) {
       const int handle = open(s.procOfOther.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
       return syscall(SYS_pidfd_send_signal, handle, SIGCONT, nullptr, 0);
     }},
    {"PidfdOpen", refused, never, [](const Scene& s) { return syscall(SYS_pidfd_open, s.other, 0); }},
    {"SetOwnerOfSignals", refused, never,
     [](const Scene& s) -> long {
       const f_owner_ex owner{F_OWNER_PID, s.other};
       return fcntl(s.reading, F_SETOWN_EX, &owner);
     }},
    {"ChooseSignal", refused, never, [](const Scene& s) -> long { return fcntl(s.reading, F_SETSIG, SIGCONT); }},
    {"AskForSignals", refused, never, [](const Scene& s) -> long { return fcntl(s.reading, F_SETFL, O_ASYNC); }},
    {"LimitAnother", refused, never,
     [](const Scene& s) -> long {
       rlimit limit{};
       prlimit(s.other, RLIMIT_CPU, nullptr, &limit);
       return prlimit(s.other, RLIMIT_CPU, &limit, nullptr);
     }},
    {"SetPriority", refused, never, [](const Scene& s) -> long { return setpriority(PRIO_PROCESS, static_cast<id_t>(s.other), 0); }},
    {"Trace", refused, 1, [](const Scene& s) { return ptrace(PTRACE_SEIZE, s.other, nullptr, nullptr); }},
    {"ReadAnother", refused, 1, readOther},
    {"WriteIntoAnother", refused, 1, writeIntoOther},
    {"ReadMemoryByProc", through, 1,
     [](const Scene& s) {
       static const char theirs = 1;
       return readFrom(s.procOfOther + "/mem", &theirs);
     }},
    {"ReadOpenFileByProc", through, 1, [](const Scene& s) { return readFrom(s.procOfOther + "/exe"); }},

    // Starting something
    {"Execve", refused, 1, [](const Scene&) -> long { return execl("/bin/true", "true", nullptr); }},
    {"Fork", refused, never, [](const Scene&) { return made(fork()); }},
    {"Clone", refused, never,
     [](const Scene&) {
       return made(static_cast<pid_t>(syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr)));
     }},
    {"MemoryToRun", refused, never,
     [](const Scene&) {
       return got(mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
     }},
    {"MemoryMadeToRun", refused, never,
     [](const Scene&) -> long {
       void* const memory = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
       return mprotect(memory, 4096, PROT_READ | PROT_EXEC);
     }},

    // Reaching out
    {"BindTcp", refused, 4, [](const Scene&) { return reachTcp(bind, 0); }},
    {"ConnectTcp", refused, 4, [](const Scene& s) { return reachTcp(connect, s.port); }},
    {"ConnectToAnAbstractSocket", refused, 6, [](const Scene& s) { return reachAbstract(s.abstractSocket); }},
    {"SocketPair", refused, never,
     [](const Scene&) -> long {
       int pair[2];
       return socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair);
     }},
    {"TypeIntoTheTerminal", refused, never,
     [](const Scene& s) { return syscall(SYS_ioctl, s.terminal, TIOCSTI, "x"); }},
    {"TypeWithAHigherBit", refused, never,
     [](const Scene& s) { return syscall(SYS_ioctl, s.terminal, TIOCSTI | 1UL << 32, "x"); }},
    {"ControlADevice", refused, 5,
     [](const Scene&) -> long {
       int bits = 0;
       return ioctl(open("/dev/urandom", O_RDONLY | O_CLOEXEC), RNDGETENTCNT, &bits);
     }},
    {"MessageQueue", refused, never,
     [](const Scene& s) -> long {
       const std::string name = "/halvane-" + s.folder.substr(s.folder.rfind('/') + 1);
       const mqd_t queue = mq_open(name.c_str(), O_CREAT | O_RDONLY, 0600, nullptr);
       if (queue >= 0) mq_unlink(name.c_str());
       return queue;
     }},
    {"SharedMemory", refused, never,
     [](const Scene&) -> long {
       const int segment = shmget(IPC_PRIVATE, 4096, IPC_CREAT | 0600);
       if (segment >= 0) shmctl(segment, IPC_RMID, nullptr);
       return segment;
     }},

    // The system
    {"Mount", refused, 1,
     [](const Scene& s) -> long {
       const int outcome = mount("none", s.subfolder.c_str(), "tmpfs", 0, nullptr);
       if (outcome == 0) umount2(s.subfolder.c_str(), MNT_DETACH);
       return outcome;
     }},
    {"Chroot", refused, never, [](const Scene&) -> long { return chroot("/"); }},
    {"Unshare", refused, never, [](const Scene&) -> long { return unshare(CLONE_NEWUSER); }},
    {"Setns", refused, never,
     [](const Scene& s) -> long {
       return setns(open((s.procOfOther + "/ns/uts").c_str(), O_RDONLY | O_CLOEXEC), 0);
     }},
    {"NameTheMachine", refused, never, [](const Scene&) { return setSameName(); }},
    {"Keyring", refused, never,
     [](const Scene&) { return syscall(SYS_keyctl, KEYCTL_GET_KEYRING_ID, KEY_SPEC_PROCESS_KEYRING, 1); }},
    {"Bpf", refused, never,
     [](const Scene&) {
       std::array<std::uint32_t, 32> map{2, 4, 4, 1};  // an array of one number
       return syscall(SYS_bpf, 0, map.data(), sizeof map);
     }},
    {"IoUring", refused, never,
     [](const Scene&) {
       std::array<std::uint32_t, 30> parameters{};
       return syscall(SYS_io_uring_setup, 1, parameters.data());
     }},
};

}  // namespace

std::span<const Act> allActs() {
  return everyAct;
}

}  // namespace halvane
