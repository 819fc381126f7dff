#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "sandbox/sandbox.h"
#include "tests/sandbox/acts_linux.h"
#include "tests/support/child_process.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

// Does each act in a child process: outside the sandbox, where it must succeed, then inside, then with each
// of the two locks alone.

namespace halvane {

std::ostream& operator<<(std::ostream& out, const Act& act) {
  return out << act.name;
}

namespace {

// A terminal that this process takes its orders from, or -1
int ownTerminal() {
  int controlling = -1;
  int terminal = -1;
  if (setsid() < 0 || openpty(&controlling, &terminal, nullptr, nullptr, nullptr) != 0) return -1;
  return ioctl(terminal, TIOCSCTTY, 0) == 0 ? terminal : -1;
}

// Network byte order; 0 where there is no network
in_port_t listeningPort() {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listen(listener, 1) != 0 || getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
    return 0;
  return address.sin_port;
}

// The name that the kernel gives to a socket in no folder
std::string listeningAbstractSocket() {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socklen_t size = sizeof address.sun_family;
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bind(listener, reinterpret_cast<const sockaddr*>(&address), size) != 0 || listen(listener, 1) != 0)
    return "";
  size = sizeof address;
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  return {address.sun_path, size - offsetof(sockaddr_un, sun_path)};
}

std::string outcomeOf(const Act& act, const std::function<void()>& enter) {
  const TemporaryFolder folder;
  writeFile(folder.below("file"), "before");
  makeFolder(folder.below("subfolder"));
  setxattr(folder.below("file").c_str(), "user.a", "a", 1, 0);
  const pid_t parent = getpid();
  return inChildProcess([&] {
    const std::string file = folder.below("file");
    const Scene scene{folder.path(),
                      file,
                      folder.below("fresh"),
                      folder.below("subfolder"),
                      file.c_str(),
                      open(file.c_str(), O_RDONLY | O_CLOEXEC),
                      ownTerminal(),
                      parent,
                      "/proc/" + std::to_string(parent),
                      listeningPort(),
                      listeningAbstractSocket()};
    enter();
    errno = 0;
    return std::string(act.deed(scene) >= 0 ? "done" : strerrorname_np(errno));
  });
}

bool isRefused(const std::string& outcome) {
  return outcome == "EPERM" || outcome == "EACCES";
}

void enterWithout(const std::vector<RefusedCall>& calls) {
  refuseCalls(calls);
  sandbox::enterReadOnly();
}

class SandboxActs : public testing::TestWithParam<Act> {};

TEST_P(SandboxActs, AreRefusedByTheLocksThatPromiseIt) {
  const Act& act = GetParam();
  const std::string outside = outcomeOf(act, [] {});
  // A program that was started has nothing to say.
  if (outside != "done" && outside != "") GTEST_SKIP() << "not to be done here even outside: " << outside;
  const long version = versionOfLandlock();
  const bool byBoth = isRefused(outcomeOf(act, [] { sandbox::enterReadOnly(); }));
  EXPECT_EQ(byBoth, act.filter || version >= act.landlock);
  const bool byFilter = isRefused(outcomeOf(act, [] { enterWithout(callsOfLandlock()); }));
  EXPECT_EQ(byFilter, act.filter) << "without Landlock";
  const bool byLandlock = isRefused(outcomeOf(act, [] { enterWithout(callsOfFilters()); }));
  EXPECT_EQ(byLandlock, version >= act.landlock) << "without a filter";
}

INSTANTIATE_TEST_SUITE_P(, SandboxActs, testing::ValuesIn(allActs().begin(), allActs().end()),
                         [](const auto& of) { return std::string(of.param.name); });

std::string outcomeOfReading(const std::string& path) {
  char byte = 0;
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  return file >= 0 && read(file, &byte, 1) == 1 ? "done" : strerrorname_np(errno);
}

// Of an ordinary user: root may read it all the same.
TEST(SandboxedProcess, ReadsNoEnvironmentOfAnother) {
  if (versionOfLandlock() < 1) GTEST_SKIP() << "this kernel has no Landlock";
  EXPECT_EQ(inChildProcess([] {
              becomeOrdinaryUser();
              prctl(PR_SET_DUMPABLE, 1, 0, 0, 0);
              const std::string environment = "/proc/" + std::to_string(getpid()) + "/environ";
              return inChildProcess([&] {
                const std::string before = outcomeOfReading(environment);
                sandbox::enterReadOnly();
                return before + " " + outcomeOfReading(environment);
              });
            }),
            "done EACCES");
}

TEST(SandboxedProcess, OpensNoSocketOfAnyFamily) {
  for (int family = AF_UNSPEC; family < AF_MAX; ++family) {
    for (const int type : {SOCK_STREAM, SOCK_DGRAM, SOCK_RAW}) {
      EXPECT_EQ(inChildProcess([&] {
                  sandbox::enterReadOnly();
                  return std::string(socket(family, type, 0) >= 0 ? "done" : strerrorname_np(errno));
                }),
                "EPERM")
          << family;
    }
  }
}

}  // namespace
}  // namespace halvane
