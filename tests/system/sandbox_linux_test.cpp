#include "system/sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/random.h>
#include <seccomp.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utime.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

// A system call that is tried: its result, negative with errno set when it fails.
using Act = std::function<long()>;

std::string outcome(const Act& act) {
  errno = 0;
  return act() >= 0 ? "done" : strerrorname_np(errno);
}

// What becomes of each act in a process that has given up everything but reading. Each gets a process of its
// own, so that one that is done after all disturbs no other.
std::string outcomeInside(const Act& act) {
  return inChildProcess([&] {
    sandbox::enterReadOnly();
    return outcome(act);
  });
}

bool isRefused(const std::string& result) {
  return result == "EPERM" || result == "EACCES";
}

// What Linux may be built without. Where it is, an act beyond what the filter knows is not refused.
bool knowsLandlock(long version) {
  return syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) >= version;
}

class Sandbox : public testing::Test {
 protected:
  Sandbox() {
    writeFile(folder_.below("file"), "before");
    makeFolder(folder_.below("folder"));
  }

  std::string at(std::string_view name) const { return folder_.below(name); }

  const TemporaryFolder folder_;
};

TEST_F(Sandbox, LetsNoFileBeWrittenOrCreated) {
  const std::string file = at("file");
  const std::string fresh = at("fresh");
  const std::map<std::string, Act> acts = {
      {"open to write", [&] { return open(file.c_str(), O_WRONLY | O_CLOEXEC); }},
      {"open to read and write", [&] { return open(file.c_str(), O_RDWR | O_CLOEXEC); }},
      {"open to append", [&] { return open(file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC); }},
      {"open to cut", [&] { return open(file.c_str(), O_RDONLY | O_TRUNC | O_CLOEXEC); }},
      {"open to create", [&] { return open(fresh.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600); }},
      {"open without a name",
       [&] { return open(at("folder").c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600); }},
      {"creat", [&] { return creat(fresh.c_str(), 0600); }},
      {"truncate", [&] { return truncate(file.c_str(), 0); }},
      {"mkdir", [&] { return mkdir(fresh.c_str(), 0700); }},
      {"mkfifo", [&] { return mkfifo(fresh.c_str(), 0600); }},
      {"mknod", [&] { return mknod(fresh.c_str(), S_IFREG | 0600, 0); }},
      {"symlink", [&] { return symlink("file", fresh.c_str()); }},
      {"link", [&] { return link(file.c_str(), fresh.c_str()); }},
  };
  for (const auto& [name, act] : acts) EXPECT_PRED1(isRefused, outcomeInside(act)) << name;
  std::ifstream content(file);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(content), {}), "before");
  EXPECT_FALSE(std::filesystem::exists(fresh));
}

TEST_F(Sandbox, LetsNothingBeRemovedRenamedOrChanged) {
  const std::string file = at("file");
  const std::map<std::string, Act> acts = {
      {"unlink", [&] { return unlink(file.c_str()); }},
      {"rmdir", [&] { return rmdir(at("folder").c_str()); }},
      {"rename", [&] { return rename(file.c_str(), at("renamed").c_str()); }},
      {"renameat2",
       [&] {
         return syscall(SYS_renameat2, AT_FDCWD, file.c_str(), AT_FDCWD, at("folder").c_str(),
                        RENAME_EXCHANGE);
       }},
      {"chmod", [&] { return chmod(file.c_str(), 0777); }},
      {"fchmodat", [&] { return fchmodat(AT_FDCWD, file.c_str(), 0777, 0); }},
      {"chown", [&] { return chown(file.c_str(), getuid(), getgid()); }},
      {"lchown", [&] { return lchown(file.c_str(), getuid(), getgid()); }},
      {"utime", [&] { return utime(file.c_str(), nullptr); }},
      {"utimensat", [&] { return utimensat(AT_FDCWD, file.c_str(), nullptr, 0); }},
      {"setxattr", [&] { return setxattr(file.c_str(), "user.a", "b", 1, 0); }},
      {"removexattr", [&] { return removexattr(file.c_str(), "user.a"); }},
  };
  for (const auto& [name, act] : acts) EXPECT_PRED1(isRefused, outcomeInside(act)) << name;
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_TRUE(std::filesystem::exists(at("folder")));
}

