#include "sandbox/sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

// Entering the sandbox, on a whole kernel and on lesser ones. What it refuses is in
// sandbox_acts_linux_test.cpp.

namespace halvane {
namespace {

// A system call that is tried: its result, negative with errno set when it fails.
using Act = std::function<long()>;

std::string outcome(const Act& act) {
  errno = 0;
  return act() >= 0 ? "done" : strerrorname_np(errno);
}

// The result of `act` in a sandboxed child process that has first done `before`.
std::string outcomeInside(
    const Act& act, const std::function<void()>& before = [] {}) {
  return inChildProcess([&] {
    before();
    sandbox::enterReadOnly();
    return outcome(act);
  });
}

class Sandbox : public testing::Test {
 protected:
  Sandbox() { writeFile(folder_.below("file"), "before"); }

  std::string at(const char* name) const { return folder_.below(name); }

  const TemporaryFolder folder_;
};

TEST_F(Sandbox, LeavesReadingAsItWas) {
  const std::map<std::string, Act> acts = {
      {"a file", [&] { return open(at("file").c_str(), O_RDONLY | O_CLOEXEC); }},
      {"a folder", [&] { return open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }},
      {"without waiting", [] { return open("/dev/null", O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }},
      {"a device by its status",
       [] {
         struct stat status {};
         return stat("/dev/null", &status);
       }},
  };
  for (const auto& [name, act] : acts) EXPECT_EQ(outcomeInside(act), "done") << name;
}

TEST_F(Sandbox, LeavesUsableWhatIsOpen) {
  const int descriptor = open(at("file").c_str(), O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(outcomeInside([&] { return write(descriptor, "after!", 6); }), "done");
  close(descriptor);
}

TEST(SandboxedProcess, IsInItForGood) {
  EXPECT_EQ(inChildProcess([] {
              sandbox::enterReadOnly();
              return outcome([] { return prctl(PR_SET_SECCOMP, 0, nullptr, 0, 0); }) + " " +
                     outcome([] { return prctl(PR_SET_NO_NEW_PRIVS, 0, 0, 0, 0); });
            }),
            "EPERM EPERM");
}

// A C library that tries these first takes another way when the kernel doesn't have them.
TEST(SandboxedProcess, SaysOfCallsThatHideTheirArgumentsThatThereAreNone) {
  EXPECT_EQ(outcomeInside([] { return syscall(SYS_clone3, nullptr, 0); }), "ENOSYS");
  EXPECT_EQ(outcomeInside([] { return syscall(SYS_openat2, AT_FDCWD, "/", nullptr, 0); }), "ENOSYS");
}

// Landlock is there and says so, but no more of it is to be had.
void takeAllLayersOfLandlock() {
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  landlock_ruleset_attr attributes{};
  attributes.handled_access_fs = LANDLOCK_ACCESS_FS_MAKE_BLOCK;
  const long ruleset =
      syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0);
  while (syscall(SYS_landlock_restrict_self, ruleset, 0) == 0) continue;
}

void takeAllHandles() {
  rlimit handles{};
  getrlimit(RLIMIT_NOFILE, &handles);
  handles.rlim_cur = 0;
  setrlimit(RLIMIT_NOFILE, &handles);
}

TEST_F(Sandbox, StaysClosedWhereLandlockIsThereAndCantBeEntered) {
  if (versionOfLandlock() == 0) GTEST_SKIP() << "this kernel has no Landlock";
  makeFolder(at("folder"));
  const std::string file = at("file");
  const std::map<std::string, Act> acts = {
      {"create", [&] { return mknod(at("fresh").c_str(), S_IFREG | 0600, 0); }},
      {"unlink", [&] { return unlink(file.c_str()); }},
      {"rename", [&] { return rename(file.c_str(), at("fresh").c_str()); }},
      {"mkdir", [&] { return mkdir(at("fresh").c_str(), 0700); }},
      {"rmdir", [&] { return rmdir(at("folder").c_str()); }},
  };
  for (const auto& [name, act] : acts) {
    EXPECT_EQ(outcomeInside(act, takeAllLayersOfLandlock), "EPERM") << name;
    EXPECT_EQ(outcomeInside(act, takeAllHandles), "EPERM") << name;
  }
}

std::string missingAfter(const std::function<void()>& before) {
  return inChildProcess([&] {
    before();
    return std::string(sandbox::enterReadOnly());
  });
}

std::vector<RefusedCall> both() {
  std::vector<RefusedCall> calls = callsOfLandlock();
  for (const RefusedCall& call : callsOfFilters()) calls.push_back(call);
  return calls;
}

TEST(SandboxedProcess, IsToldWhatIsNotRefused) {
  const auto without = [](const std::vector<RefusedCall>& calls) {
    return missingAfter([&] { refuseCalls(calls); });
  };
  EXPECT_EQ(
      without(both()),
      "This Linux offers neither Landlock nor a seccomp filter: only the server's own code keeps it from "
      "doing more than read.");
  EXPECT_EQ(
      without(callsOfLandlock()),
      "This Linux offers no Landlock: the server can't change files, use the network or start programs, "
      "but it could read the memory of your other programs.");
  if (versionOfLandlock() == 0) return;
  EXPECT_EQ(missingAfter([] {}), "");
  EXPECT_EQ(missingAfter(takeAllLayersOfLandlock), without(callsOfLandlock()));
  EXPECT_EQ(missingAfter(takeAllHandles), without(callsOfLandlock()));
  EXPECT_EQ(without(callsOfFilters()),
            "This Linux offers no seccomp filter: Landlock keeps the server from writing files and starting "
            "programs, but not from changing the modes and times of files or from using the network.");
}

}  // namespace
}  // namespace halvane
