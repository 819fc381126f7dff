#include "sandbox/landlock_linux.h"

#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace halvane::sandbox {
namespace {

// Rights that a ruleset handles and grants to no folder are gone everywhere. The kernel's header has grown
// since the oldest system that we build on.
struct Ruleset {
  std::uint64_t files;
  std::uint64_t network;
  std::uint64_t scopes;
};
constexpr std::uint64_t truncateFile = 1ULL << 14;
constexpr std::uint64_t controlDevices = 1ULL << 15;
constexpr std::uint64_t bindOrConnectTcp = 1ULL << 0 | 1ULL << 1;
constexpr std::uint64_t reachOutsideSocketsAndProcesses = 1ULL << 0 | 1ULL << 1;

// Each version of the interface knows more rights, and refuses those that it doesn't know. Reading files and
// folders is not among these, so it stays as it was.
Ruleset allThatVersionKnows(long version) {
  Ruleset ruleset{LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                      LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                      LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                      LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                      LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM,
                  0, 0};
  if (version >= 2) ruleset.files |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= 3) ruleset.files |= truncateFile;
  if (version >= 4) ruleset.network = bindOrConnectTcp;
  if (version >= 5) ruleset.files |= controlDevices;
  if (version >= 6) ruleset.scopes = reachOutsideSocketsAndProcesses;
  return ruleset;
}

std::size_t sizeInVersion(long version) {
  if (version >= 6) return sizeof(Ruleset);
  return version >= 4 ? offsetof(Ruleset, scopes) : offsetof(Ruleset, network);
}

long knownVersion() {
  return syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

bool enter(const Ruleset& ruleset, long version) {
  const long descriptor = syscall(SYS_landlock_create_ruleset, &ruleset, sizeInVersion(version), 0);
  if (descriptor < 0) return false;
  const bool isEntered = syscall(SYS_landlock_restrict_self, descriptor, 0) == 0;
  close(static_cast<int>(descriptor));
  return isEntered;
}

}  // namespace

// Whoever has given up anything may no longer look into a process that has not. Where a version knows other
// rights than those of files, we give up those: with one of a file's among them the kernel takes longer for
// every opening.
bool giveUpOtherProcesses() {
  const long version = knownVersion();
  if (version < 1) return false;
  Ruleset ruleset = allThatVersionKnows(version);
  ruleset.files = version >= 4 ? 0 : LANDLOCK_ACCESS_FS_EXECUTE;
  return enter(ruleset, version);
}

bool giveUpChangingFiles() {
  const long version = knownVersion();
  return version >= 1 && enter(allThatVersionKnows(version), version);
}

}  // namespace halvane::sandbox