TEST(SandboxedProcess, OpensNoSocketOfAnyFamily) {
  for (const int family : {AF_UNIX, AF_INET, AF_INET6, AF_NETLINK, AF_PACKET, AF_VSOCK}) {
    for (const int type : {SOCK_STREAM, SOCK_DGRAM}) {
      EXPECT_EQ(outcomeInside([&] { return socket(family, type | SOCK_CLOEXEC, 0); }), "EPERM") << family;
    }
  }
  EXPECT_EQ(outcomeInside([] {
              int pair[2];
              return socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair);
            }),
            "EPERM");
}

TEST(SandboxedProcess, StartsNothing) {
  const std::map<std::string, Act> acts = {
      {"execve", [] { return execl("/bin/true", "true", nullptr); }},
      {"execveat", [] { return syscall(SYS_execveat, AT_FDCWD, "/bin/true", nullptr, nullptr, 0); }},
      {"clone", [] { return syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr); }},
      {"fork", [] { return fork(); }},
  };
  for (const auto& [name, act] : acts) EXPECT_EQ(outcomeInside(act), "EPERM") << name;
}

TEST(SandboxedProcess, LeavesOtherProcessesAlone) {
  const pid_t parent = getpid();
  const std::map<std::string, Act> acts = {
      {"kill", [=] { return kill(parent, SIGCONT); }},
      {"kill the group", [] { return kill(0, SIGCONT); }},
      {"kill all", [] { return kill(-1, SIGCONT); }},
      {"tgkill", [=] { return syscall(SYS_tgkill, parent, parent, SIGCONT); }},
      {"tkill", [=] { return syscall(SYS_tkill, parent, SIGCONT); }},
      {"ptrace", [=] { return ptrace(PTRACE_SEIZE, parent, nullptr, nullptr); }},
      {"process_vm_readv", [=] { return syscall(SYS_process_vm_readv, parent, nullptr, 0, nullptr, 0, 0); }},
      {"pidfd_open", [=] { return syscall(SYS_pidfd_open, parent, 0); }},
  };
  for (const auto& [name, act] : acts) EXPECT_EQ(outcomeInside(act), "EPERM") << name;
}

TEST(SandboxedProcess, LeavesTheSystemAlone) {
  const std::map<std::string, Act> acts = {
      {"mount", [] { return mount(nullptr, nullptr, nullptr, 0, nullptr); }},
      {"umount", [] { return umount2(nullptr, 0); }},
      {"chroot", [] { return chroot("/"); }},
      {"unshare", [] { return syscall(SYS_unshare, 0); }},
      {"setns", [] { return syscall(SYS_setns, -1, 0); }},
      {"keyctl", [] { return syscall(SYS_keyctl, 0, 0, 0, 0, 0); }},
      {"add_key", [] { return syscall(SYS_add_key, nullptr, nullptr, nullptr, 0, 0); }},
      {"bpf", [] { return syscall(SYS_bpf, 0, nullptr, 0); }},
      {"perf_event_open", [] { return syscall(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
      {"io_uring_setup", [] { return syscall(SYS_io_uring_setup, 1, nullptr); }},
      {"typing for a terminal", [] { return ioctl(STDIN_FILENO, TIOCSTI, "x"); }},
  };
  for (const auto& [name, act] : acts) EXPECT_EQ(outcomeInside(act), "EPERM") << name;
}

// A C library that tries these first takes another way when the kernel doesn't have them.
TEST(SandboxedProcess, SaysOfCallsThatHideTheirArgumentsThatThereAreNone) {
  EXPECT_EQ(outcomeInside([] { return syscall(SYS_clone3, nullptr, 0); }), "ENOSYS");
  EXPECT_EQ(outcomeInside([] { return syscall(SYS_openat2, AT_FDCWD, "/", nullptr, 0); }), "ENOSYS");
}

TEST(SandboxedProcess, MayNotControlADeviceThatItOpens) {
  if (!knowsLandlock(5)) GTEST_SKIP() << "this kernel's Landlock doesn't know of device controls";
  const Act entropy = [] {
    int bits = 0;
    return ioctl(open("/dev/urandom", O_RDONLY | O_CLOEXEC), RNDGETENTCNT, &bits);
  };
  EXPECT_EQ(outcome(entropy), "done");
  EXPECT_EQ(outcomeInside(entropy), "EACCES");
}

TEST_F(Sandbox, LeavesReadingAsItWas) {
  const std::map<std::string, Act> acts = {
      {"a file", [&] { return open(at("file").c_str(), O_RDONLY | O_CLOEXEC); }},
      {"a folder", [&] { return open(at("folder").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }},
      {"without waiting", [] { return open("/dev/null", O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }},
      {"a device by its status",
       [] {
         struct stat status {};
         return stat("/dev/null", &status);
       }},
      {"a signal to itself", [] { return kill(getpid(), 0); }},
  };
  for (const auto& [name, act] : acts) EXPECT_EQ(outcomeInside(act), "done") << name;
}

// For a child process: from here on the kernel doesn't know `calls`, nor a filter of system calls by its
// older name when `filters` is false. As in an old kernel, or in a container that allows no more.
void forget(const std::vector<int>& calls, bool filters) {
  using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;
  const Filter filter(seccomp_init(SCMP_ACT_ALLOW), &seccomp_release);
  for (const int call : calls) seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), call, 0);
  const scmp_arg_cmp setFilter{0, SCMP_CMP_EQ, PR_SET_SECCOMP, 0};
  if (!filters) seccomp_rule_add_array(filter.get(), SCMP_ACT_ERRNO(EINVAL), SCMP_SYS(prctl), 1, &setFilter);
  if (seccomp_load(filter.get()) != 0) throw std::runtime_error("the filter is refused");
}

TEST_F(Sandbox, IsHeldByEitherOfItsTwoLocksAlone) {
  const std::string file = at("file");
  const std::map<std::string, Act> acts = {
      {"write", [&] { return open(file.c_str(), O_WRONLY | O_CLOEXEC); }},
      {"cut at opening", [&] { return open(file.c_str(), O_RDONLY | O_TRUNC | O_CLOEXEC); }},
      {"cut", [&] { return truncate(file.c_str(), 0); }},
      {"create", [&] { return creat(at("fresh").c_str(), 0600); }},
      {"make a folder", [&] { return mkdir(at("fresh").c_str(), 0700); }},
      {"remove", [&] { return unlink(file.c_str()); }},
      {"rename", [&] { return rename(file.c_str(), at("fresh").c_str()); }},
  };
  const auto outcomeAfterForgetting = [](const std::vector<int>& calls, bool filters, const Act& act) {
    return inChildProcess([&] {
      forget(calls, filters);
      sandbox::enterReadOnly();
      return outcome(act);
    });
  };
  for (const auto& [name, act] : acts) {
    EXPECT_EQ(outcomeAfterForgetting({SCMP_SYS(landlock_create_ruleset)}, true, act), "EPERM") << name;
    if (!knowsLandlock(3)) continue;
    EXPECT_EQ(outcomeAfterForgetting({SCMP_SYS(seccomp)}, false, act), "EACCES") << name;
  }
}

TEST_F(Sandbox, LeavesUsableWhatIsOpen) {
  const int descriptor = open(at("file").c_str(), O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(outcomeInside([&] { return write(descriptor, "after!", 6); }), "done");
  close(descriptor);
}

TEST(SandboxedProcess, IsInItForGood) {
  EXPECT_EQ(inChildProcess([] {
              sandbox::enterReadOnly();
              sandbox::enterReadOnly();
              return std::to_string(prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0)) + " " +
                     std::to_string(prctl(PR_GET_SECCOMP, 0, 0, 0, 0)) + " " +
                     outcome([] { return socket(AF_UNIX, SOCK_STREAM, 0); });
            }),
            "1 2 EPERM");
}

}  // namespace
}  // namespace halvane
